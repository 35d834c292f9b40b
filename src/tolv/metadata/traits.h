#pragma once

#include <vector>

#include <tolv/core/metadata/conversion.h>
#include <tolv/core/metadata/mirrored_object.h>

namespace Tolv::MetaData {

/// The default form of a field's type, which `reset` restores and array fields start an entry
/// from. A record without default constructor specialises it.
template <class T>
struct DefaultOf {
    /// The type as it is built by default.
    static T make() { return T(); }
    using IsDefaultBuilt = void; ///< only here: it says that `make` is nothing but `T()`
};

/// True for the types that write and read themselves: records and hand-written payloads.
template <class T>
concept Record = requires(T& object, T const& constant, Element& out, Element const& in) {
    constant.copyToMetaData(out);
    object.copyFromMetaData(in);
};

/// What a field may hold: a type that has a conversion, or a record. An enumeration that travels as
/// a word has one where its table of words is known (see `WordEnumeration`).
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

/// Reads `child` into `value`. @return false when it is of the wrong kind or doesn't fit.
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
        child.setNull(); // nothing of an older record may remain
        value.copyToMetaData(child);
    } else {
        SetAs(value, child);
    }
}

} // namespace Detail

} // namespace Tolv::MetaData
