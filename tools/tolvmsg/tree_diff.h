#pragma once

#include <complex>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <tolv/core/metadata/element.h>

#include "samples.h"

/// @file
/// The differences between two trees.
namespace Tolv::Tool {

/// How far two numbers may differ and still count as equal; satisfying either bound suffices.
struct Tolerance {
    double absolute = 0;
    double relative = 0; ///< of the larger magnitude

    /// NaN equals NaN, and infinities of the same sign are equal.
    [[nodiscard]] bool covers(std::complex<double> left, std::complex<double> right) const;
};

/// Where two arrays of samples differ, within their common length.
struct SampleDifference {
    static constexpr std::size_t mostRuns = 100;

    std::size_t count = 0;                                 ///< samples that differ
    std::size_t runCount = 0;                              ///< runs of adjacent samples that differ
    std::vector<std::pair<std::size_t, std::size_t>> runs; ///< first and last, at most `mostRuns`
    std::size_t last = 0;                                  ///< the last sample that differs
    double most = 0;    ///< the largest difference; infinite if one side is not finite
    std::size_t at = 0; ///< index of its first occurrence
};

struct Difference {
    enum class Kind { changed, onlyLeft, onlyRight, length, samples };
    Kind kind;
    std::string path;
    std::string left;                        ///< abbreviated; empty if absent
    std::string right;                       ///< abbreviated; empty if absent
    std::optional<double> amount;            ///< the difference of two numbers
    std::optional<SampleDifference> samples; ///< of `Kind::samples`
};

/// The differences, in the order of the left tree. The order of keys and the form of arrays, plain
/// or encoded, do not matter. The tolerance does not apply to message ids.
/// @param ignored paths and key names to leave out
std::vector<Difference> differencesOf(MetaData::Element const& left, MetaData::Element const& right,
                                      Tolerance const& tolerance,
                                      std::vector<std::string> const& ignored);

} // namespace Tolv::Tool
