#include <tolv/msgs/communications/message_key_data.h>

namespace Tolv::Msgs::Structs {

MessageKeyData::MessageKeyData(Identifier const& id, Address const& sender,
                               Address const& destination) {
    messageId = id;
    this->sender = sender;
    this->destination = destination;
}

MessageKeyData::MessageKeyData(MessageKey const& key)
    : MessageKeyData(key.id(), key.sender(), key.destination()) {}

} // namespace Tolv::Msgs::Structs
