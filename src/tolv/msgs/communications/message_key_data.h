#pragma once

#include <tolv/core/msgs/message_key.h>
#include <tolv/msgs/record.h>

namespace Tolv::Msgs::Structs {

/// The mirrored form of a `MessageKey`: a kind of message on a route. All three parts come from
/// whoever makes it.
class TOLV_MESSAGES_API MessageKeyData : public MirroredObject {
public:
    Reflector<Identifier> messageId;
    ReflectedAddress sender;
    ReflectedAddress destination;

    MessageKeyData(Identifier const& id, Address const& sender, Address const& destination);
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
    static Msgs::Structs::MessageKeyData make() { return {Msgs::Identifier(0), {}, {}}; }
};

} // namespace Tolv::MetaData
