#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <tolv/core/metadata/element.h>
#include <tolv/core/msgs/message.h>
#include <tolv/fields/value_type_of.h>
#include <tolv/msgs/export.h>

/// @file
/// Describes at run time how a message class is represented in JSON: its fields with their keys,
/// types and defaults, including those of nested records. All functions are thread-safe.
///
///     auto const message = Introspection::describe(App::ConnectMessage::MsgID());
///     for (auto const& field : message->payload())
///         std::cout << field.key << ": " << field.type->name << '\n';
namespace Tolv::Msgs::Introspection {

struct FieldDescription;

using MetaData::Literal;
/// The JSON form of a value.
using TypeKind = MetaData::ValueKind;

/// The values that a field accepts. Types live until the process ends.
struct Type {
    TypeKind kind = TypeKind::record; ///< the JSON form
    std::string name; ///< the C++ name relative to Tolv::Msgs: "int", "App::HardwareComponent"

    long long minimum = 0;          ///< of an integer
    unsigned long long maximum = 0; ///< of an integer
    std::vector<Literal> literals;  ///< of a word, by value
    Type const* element = nullptr;  ///< of a pair or list

    /// For a list: the "type" of its base64 form, an object with "type", "len" and "base64", which
    /// readers also accept; 0 if there is none.
    unsigned int encodedTag = 0;

    /// For a record: if a required key is absent or cannot be read, reading the whole record fails.
    bool strict = false;

    /// For a message of fixed class: the id of that class, which applies whatever id the message
    /// contains.
    std::optional<unsigned long long> messageId;
    /// For a message: whether `message` is of an accepted class.
    bool (*admits)(Message const& message) = nullptr;

    /// What the type was made from.
    MetaData::ValueType const* source = nullptr;
    /// The fields of a record, in the order of writing; empty for other types.
    /// @throws Exception::InvalidOperation, naming the class, for a class with custom conversion
    /// that has no table of its keys (see `MetaData::keyInfo`), for a field class that does not
    /// say what its values are, and for a key that a record has twice.
    [[nodiscard]] TOLV_MESSAGES_API std::vector<FieldDescription> fields() const;
};

/// One key of a record.
struct FieldDescription {
    std::string key;            ///< in the JSON object
    Type const* type = nullptr; ///< never null
    bool required = false;      ///< a default-constructed message has the key
    /// The value that a default-constructed record writes; empty if it omits the key.
    std::optional<MetaData::Element> defaultValue;
    std::string unit;    ///< "ms"; empty if not fixed
    std::string doc;     ///< the meaning, in a few words
    std::string example; ///< a plausible value (see `MetaData::FieldInfo::example`); may be empty
    std::optional<std::pair<long long, long long>> range; ///< of plausible numbers, inclusive

    std::vector<Literal> literals; ///< the values with a meaning of their own
    bool closed = false;           ///< values other than `literals` are refused
};

/// One message class.
struct ClassDescription {
    unsigned long long id = 0; ///< of its messages
    /// @{ As in the catalogue, the alias including its family; empty if the class is not listed.
    std::string family;
    std::string alias;
    std::string className;
    std::string payloadName;
    std::string role;
    /// @}

    std::vector<FieldDescription> fields; ///< id, addresses and, if there is a payload, "Data"

    /// The fields of the record under "Data"; empty if there is none.
    [[nodiscard]] TOLV_MESSAGES_API std::vector<FieldDescription> payload() const;
};

/// The class registered for `id`, in this or any other library; empty if there is none, or if its
/// creator returns null.
/// @throws what the class throws during construction
TOLV_MESSAGES_API std::optional<ClassDescription> describe(unsigned long long id);

/// The fields of one record; their current values are reported as defaults.
TOLV_MESSAGES_API std::vector<FieldDescription>
describeFields(MetaData::MirroredObject const& record);

/// The field with this key, or null.
TOLV_MESSAGES_API FieldDescription const* findField(std::vector<FieldDescription> const& fields,
                                                    std::string_view key);

/// One field, without its default.
/// @throws Exception::InvalidOperation for a field class that does not say what its values are.
TOLV_MESSAGES_API FieldDescription describeField(MetaData::RecordForm::Field const& field);

/// The type behind the data that field declarations carry.
TOLV_MESSAGES_API Type const& typeOf(MetaData::ValueType const& type);

/// The values of `T`: a record, an enumeration, a message class, or any type that a field may hold.
template <class T>
Type const& describe() {
    return typeOf(MetaData::valueType<T>);
}

} // namespace Tolv::Msgs::Introspection
