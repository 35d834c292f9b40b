#pragma once

#include <string>

#include <tolv/msgs/families.h>
#include <tolv/msgs/record.h>

/// @file
/// What an attribute is: its name and the type of its value.
namespace Tolv::Msgs::Attrs {

/// Names an attribute and its type. The type stands there twice, as text and as the id of the
/// message that carries the value.
class TOLV_MESSAGES_API AttrInfoData : public MirroredObject {
public:
    Reflector<std::string> scaName{this, "ScaName"_key, Required}; ///< the attribute's name
    /// A literal of `messageTypeMapper`: "double".
    Reflector<std::string> scaType{this, "ScaType"_key, Required};
    /// The id of the message that carries the value.
    Reflector<Identifier> type{this, "Type"_key, Required};

    /// An attribute without name, of the type whose values the message `id` carries. An id that is
    /// not in `messageTypeMapper` stays as it is, beside the text "Unknown".
    explicit AttrInfoData(Identifier const& id = AttrMessage::MsgID());
    /// The same for the id of family 4 itself, whatever the message; for the type of a message take
    /// `AttrInfoData(message.id())`.
    explicit AttrInfoData(AttrMessage const& message);
    AttrInfoData(AttrInfoData const& other) : AttrInfoData() { *this = other; }
    AttrInfoData& operator=(AttrInfoData const&) = default;

    /// Sets the text of the type, and the id that belongs to it: that of family 4 itself when
    /// `messageTypeMapper` does not hold the text. Never fails for a bad text.
    void setTypes(std::string const& scaType);
};

/// Answers a registration.
class TOLV_MESSAGES_API RegistrationData : public MirroredObject {
public:
    Reflector<bool> ok{this, "OK"_key, Required, true}; ///< false: refused

    RegistrationData() = default;
    /// An answer.
    explicit RegistrationData(Lossless<bool> ok) { this->ok = ok; }
    RegistrationData(RegistrationData const& other) : RegistrationData() { *this = other; }
    RegistrationData& operator=(RegistrationData const&) = default;
};

} // namespace Tolv::Msgs::Attrs
