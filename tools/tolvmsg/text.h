#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Tolv::Tool {

/// The text with each character escaped that could harm a reader at a terminal: what moves the
/// cursor, changes the direction of the text, or is invisible. Bytes that are not valid UTF-8
/// become U+FFFD. All text that comes from outside (input, file names, error texts that quote
/// either) goes through this function or one of those below before it is printed.
std::string harmless(std::string_view text);

/// The same for a JSON text, which stays one and keeps its value: there is nothing to escape
/// outside of its strings. C0 is left alone, since within strings it is escaped already.
/// @param json valid UTF-8
std::string harmlessJson(std::string json);

/// The text in quotes, harmless. Beyond `mostBytes` it is cut, and its length told.
std::string quoted(std::string_view text, std::size_t mostBytes);

/// The text as it is where nothing in it has to be escaped or cut, else as `quoted` gives it.
std::string unquoted(std::string_view text, std::size_t mostBytes);

/// The text itself where it is a plain word, else in quotes.
std::string word(std::string_view text);

/// The text with each byte that belongs to no valid UTF-8 character replaced by U+FFFD.
std::string validUtf8(std::string_view text);

/// "1 entry", "2 entries"
std::string counted(std::uint64_t count, char const* one, char const* many);

/// The number of characters of a valid UTF-8 text: its width on a terminal, near enough.
std::size_t width(std::string_view text);

/// The text filled up with spaces.
std::string padded(std::string_view text, std::size_t columns);

} // namespace Tolv::Tool
