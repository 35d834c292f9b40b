#pragma once

#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace Tolv::Tool {

/// Adds an option that may be given several times, with one value each. Later arguments are never
/// taken as further values.
inline CLI::Option* addRepeatable(CLI::App& command, char const* name,
                                  std::vector<std::string>& values, char const* text) {
    return command.add_option(name, values, text)->expected(1)->take_all()->allow_extra_args(false);
}

/// Adds any number of input files.
inline void addFiles(CLI::App& command, std::vector<std::string>& files) {
    command.add_option("FILE", files, "Files to read; \"-\" is the standard input")->type_name("");
}

} // namespace Tolv::Tool
