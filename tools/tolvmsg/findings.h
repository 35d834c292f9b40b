#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "classes.h"
#include "examined_line.h"

/// @file
/// Problems that peers would have with a line of a log.
namespace Tolv::Tool {

/// The rules of `lint`, in the order of the summary.
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

/// One problem in a line. Its texts are untrusted input.
struct Finding {
    Rule rule;
    std::string path;
    std::string text;
    std::string found; ///< empty if there is nothing to show
};

/// All findings in a line, in the order of its fields.
std::vector<Finding> findingsOf(ExaminedLine const& line, Classes const& classes);

} // namespace Tolv::Tool
