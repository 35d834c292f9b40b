#pragma once

#include <string_view>

#include <tolv/core/export.h>

/// @file
/// The lines that array fields print on the standard output (`std::cout`) when they keep their
/// content instead of reading. They are part of the platform's behaviour, to the byte. A program
/// whose own standard output must stay clean gives `std::cout` another buffer.
namespace Tolv::MetaData::Diagnostics {

/// An entry of a plain array could not be read, or memory ran out.
TOLV_CORE_API void arrayCorrupt(std::string_view key) noexcept;
/// The element is no array, and the field's type has no encoded form.
TOLV_CORE_API void arrayExpected() noexcept;
/// The encoded form of another type.
TOLV_CORE_API void wrongEncodedType() noexcept;

} // namespace Tolv::MetaData::Diagnostics
