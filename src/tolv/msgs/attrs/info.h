#pragma once

#include <string>
#include <vector>

#include <tolv/msgs/families.h>
#include <tolv/msgs/record.h>

/// @file
/// The name of an attribute and the type of its value.
namespace Tolv::Msgs::Attrs {

/// The words of `messageTypeMapper`.
struct TOLV_MESSAGES_API AttributeTypes {
    /// By byte order of the words; the value is the id.
    static std::vector<MetaData::Literal> literals();
};

/// The name and type of an attribute. The type is given twice: as a word and as the id of the
/// message that carries the value.
class TOLV_MESSAGES_API AttrInfoData : public MirroredObject {
public:
    Reflector<std::string> scaName{
        this,
        field<"ScaName", Doc{"the name by which the attribute is known"}, Example{"frequency"}>,
        Required};
    Reflector<std::string> scaType{
        this,
        field<"ScaType", OneOf<AttributeTypes>{}, Doc{"the type of the value, as a word"},
              Example{"double"}>,
        Required};
    Reflector<Identifier> type{this,
                               field<"Type", Doc{"the id of the message that carries the value"},
                                     Example{"1125899906842626"}>,
                               Required};

    /// An attribute without a name, whose values are carried by the message `id`. An id that is not
    /// in `messageTypeMapper` is stored unchanged, with the type word "Unknown".
    explicit AttrInfoData(Identifier const& id = AttrMessage::MsgID());
    /// The same for the id of family 4 itself, whatever the message. For the type of a message, use
    /// `AttrInfoData(message.id())`.
    explicit AttrInfoData(AttrMessage const& message);

    /// Sets the type word and its id. An unknown word is stored with the id of family 4 itself;
    /// this is not an error.
    void setTypes(std::string const& scaType);
};

/// Answers a registration.
class TOLV_MESSAGES_API RegistrationData : public MirroredObject {
public:
    Reflector<bool> ok{this,
                       field<"OK", Doc{"whether the registration was accepted"}, Example{"true"}>,
                       Required, true};

    RegistrationData() = default;
    /// An answer.
    explicit RegistrationData(Lossless<bool> ok) { this->ok = ok; }
};

} // namespace Tolv::Msgs::Attrs
