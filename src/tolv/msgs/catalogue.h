#pragma once

#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <tolv/core/msgs/message.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs {

/// What people want to know of a message class of this library.
struct MessageDescription {
    unsigned long long id;      ///< of its messages
    std::string_view family;    ///< its namespace: "App"
    std::string_view alias;     ///< its short name there: "ConnectMessage"
    std::string_view className; ///< "PayloadMessageHelper<App::AppMessage, App::Connect, 1>"
    std::string_view payload;   ///< the record under "Data", "App::Connect"; empty for none
    std::string_view role;      ///< what it says, in a few words
    std::shared_ptr<Message> (*make)(); ///< a default-built message

    /// "App::ConnectMessage"
    [[nodiscard]] std::string fullAlias() const {
        return std::string(family) + "::" + std::string(alias);
    }
};

/// All message classes of this library, by ascending id. Thread-safe.
TOLV_MESSAGES_API std::span<MessageDescription const> catalogue();

/// The class with this id, or null.
TOLV_MESSAGES_API MessageDescription const* findMessage(unsigned long long id);

/// The class with this alias, with or without its family ("App::ConnectMessage",
/// "ConnectMessage"); null when there is none, or, without family, more than one.
TOLV_MESSAGES_API MessageDescription const* findMessage(std::string_view alias);

} // namespace Tolv::Msgs
