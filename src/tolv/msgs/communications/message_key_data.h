#pragma once

#include <tolv/core/msgs/message_key.h>
#include <tolv/msgs/record.h>

namespace Tolv::Msgs::Structs {

/// The mirrored form of a `MessageKey`: the messages of one class on one route.
class TOLV_MESSAGES_API MessageKeyData : public MirroredObject {
public:
    Reflector<Identifier> messageId{
        this,
        field<"MessageID", Doc{"the number of the class of the messages"},
              Example{"281474976710657"}>,
        Required};
    ReflectedAddress sender{
        this,
        field<"Sender", Doc{"the address of the sender; absent or empty if the key names none"},
              Example{"[\"chassis\",\"acquisition\"]"}>,
        Optional};
    ReflectedAddress destination{
        this,
        field<"Destination",
              Doc{"the address of the receiver; absent or empty if the key names none"},
              Example{"[\"host\",\"viewer\"]"}>,
        Optional};

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
