#include <algorithm>

#include <tolv/core/utf8.h>

#include "text.h"

namespace Tolv::Tool {

namespace {

void appendHex(std::string& out, unsigned char code) {
    constexpr char digits[] = "0123456789abcdef";
    out.append("\\u00").append({digits[code >> 4U], digits[code & 0xFU]});
}

/// @param special what gets a backslash, beside control characters
std::string escaped(std::string_view text, std::string_view special) {
    auto const valid = validUtf8(text);
    std::string out;
    for (std::size_t i = 0; i < valid.size(); ++i) {
        auto const byte = static_cast<unsigned char>(valid[i]);
        if (special.find(valid[i]) != special.npos) {
            out.append({'\\', valid[i]});
        } else if (byte == '\n') {
            out.append("\\n");
        } else if (byte == '\t') {
            out.append("\\t");
        } else if (byte < 0x20 || byte == 0x7F) {
            appendHex(out, byte);
        } else if (byte == 0xC2 && static_cast<unsigned char>(valid[i + 1]) < 0xA0) {
            appendHex(out, static_cast<unsigned char>(valid[++i])); // U+0080 to U+009F
        } else {
            out.push_back(valid[i]);
        }
    }
    return out;
}

} // namespace

std::string quoted(std::string_view text, std::size_t mostBytes) {
    auto shown = text.substr(0, mostBytes);
    if (shown.size() < text.size())
        shown = shown.substr(0, findInvalidUtf8(shown)); // the cut may be inside of a character
    auto out = '"' + escaped(shown, "\"\\");
    if (shown.size() < text.size())
        return out + "...\" (" + std::to_string(text.size()) + " bytes)";
    return out + '"';
}

std::string harmless(std::string_view text) { return escaped(text, {}); }

std::string unquoted(std::string_view text, std::size_t mostBytes) {
    auto safe = quoted(text, mostBytes);
    return safe.substr(1, safe.size() - 2) == text ? std::string(text) : safe;
}

std::string word(std::string_view text) {
    auto const plain = [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               std::string_view("_-:+@/$#").find(c) != std::string_view::npos;
    };
    if (!text.empty() && text.size() <= 80 && std::all_of(text.begin(), text.end(), plain))
        return std::string(text);
    return quoted(text, 80);
}

std::string validUtf8(std::string_view text) {
    std::string out;
    for (;;) {
        auto const invalid = findInvalidUtf8(text);
        out.append(text.substr(0, invalid));
        if (invalid == std::string_view::npos)
            return out;
        out.append("\xEF\xBF\xBD");
        text.remove_prefix(invalid + 1);
    }
}

std::string counted(std::uint64_t count, char const* one, char const* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

std::size_t width(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
        return (static_cast<unsigned char>(c) >> 6U) != 2;
    }));
}

std::string padded(std::string_view text, std::size_t columns) {
    std::string out(text);
    out.append(columns - std::min(columns, width(text)), ' ');
    return out;
}

} // namespace Tolv::Tool
