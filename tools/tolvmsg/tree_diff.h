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
/// What differs between two trees.
namespace Tolv::Tool {

/// How far two numbers may be from one another and still count as equal: either bound suffices.
struct Tolerance {
    double absolute = 0;
    double relative = 0; ///< of the larger magnitude

    /// NaN equals NaN, and infinities those of the same sign.
    [[nodiscard]] bool covers(std::complex<double> left, std::complex<double> right) const;
};

/// Where two arrays of samples differ, as far as both go.
struct SampleDifference {
    static constexpr std::size_t mostRuns = 100;

    std::size_t count = 0;                                 ///< samples that differ
    std::size_t runCount = 0;                              ///< of samples in a row that differ
    std::vector<std::pair<std::size_t, std::size_t>> runs; ///< first and last, at most `mostRuns`
    std::size_t last = 0;                                  ///< the last sample that differs
    double most = 0;    ///< the largest difference; infinite where one side is no finite number
    std::size_t at = 0; ///< where it is, for the first time
};

struct Difference {
    enum class Kind { changed, onlyLeft, onlyRight, length, samples };
    Kind kind;
    std::string path;
    std::string left;                        ///< short; empty when it is not there
    std::string right;                       ///< likewise
    std::optional<double> amount;            ///< of two numbers
    std::optional<SampleDifference> samples; ///< of `Kind::samples`
};

/// What differs, in the order of the left tree. The order of keys does not count, nor does the form
/// of an array, plain or encoded. Ids of messages have no tolerance.
/// @param ignored paths and names of keys that are not compared
std::vector<Difference> differencesOf(MetaData::Element const& left, MetaData::Element const& right,
                                      Tolerance const& tolerance,
                                      std::vector<std::string> const& ignored);

} // namespace Tolv::Tool
