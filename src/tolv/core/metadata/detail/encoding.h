#pragma once

#include <concepts>
#include <span>

#include <tolv/core/export.h>
#include <tolv/core/metadata/element.h>
#include <tolv/core/metadata/mirrored_object.h>

/// @file
/// Base64 of large arrays, which `MirroredObject::copyToText` encodes straight into its output.
///
/// What is only noted must stay as it is until the text is there. That is known of the fields of a
/// message and of records in these fields, as long as nothing but the walk over the fields writes
/// them: a class that writes itself by hand may do so by way of an object that it then destroys.
namespace Tolv::MetaData::Detail {

/// A record that only the walk over its fields writes: its class has no `copyToMetaData` of its
/// own.
template <class T>
concept WrittenByItsFields = std::derived_from<T, MirroredObject> && requires {
    { &T::copyToMetaData } -> std::same_as<void (MirroredObject::*)(Element&) const>;
};

/// While one exists, the fields of one record are known to outlive the text that `copyToText` of
/// this thread writes.
class TOLV_CORE_API LastingFields {
public:
    /// Those of `message`, if that is what `copyToText` was called for.
    explicit LastingFields(MirroredObject const& message) noexcept;
    /// Those of `value`, the value of `field`, if `field` is known to outlive the text.
    LastingFields(ReflectorBase const& field, MirroredObject const& value) noexcept;
    LastingFields(LastingFields const&) = delete;
    LastingFields& operator=(LastingFields const&) = delete;
    ~LastingFields();

private:
    MirroredObject const* outer_ = nullptr;
    bool isKnown_ = false;
};

/// Makes `element` the base64 of `bytes`. Large blocks are only noted where that is safe.
/// @param element receives the text
/// @param bytes to be encoded
/// @param field holds `bytes`; null where they may change before the text is written
/// @throws std::bad_alloc, and Exception::InvalidParameter for a text of 4 GiB or more; the content
/// is then as it was.
TOLV_CORE_API void putEncoded(Element& element, std::span<unsigned char const> bytes,
                              ReflectorBase const* field);

} // namespace Tolv::MetaData::Detail
