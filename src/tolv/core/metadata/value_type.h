#pragma once

#include <string>
#include <typeinfo>
#include <vector>

#include <tolv/core/export.h>
#include <tolv/core/metadata/element.h>

namespace Tolv::Msgs {
class Message;
} // namespace Tolv::Msgs

/// @file
/// What is known at compile time of the values that fields hold. For readers of descriptions,
/// tolv/msgs/introspection/description.h is the convenient form.
namespace Tolv::MetaData {

class FieldInfo;
class MirroredObject;

/// A name for a value: a word and the number that it represents or, if a field accepts any number
/// or any string, the meaning of one of them.
struct Literal {
    std::string word;    ///< the name
    long long value = 0; ///< the number that it represents
};

/// The JSON form of a value.
enum class ValueKind : unsigned char {
    boolean, ///< true or false
    integer, ///< from `minimum` to `maximum`
    number,  ///< or one of the strings "NaN", "Infinity" and "-Infinity"
    text,
    word,   ///< a string from a table
    pair,   ///< an array of two values of `element`: a complex number
    list,   ///< an array of values of `element`; `encodedTag` describes an alternative
    record, ///< an object with fields
    message ///< a whole message, with its id
};

/// The fields of a record, and what a default-constructed one writes.
struct RecordForm {
    struct Field {
        FieldInfo const* info = nullptr; ///< lives as long as the library that defines the record
        bool required = false;           ///< a default-constructed record has the key
    };

    std::vector<Field> fields; ///< in the order of writing
    Element written;           ///< by a default-constructed record; null if there is none
    std::type_info const* type = nullptr; ///< the class
};

/// The values of a C++ type. Constant data, which exists once per type and library.
struct ValueType {
    ValueKind kind = ValueKind::record;
    bool strict = false;         ///< of a record: it reads as a whole or not at all
    unsigned int encodedTag = 0; ///< of a list: the "type" of its base64 form; 0 if there is none
    std::type_info const* type = nullptr; ///< the C++ type; of a list, that of its entries
    ValueType const* element = nullptr;   ///< of a pair or list
    long long minimum = 0;                ///< of an integer
    unsigned long long maximum = 0;       ///< of an integer

    /// Of a record: makes a default-constructed one and lists its fields. Null for a class with
    /// custom conversion that has no table of its keys.
    RecordForm (*form)() = nullptr;
    std::vector<Literal> (*literals)() = nullptr;   ///< of a word: by value
    unsigned long long (*messageId)() = nullptr;    ///< of a message of fixed class; else null
    bool (*admits)(Msgs::Message const&) = nullptr; ///< of a message: is its class accepted?
};

/// The fields of this record; what it writes now is taken for its default.
TOLV_CORE_API RecordForm formOf(MirroredObject const& record);

} // namespace Tolv::MetaData
