#pragma once

#include <string>
#include <string_view>

/// @file
/// Formats values for human-readable sentences.
namespace Tolv::Msgs::Attrs {

/// "7.5e9", "0.25", "NaN", "-Infinity": the shortest form that reads back as the same number.
std::string shown(double value);

inline std::string shown(long long value) { return std::to_string(value); }
inline std::string shown(int value) { return std::to_string(value); }

/// The text in quotes, limited to its first 60 bytes. Control characters and bytes that are not
/// valid UTF-8 are shown as "\x07".
std::string shown(std::string_view text);

inline std::string shown(std::string const& text) { return shown(std::string_view(text)); }

} // namespace Tolv::Msgs::Attrs
