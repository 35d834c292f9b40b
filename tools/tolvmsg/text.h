#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Tolv::Tool {

/// The text with all characters escaped that could mislead a reader at a terminal: those that move
/// the cursor, change the direction of the text, or are invisible. Bytes that are not valid UTF-8
/// become U+FFFD. All untrusted text (input, file names, and error texts that quote them) must pass
/// through this function or one of those below before it is printed.
std::string harmless(std::string_view text);

/// The same for JSON text; the result is JSON with the same value, since such characters only occur
/// in strings. C0 characters are left alone, because strings already have them escaped.
/// @param json valid UTF-8
std::string harmlessJson(std::string json);

/// The text in quotes, escaped as by `harmless`. If it is longer than `mostBytes`, it is cut and
/// its length appended.
std::string quoted(std::string_view text, std::size_t mostBytes);

/// The text unchanged if nothing in it must be escaped or cut, otherwise as `quoted` returns it.
std::string unquoted(std::string_view text, std::size_t mostBytes);

/// The text unchanged if it is a plain word, otherwise in quotes.
std::string word(std::string_view text);

/// The text with each byte that is not part of a valid UTF-8 character replaced by U+FFFD.
std::string validUtf8(std::string_view text);

/// "1 entry", "2 entries"
std::string counted(std::uint64_t count, char const* one, char const* many);

/// The number of characters of a valid UTF-8 text, which approximates its width on a terminal.
std::size_t width(std::string_view text);

/// The text padded with spaces.
std::string padded(std::string_view text, std::size_t columns);

} // namespace Tolv::Tool
