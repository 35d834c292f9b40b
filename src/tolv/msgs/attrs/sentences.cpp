#include <tolv/msgs/attrs/detail/sentences.h>

#include <charconv>
#include <cmath>

#include <tolv/core/utf8.h>

namespace Tolv::Msgs::Attrs {

std::string shown(double value) {
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Infinity" : "Infinity";
    char buffer[32];
    std::string text(buffer, std::to_chars(buffer, buffer + sizeof buffer, value).ptr);
    // Shortens "7.5e+09" to "7.5e9".
    if (auto const exponent = text.find('e'); exponent != text.npos) {
        if (text[exponent + 1] == '+')
            text.erase(exponent + 1, 1);
        auto const digits = text.find_first_of("123456789", exponent);
        auto const zeros = text.find('0', exponent);
        if (zeros < digits)
            text.erase(zeros, digits - zeros);
    }
    return text;
}

std::string shown(std::string_view text) {
    constexpr std::size_t longest = 60;
    constexpr char const* digits = "0123456789abcdef";
    auto rest = text.substr(0, longest);
    // A multi-byte character is kept or omitted as a whole.
    if (rest.size() < text.size())
        for (int i = 0; i < 3 && !rest.empty() && (text[rest.size()] & 0xC0) == 0x80; ++i)
            rest.remove_suffix(1);
    auto const cut = rest.size() < text.size();

    std::string quoted = "\"";
    auto valid = std::min(findInvalidUtf8(rest), rest.size());
    for (std::size_t i = 0; i < rest.size(); ++i) {
        auto const byte = static_cast<unsigned char>(rest[i]);
        if (i == valid || byte < 0x20 || byte == 0x7F) {
            quoted += "\\x";
            quoted += digits[byte >> 4U];
            quoted += digits[byte & 15U];
            if (i == valid)
                valid = i + 1 + std::min(findInvalidUtf8(rest.substr(i + 1)), rest.size() - i - 1);
        } else {
            if (byte == '"' || byte == '\\')
                quoted += '\\';
            quoted += rest[i];
        }
    }
    return quoted + (cut ? "...\"" : "\"");
}

} // namespace Tolv::Msgs::Attrs
