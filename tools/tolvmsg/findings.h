#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "classes.h"
#include "examined_line.h"

/// @file
/// What peers stumble over in a line of a log.
namespace Tolv::Tool {

/// What a log is judged for, in the order of the summary.
enum Rule : std::size_t {
    noMessage,
    unknownId,
    absent,
    wrongValue,
    unknownKey,
    literal,
    rounded,
    invalid,
    more,
    ruleCount
};

constexpr std::array<char const*, ruleCount> ruleNames{
    "no-message", "unknown-id", "absent",  "wrong-value", "unknown-key",
    "literal",    "rounded",    "invalid", "more",
};

/// One fault of a line. Its texts come from outside.
struct Finding {
    Rule rule;
    std::string path;
    std::string text;
    std::string found; ///< empty: nothing to show
};

/// What is to be found in a line, in the order of its fields.
std::vector<Finding> findingsOf(ExaminedLine const& line, Classes const& classes);

} // namespace Tolv::Tool
