#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "classes.h"
#include "filter.h"
#include "line_bound.h"
#include "trace_search.h"

namespace Tolv::Tool {

/// Selects a trace of a log by command-line options.
class TraceChoice {
public:
    /// Adds --max-line, the filters, --line, --path and FILE to a subcommand. The choice must
    /// outlive it.
    void addOptions(CLI::App& command);

    /// The first matching trace. If there is none, prints an error on standard error.
    /// @throws UsageError @throws std::runtime_error if the file cannot be read
    [[nodiscard]] std::optional<Trace> find(Classes const& classes);

private:
    LineBound bound_;
    Filter filter_;
    std::uint64_t line_ = 0;
    std::string path_;
    std::string file_ = "-";
};

} // namespace Tolv::Tool
