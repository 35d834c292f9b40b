#pragma once

#include <functional>
#include <utility>

#include <tolv/core/export.h>
#include <tolv/core/msgs/address.h>
#include <tolv/core/msgs/identifier.h>

namespace Tolv::Msgs {

/// Names one kind of message on one route: the id, who sends it, and to whom.
class TOLV_CORE_API MessageKey {
public:
    /// Maps a key to a number.
    using Evaluate = std::function<unsigned long long(MessageKey const&)>;

    /// A key of three parts.
    /// @param id of the messages
    /// @param sender who sends them
    /// @param destination to whom they go
    /// @param evaluate maps the finished key to a number, which `value` gives; it is called once
    /// and not kept. An empty function gives the number 0.
    MessageKey(unsigned long long id, Address sender, Address destination,
               Evaluate const& evaluate = {});

    /// Which messages.
    [[nodiscard]] Identifier const& id() const& noexcept { return id_; }
    [[nodiscard]] Identifier id() && noexcept { return id_; }
    /// Who sends them.
    [[nodiscard]] Address const& sender() const& noexcept { return sender_; }
    [[nodiscard]] Address sender() && noexcept { return std::move(sender_); }
    /// To whom they go.
    [[nodiscard]] Address const& destination() const& noexcept { return destination_; }
    [[nodiscard]] Address destination() && noexcept { return std::move(destination_); }
    /// What `evaluate` gave.
    [[nodiscard]] unsigned long long value() const noexcept { return value_; }

private:
    Identifier id_;
    Address sender_;
    Address destination_;
    unsigned long long value_ = 0;
};

} // namespace Tolv::Msgs
