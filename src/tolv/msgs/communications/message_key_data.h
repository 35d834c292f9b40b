#pragma once

#include <tolv/core/msgs/message_key.h>
#include <tolv/msgs/record.h>

namespace Tolv::Msgs::Structs {

/// The mirrored form of a `MessageKey`: a kind of message on a route. All three parts come from
/// whoever makes it.
class TOLV_MESSAGES_API MessageKeyData : public MirroredObject {
public:
    Reflector<Identifier> messageId; ///< which messages
    ReflectedAddress sender;         ///< who sends them
    ReflectedAddress destination;    ///< to whom they go

    /// A key of three parts.
    MessageKeyData(Identifier const& id, Address const& sender, Address const& destination);
    /// The three parts of `key`.
    // NOLINTNEXTLINE(google-explicit-constructor): it is the key, in its form for the wire
    MessageKeyData(MessageKey const& key);
    MessageKeyData(MessageKeyData const& other) : MessageKeyData(0, {}, {}) { *this = other; }
    MessageKeyData& operator=(MessageKeyData const&) = default;
};

} // namespace Tolv::Msgs::Structs

namespace Tolv::MetaData {

/// Id 0, and two addresses that are set and empty.
template <>
struct DefaultOf<Msgs::Structs::MessageKeyData> {
    /// The key that stands for none.
    static Msgs::Structs::MessageKeyData make() { return {Msgs::Identifier(0), {}, {}}; }
};

} // namespace Tolv::MetaData
