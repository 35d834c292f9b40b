#pragma once

#include <cstddef>
#include <string>

#include <tolv/core/limits.h>

namespace CLI {
class App;
}

namespace Tolv::Tool {

/// The maximum length of a line of a log.
class LineBound {
public:
    /// Adds --max-line to a subcommand. The bound must outlive it.
    void addOption(CLI::App& command);

    [[nodiscard]] std::size_t bytes() const noexcept { return bytes_; }
    /// The default limits, with this maximum as the limit on a text.
    [[nodiscard]] Limits limits() const noexcept {
        Limits limits;
        limits.textBytes = bytes_;
        return limits;
    }
    /// The error text for a longer line.
    [[nodiscard]] std::string complaint() const {
        return "the line is longer than " + std::to_string(bytes_) + " bytes";
    }

private:
    std::size_t bytes_ = Limits().textBytes;
};

} // namespace Tolv::Tool
