#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/msgs/message.h>

#include "fuzzing.h"

namespace Tolv::Fuzzing {

/// A tree that is not a message is refused with InvalidParameter. A message that was made from a
/// tree can be written, directly and through a tree, and reads back as the same message. Nothing
/// else may be thrown.
inline void checkMessage(MetaData::Element const& tree) {
    using namespace MetaData;
    std::shared_ptr<Msgs::Message> message;
    try {
        message = Msgs::Message::CreateFromMetaData(tree);
    } catch (Exception::InvalidParameter const&) {
        return;
    }
    if (message == nullptr)
        return; // the id is not registered
    Element first;
    message->copyToMetaData(first);
    std::string text;
    WriterJson::Write(first, text);
    std::string direct;
    message->copyToText(direct);
    require(direct == text, "the text written at once differs from that of the tree");

    auto const again = Msgs::Message::CreateFromText(text);
    require(again != nullptr, "a message was written that nobody knows");
    Element second;
    again->copyToMetaData(second);
    require(second == first, "the second reading differs from the first");
    std::string textAgain;
    WriterJson::Write(second, textAgain);
    require(textAgain == text, "the second text differs from the first");
}

/// The text of the message that `make` returns, or its failure.
template <class Make>
std::string outcomeOf(Make make) {
    std::string text;
    try {
        if (auto const message = make())
            message->copyToText(text);
        else
            text = "nobody registered the id";
    } catch (Exception::InvalidParameter const& e) {
        text = std::string("refused: ") + e.what();
    }
    return text;
}

/// The same with a text, which may be refused. Reading directly and through a tree must agree.
inline void checkMessageText(std::string_view text) {
    MetaData::Element tree;
    auto const byTree = outcomeOf([&] {
        MetaData::ReaderJson::Read(tree, text);
        return Msgs::Message::CreateFromMetaData(tree);
    });
    auto const atOnce = outcomeOf([&] { return Msgs::Message::CreateFromText(text); });
    require(atOnce == byTree, "a text read at once differs from its tree");
    checkMessage(tree);
}

} // namespace Tolv::Fuzzing
