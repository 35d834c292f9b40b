#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "classes.h"

/// @file
/// The notations of message ids: 0x0003000000000001, 844424930131969, 3.0.0.1, and class aliases.
namespace Tolv::Tool {

/// "0x" and 16 digits.
std::string hexadecimal(unsigned long long id);

/// The four fields, such as "3.0.0.1".
std::string dotted(unsigned long long id);

/// The id written in one of the three number notations; empty for any other text.
std::optional<unsigned long long> parseId(std::string_view text);

/// The class identified by a text in any notation.
/// @throws UsageError if there is none, suggesting similar aliases
MessageClass const& resolveClass(Classes const& classes, std::string_view text);

} // namespace Tolv::Tool
