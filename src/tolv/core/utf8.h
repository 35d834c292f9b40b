#pragma once

#include <cstddef>
#include <string_view>

#include <tolv/core/export.h>

/// @file
/// Validation of text from outside, before it enters a message or a tree.

namespace Tolv {

/// Finds the first byte of @p text that is not well-formed UTF-8 (RFC 3629 section 4). Overlong
/// forms, the surrogates U+D800 to U+DFFF and everything beyond U+10FFFF are not well-formed. A
/// zero byte is a valid character.
///
/// @return the offset of the first byte that is not part of a well-formed character, or
///         `std::string_view::npos` if the whole text is well-formed. For a broken or truncated
///         sequence it is the offset of its first byte, so that the text before the offset is
///         well-formed and ends with a whole character
///
/// Thread-safe.
TOLV_CORE_API std::size_t findInvalidUtf8(std::string_view text) noexcept;

} // namespace Tolv
