#pragma once

#include <string>
#include <string_view>

namespace Tolv::Tool {

/// Runs a gnuplot script and returns its output. No shell is involved, gnuplot does not read the
/// user's settings, and scripts name no files.
/// @throws std::runtime_error if gnuplot is not installed, or fails
std::string runGnuplot(std::string const& script);

/// The text as a gnuplot string literal. No text can terminate the literal: everything except
/// letters, digits, spaces and points is written as an octal escape, so that no quote, backtick or
/// line end appears in the script.
std::string gnuplotString(std::string_view text);

} // namespace Tolv::Tool
