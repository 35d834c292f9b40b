#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>

#include <tolv/core/msgs/message.h>

#include "support/trees.h"

namespace Tolv::Testing {

/// The message in a JSON text, created by the factory; empty if its class is not registered or not
/// derived from `M`.
template <class M = Msgs::Message>
std::shared_ptr<M> received(std::string_view text) {
    return std::dynamic_pointer_cast<M>(Msgs::Message::CreateFromMetaData(parsed(text)));
}

/// A message after a round trip through text, tree and factory.
template <class M>
std::shared_ptr<M> sent(M const& message) {
    return received<M>(written(message));
}

/// The dynamic class of a message.
inline std::type_info const& classOf(Msgs::Message const& message) { return typeid(message); }

/// The text of a message with this id and this text under "Data"; without "Data" if the text is
/// empty.
inline std::string messageText(unsigned long long id, std::string_view data) {
    auto text = R"({"MessageID":)" + std::to_string(id);
    if (!data.empty())
        text.append(R"(,"Data":)").append(data);
    return text + '}';
}

} // namespace Tolv::Testing
