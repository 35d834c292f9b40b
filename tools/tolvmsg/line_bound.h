#pragma once

#include <cstddef>
#include <string>

#include <tolv/core/limits.h>

namespace CLI {
class App;
}

namespace Tolv::Tool {

/// How long a line of a log may be.
class LineBound {
public:
    /// Adds --max-line to a subcommand. The bound outlives it.
    void addOption(CLI::App& command);

    [[nodiscard]] std::size_t bytes() const noexcept { return bytes_; }
    /// With this bound in place of that on a text.
    [[nodiscard]] Limits limits() const noexcept {
        Limits limits;
        limits.textBytes = bytes_;
        return limits;
    }
    /// What is wrong with a line that is longer.
    [[nodiscard]] std::string complaint() const {
        return "the line is longer than " + std::to_string(bytes_) + " bytes";
    }

private:
    std::size_t bytes_ = Limits().textBytes;
};

} // namespace Tolv::Tool
