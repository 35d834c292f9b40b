#include <utility>

#include <tolv/core/msgs/message_key.h>

namespace Tolv::Msgs {

MessageKey::MessageKey(unsigned long long id, Address sender, Address destination,
                       Evaluate const& evaluate)
    : id_(id), sender_(std::move(sender)), destination_(std::move(destination)) {
    if (evaluate)
        value_ = evaluate(*this);
}

} // namespace Tolv::Msgs
