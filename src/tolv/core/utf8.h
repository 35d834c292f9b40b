#pragma once

#include <cstddef>
#include <string_view>

#include <tolv/core/export.h>

/// @file
/// Check of text that comes from outside, before it enters a message or a tree.

namespace Tolv {

/// Finds where @p text stops being well-formed UTF-8 (RFC 3629 section 4): overlong forms, the
/// surrogates U+D800 to U+DFFF and everything beyond U+10FFFF are not well-formed. A zero byte is a
/// character like any other.
///
/// @return the offset in bytes of the first byte that is not part of a well-formed character, which
///         for a broken or unfinished sequence is its first byte: the text before the offset is
///         always well-formed and ends with a whole character. `std::string_view::npos` when the
///         whole text is well-formed
///
/// May be called from any thread at any time.
TOLV_CORE_API std::size_t findInvalidUtf8(std::string_view text) noexcept;

} // namespace Tolv
