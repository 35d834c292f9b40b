#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace Tolv::Tool {

/// The key by which lines of logs are matched.
struct LineKey {
    std::uint32_t content; ///< equal if and only if the lines are equal
    std::uint32_t kind;    ///< equal if the lines can be versions of each other; 0: of no other
};

/// Pairs the lines of two logs, in ascending order on both sides: first equal lines, then lines of
/// the same kind between them. Unpaired lines were inserted or deleted.
///
/// Lines that occur exactly once on both sides are used as anchors. Between anchors the best
/// pairing is searched within a window of 1024 lines, so that time and memory are linear in the
/// size of the logs.
std::vector<std::pair<std::size_t, std::size_t>> matchLines(std::vector<LineKey> const& left,
                                                            std::vector<LineKey> const& right);

} // namespace Tolv::Tool
