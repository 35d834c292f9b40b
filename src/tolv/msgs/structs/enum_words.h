#pragma once

#include <concepts>
#include <iosfwd>
#include <string>
#include <string_view>

#include <tolv/fields/enum_strings.h>

/// @file
/// Human-readable text for the enumerations of the instrument records.
namespace Tolv::Msgs::Structs {

/// The word of a value in a table, or an empty string.
template <class E>
std::string_view wordIn(EnumStringsThrow<E> const& table, E value) noexcept {
    auto const* const literal = table.tryLiteral(value);
    return literal != nullptr ? std::string_view(*literal) : std::string_view();
}

/// An enumeration whose values have words. A function `wordOf` in the same namespace returns the
/// word of a value, or an empty string for a value without one.
template <class E>
concept HasWords = requires(E value) {
    { wordOf(value) } -> std::same_as<std::string_view>;
};

/// The word of `value`, or its decimal number if it has none. Thread-safe.
template <HasWords E>
std::string describe(E value) {
    auto const word = wordOf(value);
    return word.empty() ? std::to_string(static_cast<int>(value)) : std::string(word);
}

/// Prints the result of `describe`.
template <HasWords E>
std::ostream& operator<<(std::ostream& stream, E value) {
    return stream << describe(value);
}

} // namespace Tolv::Msgs::Structs
