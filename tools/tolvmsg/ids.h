#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "classes.h"

/// @file
/// The notations of message ids: 0x0003000000000001, 844424930131969, 3.0.0.1, and the aliases of
/// the classes.
namespace Tolv::Tool {

/// "0x" and 16 digits.
std::string hexadecimal(unsigned long long id);

/// The four fields: "3.0.0.1".
std::string dotted(unsigned long long id);

/// The id that a text in one of the three number notations names; empty for any other text.
std::optional<unsigned long long> parseId(std::string_view text);

/// The class that a text in any notation names.
/// @throws UsageError when there is none; the text then suggests what was perhaps meant
MessageClass const& resolveClass(Classes const& classes, std::string_view text);

} // namespace Tolv::Tool
