#pragma once

#include <complex>
#include <string>

/// @file
/// Numbers in readable form.
namespace Tolv::Tool {

/// "7.5e9", "0.25", "NaN", "-Infinity": the shortest text that reads back as the same number.
std::string numberText(double value);
/// "1.5 - 2i"
std::string numberText(std::complex<double> value);
/// "(true, false)"
std::string numberText(std::complex<bool> value);
inline std::string numberText(bool value) { return value ? "true" : "false"; }
inline std::string numberText(int value) { return std::to_string(value); }
inline std::string numberText(long long value) { return std::to_string(value); }
inline std::string numberText(unsigned long long value) { return std::to_string(value); }

/// How to show a number of an attribute.
struct NumberStyle {
    static constexpr int mostDigits = 17;

    int digits = -1;  ///< decimal places, up to `mostDigits`; negative: as many as necessary
    std::string unit; ///< empty if there is none

    /// The number with its unit, followed by the exact number if it was rounded.
    [[nodiscard]] std::string quantity(double value) const;
    [[nodiscard]] std::string quantity(std::complex<double> value) const;
    [[nodiscard]] std::string quantity(bool value) const { return withUnit(numberText(value)); }
    [[nodiscard]] std::string quantity(long long value) const {
        return withUnit(numberText(value));
    }

    /// The same for a computed number, shown with nine significant digits.
    [[nodiscard]] std::string computed(double value) const;

    [[nodiscard]] std::string withUnit(std::string const& text) const {
        return unit.empty() ? text : text + ' ' + unit;
    }
};

} // namespace Tolv::Tool
