#include <CLI/CLI.hpp>

#include "line_bound.h"

namespace Tolv::Tool {

void LineBound::addOption(CLI::App& command) {
    command
        .add_option("--max-line", bytes_,
                    "A longer line is an error (default 256M; K, M and G are understood)")
        ->transform(CLI::AsSizeValue(false))
        ->check(CLI::Range(std::size_t{1}, std::size_t{1} << 31U))
        ->option_text("SIZE");
}

} // namespace Tolv::Tool
