#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "classes.h"
#include "filter.h"
#include "line_bound.h"
#include "trace_search.h"

namespace Tolv::Tool {

/// Which trace of a log is meant, as the command line says.
class TraceChoice {
public:
    /// Adds --max-line, the filters, --line, --path and FILE to a subcommand. The choice outlives
    /// it.
    void addOptions(CLI::App& command);

    /// The first trace that is meant; when there is none, says so on the standard error.
    /// @throws UsageError @throws std::runtime_error when the file cannot be read
    [[nodiscard]] std::optional<Trace> find(Classes const& classes);

private:
    LineBound bound_;
    Filter filter_;
    std::uint64_t line_ = 0;
    std::string path_;
    std::string file_ = "-";
};

} // namespace Tolv::Tool
