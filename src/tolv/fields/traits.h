#pragma once

#include <vector>

#include <tolv/core/metadata/conversion.h>
#include <tolv/core/metadata/mirrored_object.h>

namespace Tolv::MetaData {

/// The default value of a field's type, restored by `reset` and used by array fields for new
/// entries. Specialize it for a record without a default constructor.
template <class T>
struct DefaultOf {
    /// A default-constructed value.
    static T make() { return T(); }
    using IsDefaultBuilt = void; ///< only in the primary template: `make` is just `T()`
};

/// True for types that write and read themselves: records and payloads with custom conversion.
template <class T>
concept Record = requires(T& object, T const& constant, Element& out, Element const& in) {
    constant.copyToMetaData(out);
    object.copyFromMetaData(in);
};

/// The types that a field may hold: a type with a conversion, or a record. An enumeration that is
/// written as a word has a conversion if its table of words is known (see `WordEnumeration`).
template <class T>
concept FieldType = Record<T> || requires(Element const& in, T& value) {
    TryGetAs(in, value);
};

namespace Detail {

/// Whether a list may hold `T`. A record that holds a list of its own kind is not complete yet
/// where it declares the list, and is not checked.
template <class T>
consteval bool isEntryType() {
    if constexpr (requires { sizeof(T); })
        return FieldType<T>;
    else
        return true;
}

/// The type of the entries of a list.
template <class T>
struct EntryOf {};
template <class Entry>
struct EntryOf<std::vector<Entry>> {
    using Type = Entry;
};

/// Reads `child` into `value`.
/// @return false if `child` is of the wrong kind or does not fit.
template <class T>
bool read(Element const& child, T& value) {
    if constexpr (Record<T>) {
        value.copyFromMetaData(child);
        return true;
    } else {
        return TryGetAs(child, value);
    }
}

template <class T>
void write(T const& value, Element& child) {
    if constexpr (Record<T>) {
        child.setNull(); // removes what remains of an older record
        value.copyToMetaData(child);
    } else {
        SetAs(value, child);
    }
}

} // namespace Detail

} // namespace Tolv::MetaData
