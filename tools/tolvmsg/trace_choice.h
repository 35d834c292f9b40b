#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "classes.h"
#include "filter.h"
#include "samples.h"

namespace Tolv::Tool {

/// An array of numbers out of a message, with what the attribute says of it.
struct Trace {
    std::uint64_t line = 0; ///< where it was found, from 1
    std::optional<unsigned long long> id;
    std::string path; ///< "Data.trace"
    std::string name; ///< of the attribute; empty: not told
    std::string unit; ///< likewise
    Samples samples;
    std::vector<std::pair<unsigned long long, unsigned long long>> segments; ///< offset, length
};

/// Which trace of a log is meant, as the command line says.
class TraceChoice {
public:
    /// Adds the filters, --line, --path and FILE to a subcommand. The choice outlives it.
    void addOptions(CLI::App& command);

    /// The first trace that is meant; when there is none, says so on the standard error.
    /// @throws UsageError @throws std::runtime_error when the file cannot be read
    [[nodiscard]] std::optional<Trace> find(Classes const& classes);

private:
    Filter filter_;
    std::uint64_t line_ = 0;
    std::string path_;
    std::string file_ = "-";
};

} // namespace Tolv::Tool
