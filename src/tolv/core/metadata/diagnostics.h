#pragma once

#include <string_view>

#include <tolv/core/export.h>

/// @file
/// The lines that array fields print on standard output (`std::cout`) when they refuse an element
/// and keep their content. Their text is fixed. A program that needs its standard output for itself
/// can give `std::cout` another buffer.
namespace Tolv::MetaData::Diagnostics {

/// Prints that an entry of a plain array could not be read, or memory ran out.
TOLV_CORE_API void arrayCorrupt(std::string_view key) noexcept;
/// Prints that the element is not an array, and the field's type has no encoded form.
TOLV_CORE_API void arrayExpected() noexcept;
/// Prints that the element is the encoded form of another type.
TOLV_CORE_API void wrongEncodedType() noexcept;

} // namespace Tolv::MetaData::Diagnostics
