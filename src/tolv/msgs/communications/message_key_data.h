#pragma once

#include <tolv/core/msgs/message_key.h>
#include <tolv/msgs/record.h>

namespace Tolv::Msgs::Structs {

/// The mirrored form of a `MessageKey`: the messages of one class on one route.
class TOLV_MESSAGES_API MessageKeyData : public MirroredObject {
public:
    Reflector<Identifier> messageId; ///< of the messages
    ReflectedAddress sender;         ///< of the messages
    ReflectedAddress destination;    ///< of the messages

    /// A key with all fields.
    MessageKeyData(Identifier const& id, Address const& sender, Address const& destination);
    /// The fields of `key`.
    // NOLINTNEXTLINE(google-explicit-constructor): it is the key, in its form for the wire
    MessageKeyData(MessageKey const& key);
};

} // namespace Tolv::Msgs::Structs

namespace Tolv::MetaData {

/// Id 0 and two initialized, empty addresses.
template <>
struct DefaultOf<Msgs::Structs::MessageKeyData> {
    /// The key used as a placeholder.
    static Msgs::Structs::MessageKeyData make() { return {Msgs::Identifier(0), {}, {}}; }
};

} // namespace Tolv::MetaData
