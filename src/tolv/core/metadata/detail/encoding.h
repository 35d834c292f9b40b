#pragma once

#include <concepts>
#include <span>

#include <tolv/core/export.h>
#include <tolv/core/metadata/element.h>
#include <tolv/core/metadata/mirrored_object.h>

/// @file
/// Base64 of large arrays, which `MirroredObject::copyToText` encodes directly into its output.
///
/// Until then the tree only refers to the bytes, which must remain unchanged. This is guaranteed
/// for the fields of a message and of records in these fields, provided that they are written only
/// by the walk over the fields: a hand-written `copyToMetaData` may write from a temporary object.
namespace Tolv::MetaData::Detail {

/// A record that is written only by the walk over its fields: its class does not override
/// `copyToMetaData`.
template <class T>
concept WrittenByItsFields = std::derived_from<T, MirroredObject> && requires {
    { &T::copyToMetaData } -> std::same_as<void (MirroredObject::*)(Element&) const>;
};

/// While an object of this class exists, the fields of one record are known to outlive the text
/// that `copyToText` is writing on this thread.
class TOLV_CORE_API LastingFields {
public:
    /// The fields of `message`, if `copyToText` was called for it.
    explicit LastingFields(MirroredObject const& message) noexcept;
    /// The fields of `value`, the value of `field`, if `field` is known to outlive the text.
    LastingFields(ReflectorBase const& field, MirroredObject const& value) noexcept;
    LastingFields(LastingFields const&) = delete;
    LastingFields& operator=(LastingFields const&) = delete;
    ~LastingFields();

private:
    MirroredObject const* outer_ = nullptr;
    bool isKnown_ = false;
};

/// Makes `element` the base64 of `bytes`. Encoding of large blocks is deferred where that is safe.
/// @param element receives the text
/// @param bytes to be encoded
/// @param field holds `bytes`; null if they may change before the text is written
/// @throws std::bad_alloc, and Exception::InvalidParameter for a text of 4 GiB or more; `element`
/// is then unchanged.
TOLV_CORE_API void putEncoded(Element& element, std::span<unsigned char const> bytes,
                              ReflectorBase const* field);

} // namespace Tolv::MetaData::Detail
