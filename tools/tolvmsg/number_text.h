#pragma once

#include <complex>
#include <string>

/// @file
/// Numbers as people write them.
namespace Tolv::Tool {

/// "7.5e9", "0.25", "NaN", "-Infinity": the shortest text that is the same number when read again.
std::string numberText(double value);
/// "1.5 - 2i"
std::string numberText(std::complex<double> value);
/// "(true, false)"
std::string numberText(std::complex<bool> value);
inline std::string numberText(bool value) { return value ? "true" : "false"; }
inline std::string numberText(int value) { return std::to_string(value); }
inline std::string numberText(long long value) { return std::to_string(value); }
inline std::string numberText(unsigned long long value) { return std::to_string(value); }

/// How an attribute wants its number to be shown.
struct NumberStyle {
    static constexpr int mostDigits = 17;

    int digits = -1;  ///< behind the point, up to `mostDigits`; negative: as many as there are
    std::string unit; ///< empty: none

    /// The number and its unit, and the exact number behind it where the digits don't tell it.
    [[nodiscard]] std::string quantity(double value) const;
    [[nodiscard]] std::string quantity(std::complex<double> value) const;
    [[nodiscard]] std::string quantity(bool value) const { return withUnit(numberText(value)); }
    [[nodiscard]] std::string quantity(long long value) const {
        return withUnit(numberText(value));
    }

    /// The same for a number that comes from a computation: nine of its digits count.
    [[nodiscard]] std::string computed(double value) const;

    [[nodiscard]] std::string withUnit(std::string const& text) const {
        return unit.empty() ? text : text + ' ' + unit;
    }
};

} // namespace Tolv::Tool
