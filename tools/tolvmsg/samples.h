#pragma once

#include <complex>
#include <cstddef>
#include <optional>
#include <vector>

#include <tolv/core/metadata/element.h>

namespace Tolv::Tool {

/// The samples of a trace, or of any other array of numbers, booleans (0 and 1) or pairs of these.
struct Samples {
    std::vector<double> real;
    std::vector<double> imaginary; ///< as many as `real` if complex, otherwise none
    bool isComplex = false;
    bool isBoolean = false;

    [[nodiscard]] std::size_t size() const noexcept { return real.size(); }
    [[nodiscard]] std::complex<double> operator[](std::size_t i) const noexcept {
        return {real[i], isComplex ? imaginary[i] : 0};
    }
};

/// The samples of an array in plain or encoded form. Empty for anything else, for an encoded array
/// that a reader refuses, and for integers that a double cannot represent.
std::optional<Samples> samplesOf(MetaData::Element const& element);

} // namespace Tolv::Tool
