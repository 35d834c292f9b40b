#include <charconv>
#include <cmath>

#include "number_text.h"

namespace Tolv::Tool {

namespace {

constexpr double mostFixed = 1e15; ///< above this a double has hardly any decimal places

/// @param format the arguments of to_chars after the number
template <class... Format>
std::string converted(double value, Format... format) {
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Infinity" : "Infinity";
    char buffer[64];
    std::string text(buffer, std::to_chars(buffer, buffer + sizeof buffer, value, format...).ptr);
    if (auto const exponent = text.find('e'); exponent != text.npos) { // as in "7.5e+09"
        if (text[exponent + 2] == '0')
            text.erase(exponent + 2, 1);
        if (text[exponent + 1] == '+')
            text.erase(exponent + 1, 1);
    }
    return text;
}

std::string fixed(double value, int digits) {
    return digits >= 0 && std::abs(value) < mostFixed
               ? converted(value, std::chars_format::fixed, digits)
               : converted(value);
}

bool isExact(double value, int digits) {
    if (!std::isfinite(value))
        return true;
    auto const text = fixed(value, digits);
    double read = 0;
    std::from_chars(text.data(), text.data() + text.size(), read);
    return read == value;
}

std::string complexText(std::complex<double> value, int digits) {
    auto const imaginary = fixed(value.imag(), digits);
    return fixed(value.real(), digits) +
           (imaginary.starts_with('-') ? " - " + imaginary.substr(1) : " + " + imaginary) + 'i';
}

std::string exactly(std::string const& text) { return "  (exactly " + text + ')'; }

} // namespace

std::string numberText(double value) { return converted(value); }

std::string numberText(std::complex<double> value) { return complexText(value, -1); }

std::string numberText(std::complex<bool> value) {
    return '(' + numberText(value.real()) + ", " + numberText(value.imag()) + ')';
}

std::string NumberStyle::quantity(double value) const {
    return withUnit(fixed(value, digits)) +
           (isExact(value, digits) ? "" : exactly(numberText(value)));
}

std::string NumberStyle::quantity(std::complex<double> value) const {
    auto const text = complexText(value, digits);
    return withUnit(unit.empty() ? text : '(' + text + ')') +
           (isExact(value.real(), digits) && isExact(value.imag(), digits)
                ? ""
                : exactly(numberText(value)));
}

std::string NumberStyle::computed(double value) const {
    return withUnit(digits >= 0 && std::abs(value) < mostFixed
                        ? fixed(value, digits)
                        : converted(value, std::chars_format::general, 9));
}

} // namespace Tolv::Tool
