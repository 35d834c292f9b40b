#pragma once

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

/// An enumeration that travels as a word. Its header declares, beside the enumeration, functions
/// that are found by argument-dependent lookup:
/// `bool TryGetAs(Element const&, E&)` and `void SetAs(E const&, Element&)`.
namespace Detail {

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
