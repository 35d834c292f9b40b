#pragma once

#include <string>
#include <string_view>

/// @file
/// Values as they stand in a sentence for people.
namespace Tolv::Msgs::Attrs {

/// "7.5e9", "0.25", "NaN", "-Infinity": short, and the same number when read again.
std::string shown(double value);

inline std::string shown(long long value) { return std::to_string(value); }
inline std::string shown(int value) { return std::to_string(value); }

/// The text in quotes; control characters and what is no UTF-8 as "\x07", and no more than the
/// first 60 bytes.
std::string shown(std::string_view text);

inline std::string shown(std::string const& text) { return shown(std::string_view(text)); }

} // namespace Tolv::Msgs::Attrs
