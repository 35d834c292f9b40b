#pragma once

#include <optional>
#include <set>
#include <string>
#include <vector>

#include "classes.h"
#include "examined_line.h"

namespace CLI {
class App;
}

namespace Tolv::Tool {

/// Selects the lines of a log that match every given option.
class Filter {
public:
    /// Adds --id, --family, --from and --to to a subcommand. The filter must outlive it.
    void addOptions(CLI::App& command);

    /// Resolves the ids and families. @throws UsageError
    void resolve(Classes const& classes);

    [[nodiscard]] bool takes(ExaminedLine const& line) const;

private:
    std::vector<std::string> idTexts_;
    std::vector<std::string> families_; ///< numbers or names
    std::vector<std::string> senders_;
    std::vector<std::string> destinations_;
    std::set<unsigned long long> ids_;
    std::set<unsigned int> familyNumbers_;
};

} // namespace Tolv::Tool
