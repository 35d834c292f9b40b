#pragma once

#include <algorithm>
#include <cmath>
#include <complex>
#include <cstddef>
#include <limits>
#include <type_traits>
#include <vector>

namespace Tolv::Tool {

/// Minimum, maximum and mean of the samples of a trace. Complex samples count by magnitude, true
/// counts as 1, and NaN is ignored.
struct SampleStatistics {
    std::size_t numbers = 0; ///< samples that are not NaN; if 0, the other members are meaningless
    double minimum = std::numeric_limits<double>::infinity();
    double maximum = -std::numeric_limits<double>::infinity();
    double mean = 0;

    template <class T>
    explicit SampleStatistics(std::vector<T> const& samples) {
        long double sum = 0;
        for (T const sample : samples) {
            auto const value = measureOf(sample);
            if (std::isnan(value))
                continue;
            ++numbers;
            minimum = std::min(minimum, value);
            maximum = std::max(maximum, value);
            sum += value;
        }
        if (numbers > 0)
            mean = static_cast<double>(sum / static_cast<long double>(numbers));
    }

    /// The remark to append to a statistic of samples of type `T`.
    template <class T>
    static constexpr char const* meaning() {
        if constexpr (std::is_same_v<T, bool>)
            return "  (true counts as 1)";
        else if constexpr (std::is_same_v<T, std::complex<bool>>)
            return "  (of the magnitude; true counts as 1)";
        else if constexpr (std::is_same_v<T, std::complex<double>>)
            return "  (of the magnitude)";
        else
            return "";
    }

private:
    static double measureOf(double sample) { return sample; }
    static double measureOf(bool sample) { return sample ? 1 : 0; }
    template <class T>
    static double measureOf(std::complex<T> const& sample) {
        auto const real = measureOf(sample.real());
        auto const imaginary = measureOf(sample.imag());
        // std::hypot would return infinity if one part is infinite and the other NaN.
        return std::isnan(real)        ? real
               : std::isnan(imaginary) ? imaginary
                                       : std::hypot(real, imaginary);
    }
};

} // namespace Tolv::Tool
