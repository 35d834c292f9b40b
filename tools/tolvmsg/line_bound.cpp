#include <CLI/CLI.hpp>

#include "line_bound.h"

namespace Tolv::Tool {

void LineBound::addOption(CLI::App& command) {
    command
        .add_option("--max-line", bytes_,
                    "Longest accepted line (default 256M; suffixes K, M and G)")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::Range(std::size_t{1}, std::size_t{1} << 31U))
        ->option_text("SIZE");
}

} // namespace Tolv::Tool
