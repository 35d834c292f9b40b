#pragma once

#include <string>

#include <tolv/core/export.h>

/// @file
/// The lines that array fields print on the standard output (`std::cout`) when they keep their
/// content instead of reading. They are part of the platform's behaviour, to the byte. A program
/// whose own standard output must stay clean gives `std::cout` another buffer.
namespace Tolv::MetaData::Diagnostics {

/// An entry of a plain array could not be read, or memory ran out.
TOLV_CORE_API void arrayCorrupt(std::string const& key);
/// The element is no array, and the field's type has no encoded form.
TOLV_CORE_API void arrayExpected();
/// The encoded form of another type.
TOLV_CORE_API void wrongEncodedType();

} // namespace Tolv::MetaData::Diagnostics
