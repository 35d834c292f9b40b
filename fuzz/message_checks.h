#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/msgs/message.h>

#include "fuzzing.h"

namespace Tolv::Fuzzing {

/// A tree that is no message is refused with InvalidParameter; a message that was made of a tree
/// can be written, and what is written reads as the same message. Nothing else may be thrown.
inline void checkMessage(MetaData::Element const& tree) {
    using namespace MetaData;
    std::shared_ptr<Msgs::Message> message;
    try {
        message = Msgs::Message::CreateFromMetaData(tree);
    } catch (Exception::InvalidParameter const&) {
        return;
    }
    if (message == nullptr)
        return; // nobody registered the id
    Element first;
    message->copyToMetaData(first);
    std::string text;
    WriterJson::Write(first, text);

    Element sent;
    ReaderJson::Read(sent, text);
    auto const again = Msgs::Message::CreateFromMetaData(sent);
    require(again != nullptr, "a message was written that nobody knows");
    Element second;
    again->copyToMetaData(second);
    require(second == first, "the second reading differs from the first");
    std::string textAgain;
    WriterJson::Write(second, textAgain);
    require(textAgain == text, "the second text differs from the first");
}

/// The same with a text, which may be refused.
inline void checkMessageText(std::string_view text) {
    MetaData::Element tree;
    try {
        MetaData::ReaderJson::Read(tree, text);
    } catch (Exception::InvalidParameter const&) {
        return;
    }
    checkMessage(tree);
}

} // namespace Tolv::Fuzzing
