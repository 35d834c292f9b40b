#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/element.h>
#include <tolv/core/msgs/detail/nested_message.h>
#include <tolv/core/msgs/message.h>

/// @file
/// Reads and writes lists of whole messages of any class, for payloads with custom conversion.
namespace Tolv::Msgs::MessageList {

/// Stores each message as one entry of `array`.
/// @throws Exception::InvalidOperation if a pointer is null or the nesting exceeds
/// `Limits::messageNesting`.
template <class M>
void write(std::vector<std::shared_ptr<M>> const& messages, MetaData::Array& array) {
    array.clear();
    array.reserve(static_cast<unsigned int>(messages.size()));
    for (unsigned int i = 0; i < messages.size(); ++i) {
        if (messages[i] == nullptr)
            throw Exception::InvalidOperation("entry " + std::to_string(i) +
                                              " of the list holds no message");
        Detail::NestedMessage const nested;
        messages[i]->copyToMetaData(array[i]);
    }
}

/// Releases the messages of `list`, then fills it with those of `array`, each created by the
/// factory. If this throws, the list is empty.
/// @throws Exception::InvalidOperation, naming the entry, if an entry is not a message, its id is
/// not registered or its class is not derived from `M`; also if the nesting exceeds
/// `Limits::messageNesting`.
template <class M>
void read(MetaData::Array const& array, std::vector<std::shared_ptr<M>>& list) {
    list.clear();
    std::vector<std::shared_ptr<M>> messages;
    messages.reserve(array.size());
    auto const refuse = [&](std::string const& why) {
        throw Exception::InvalidOperation("entry " + std::to_string(messages.size()) +
                                          " of the list: " + why);
    };
    for (auto const& entry : array) {
        Detail::NestedMessage const nested;
        std::shared_ptr<M> message;
        try {
            message = std::dynamic_pointer_cast<M>(Message::CreateFromMetaData(entry));
        } catch (Exception::InvalidParameter const& e) {
            refuse(e.what());
        }
        if (message == nullptr)
            refuse("its class is unknown or not allowed here");
        messages.push_back(std::move(message));
    }
    list = std::move(messages);
}

} // namespace Tolv::Msgs::MessageList
