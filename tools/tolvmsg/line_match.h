#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Tolv::Tool {

/// What a line of a log is matched by.
struct LineKey {
    std::uint32_t content; ///< equal exactly when the lines are
    std::uint32_t kind;    ///< equal when the lines can be versions of one another; 0: of none
};

/// Pairs the lines of two logs, in ascending order on both sides: equal lines with each other, and
/// between these lines of one kind. What is in no pair was inserted or deleted.
///
/// Lines that are there once on both sides hold the logs together; between them the best pairing is
/// looked for within 1024 lines, so that time and memory stay in proportion to the logs.
std::vector<std::pair<std::size_t, std::size_t>> matchLines(std::vector<LineKey> const& left,
                                                            std::vector<LineKey> const& right);

} // namespace Tolv::Tool
