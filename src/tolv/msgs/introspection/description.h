#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <typeindex>
#include <vector>

#include <tolv/core/metadata/element.h>
#include <tolv/core/msgs/message.h>
#include <tolv/msgs/export.h>

/// @file
/// What a message class looks like on the wire, asked at run time: its fields with their keys,
/// types and defaults, through all nested records. All functions are thread-safe.
///
///     auto const message = Introspection::describe(App::ConnectMessage::MsgID());
///     for (auto const& field : message->payload())
///         std::cout << field.key << ": " << field.type->name << '\n';
namespace Tolv::Msgs::Introspection {

struct FieldDescription;

/// One name for one value: a word and the number that it stands for, or, where a field takes any
/// number or any text, what one of them means.
struct Literal {
    std::string word;    ///< the name
    long long value = 0; ///< what it stands for
};

/// What stands on the wire.
enum class TypeKind {
    boolean, ///< true or false
    integer, ///< from `minimum` to `maximum`
    number,  ///< also "NaN", "Infinity" and "-Infinity", as texts
    text,
    word,   ///< a text out of `literals`
    pair,   ///< an array of two values of `element`: a complex number
    list,   ///< an array of values of `element`; `encodedTag` tells of another form
    record, ///< an object with `fields()`
    message ///< a whole message, with its id
};

/// What values a field takes. Types live until the process ends.
struct Type {
    TypeKind kind = TypeKind::record; ///< what stands on the wire
    std::string name; ///< as in C++, seen from Tolv::Msgs: "int", "App::HardwareComponent"

    long long minimum = 0;          ///< of an integer
    unsigned long long maximum = 0; ///< of an integer
    std::vector<Literal> literals;  ///< of a word, by value
    Type const* element = nullptr;  ///< of a pair or list

    /// Of a list: the "type" of its form in base64, an object with "type", "len" and "base64",
    /// which a reader takes as well; 0 when there is none.
    unsigned int encodedTag = 0;

    /// Of a record: when a required key is absent or doesn't read, all of the record counts as not
    /// read.
    bool strict = false;

    /// Of a message whose class is fixed, whatever its own id says.
    std::optional<unsigned long long> messageId;
    /// Of a message: whether one of this class may stand there.
    bool (*admits)(Message const& message) = nullptr;

    /// What `fields` calls; null for types without any.
    std::vector<FieldDescription> (*makeFields)() = nullptr;
    /// The fields of a record, in the order in which they are written; empty for other types.
    /// @throws std::bad_alloc
    [[nodiscard]] TOLV_MESSAGES_API std::vector<FieldDescription> fields() const;
};

/// One key of a record.
struct FieldDescription {
    std::string key;            ///< on the wire
    Type const* type = nullptr; ///< null: of a type that nobody has made known (see types.h)
    bool required = false;      ///< a message as it is built has the key
    /// What a record writes as it is built; empty when it leaves the key out.
    std::optional<MetaData::Element> defaultValue;
    std::string unit; ///< "ms"; empty where none is fixed

    std::vector<Literal> literals; ///< the values that have a meaning of their own
    bool closed = false;           ///< other values than `literals` are refused
};

/// One message class.
struct ClassDescription {
    unsigned long long id = 0; ///< of its messages
    /// @{
    /// As in the catalogue, the alias with its family; empty for a class that is not in there.
    std::string family;
    std::string alias;
    std::string className;
    std::string payloadName;
    std::string role;
    /// @}

    std::vector<FieldDescription> fields; ///< id, addresses and "Data", where there is one

    /// The fields of the record under "Data"; empty when there is none.
    [[nodiscard]] TOLV_MESSAGES_API std::vector<FieldDescription> payload() const;
};

/// The class that is registered for `id`; empty when there is none. One of this library or of any
/// other. @throws what the class throws when it is built
TOLV_MESSAGES_API std::optional<ClassDescription> describe(unsigned long long id);

/// The fields of one record as it is now; what stands in them counts as default.
TOLV_MESSAGES_API std::vector<FieldDescription>
describeFields(MetaData::MirroredObject const& record);

/// The field with this key, or null.
TOLV_MESSAGES_API FieldDescription const* findField(std::vector<FieldDescription> const& fields,
                                                    std::string_view key);

/// The type of a field; null when nobody has made it known.
TOLV_MESSAGES_API Type const* typeOfField(MetaData::ReflectorBase const& field);
/// The same by the class of the field, such as `typeid(Reflector<int>)`.
TOLV_MESSAGES_API Type const* typeOfField(std::type_index field);

} // namespace Tolv::Msgs::Introspection
