#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <tolv/core/msgs/message.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs {

/// A message class of this library, described for tools and people.
struct MessageDescription {
    unsigned long long id;      ///< of its messages
    std::string_view family;    ///< its namespace: "App"
    std::string_view alias;     ///< its short name in that namespace: "ConnectMessage"
    std::string_view className; ///< "PayloadMessageHelper<App::AppMessage, App::Connect, 1>"
    std::string_view payload;   ///< the record under "Data", "App::Connect"; empty if none
    std::string_view role;      ///< its purpose, in a few words
    std::shared_ptr<Message> (*make)(); ///< creates a default-constructed message

    /// "App::ConnectMessage"
    [[nodiscard]] std::string fullAlias() const {
        return std::string(family) + "::" + std::string(alias);
    }
};

/// All message classes of this library, by ascending id. Thread-safe.
TOLV_MESSAGES_API std::span<MessageDescription const> catalogue();

/// The class with this id, or null.
TOLV_MESSAGES_API MessageDescription const* findMessage(unsigned long long id);

/// The class with this alias, with or without its family ("App::ConnectMessage" or
/// "ConnectMessage"). Null if there is none, or if an alias without a family is ambiguous.
TOLV_MESSAGES_API MessageDescription const* findMessage(std::string_view alias);

} // namespace Tolv::Msgs
