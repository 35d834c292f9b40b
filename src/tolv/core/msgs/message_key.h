#pragma once

#include <functional>
#include <utility>

#include <tolv/core/export.h>
#include <tolv/core/msgs/address.h>
#include <tolv/core/msgs/identifier.h>

namespace Tolv::Msgs {

/// Identifies the messages of one class on one route: message id, sender and destination.
class TOLV_CORE_API MessageKey {
public:
    /// Maps a key to a number.
    using Evaluate = std::function<unsigned long long(MessageKey const&)>;

    /// @param id of the messages
    /// @param sender of the messages
    /// @param destination of the messages
    /// @param evaluate maps the complete key to the number that `value` returns; called once and
    /// not stored. An empty function yields 0.
    MessageKey(unsigned long long id, Address sender, Address destination,
               Evaluate const& evaluate = {});

    /// The message id.
    [[nodiscard]] Identifier const& id() const& noexcept { return id_; }
    [[nodiscard]] Identifier id() && noexcept { return id_; }
    /// The sender.
    [[nodiscard]] Address const& sender() const& noexcept { return sender_; }
    [[nodiscard]] Address sender() && noexcept { return std::move(sender_); }
    /// The destination.
    [[nodiscard]] Address const& destination() const& noexcept { return destination_; }
    [[nodiscard]] Address destination() && noexcept { return std::move(destination_); }
    /// The number that `evaluate` returned.
    [[nodiscard]] unsigned long long value() const noexcept { return value_; }

private:
    Identifier id_;
    Address sender_;
    Address destination_;
    unsigned long long value_ = 0;
};

} // namespace Tolv::Msgs
