#pragma once

#include <string>
#include <string_view>

namespace Tolv::Tool {

/// Runs a script of gnuplot and gives what it prints. Nothing goes through a shell, no file of the
/// user's settings is read, and no script names a file.
/// @throws std::runtime_error when gnuplot is not installed, or fails
std::string runGnuplot(std::string const& script);

/// The text as a string of gnuplot. Whatever stands in the text, it cannot end the string: all but
/// letters, digits, spaces and points goes in as an octal code, so that no quote, backtick or line
/// end is left for gnuplot to see in the script.
std::string gnuplotString(std::string_view text);

} // namespace Tolv::Tool
