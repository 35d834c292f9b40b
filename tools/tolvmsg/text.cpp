#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include <tolv/core/utf8.h>

#include "text.h"

namespace Tolv::Tool {

namespace {

/// Characters that move the cursor of a terminal, change the order or appearance of the text around
/// them, or are invisible.
constexpr std::array<std::pair<char32_t, char32_t>, 12> harmful{{
    {0x0000, 0x001F},   // C0
    {0x007F, 0x009F},   // DELETE and C1
    {0x00AD, 0x00AD},   // soft hyphen
    {0x061C, 0x061C},   // Arabic letter mark
    {0x180E, 0x180E},   // Mongolian vowel separator
    {0x200B, 0x200F},   // zero width; direction marks
    {0x2028, 0x202E},   // line and paragraph separators; direction embeddings and overrides
    {0x2060, 0x206F},   // invisible operators; direction isolates
    {0xFEFF, 0xFEFF},   // byte order mark
    {0xFFF9, 0xFFFB},   // interlinear annotation
    {0x1D173, 0x1D17A}, // invisible musical symbols
    {0xE0000, 0xE007F}, // tags
}};

bool isHarmful(char32_t code) {
    return std::any_of(harmful.begin(), harmful.end(), [&](auto const& range) {
        return code >= range.first && code <= range.second;
    });
}

/// The first character of a valid UTF-8 text, and its number of bytes.
std::pair<char32_t, std::size_t> firstOf(std::string_view text) {
    auto const lead = static_cast<unsigned char>(text[0]);
    std::size_t const size = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    char32_t code = size == 1 ? lead : lead & (0x7FU >> size);
    for (std::size_t i = 1; i < size; ++i)
        code = code << 6U | (static_cast<unsigned char>(text[i]) & 0x3FU);
    return {code, size};
}

/// Appends a JSON escape; characters beyond 16 bits become a surrogate pair.
void appendEscape(std::string& out, char32_t code) {
    auto const append = [&out](char32_t unit) {
        constexpr char digits[] = "0123456789abcdef";
        out.append("\\u");
        for (unsigned int shift = 16; shift > 0; shift -= 4)
            out.push_back(digits[unit >> (shift - 4) & 0xFU]);
    };
    if (code == '\n') {
        out.append("\\n");
    } else if (code == '\t') {
        out.append("\\t");
    } else if (code < 0x10000) {
        append(code);
    } else {
        append(0xD800 + ((code - 0x10000) >> 10U));
        append(0xDC00 + ((code - 0x10000) & 0x3FFU));
    }
}

/// The number of leading bytes that are printable ASCII or C0 control characters.
/// @param withControls whether C0 counts
std::size_t plainBytes(std::string_view text, bool withControls) {
    std::size_t at = 0;
    if (withControls)
        for (std::uint64_t bytes = 0; at + sizeof bytes <= text.size(); at += sizeof bytes) {
            std::memcpy(&bytes, text.data() + at, sizeof bytes);
            // The top bit of a byte of 0x7F or more is set, or the addition sets it.
            if (((bytes + 0x0101010101010101U) | bytes) & 0x8080808080808080U)
                break;
        }
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x7F &&
           (withControls || text[at] >= 0x20))
        ++at;
    return at;
}

/// The text with all harmful characters escaped.
/// @param special further characters, to escape with a backslash
/// @param keepsControls whether to keep C0 characters
std::string escaped(std::string_view text, std::string_view special, bool keepsControls) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        auto plain = plainBytes(text, keepsControls);
        if (!special.empty())
            plain = std::min(plain, text.substr(0, plain).find_first_of(special));
        out.append(text.substr(0, plain));
        text.remove_prefix(plain);
        if (text.empty())
            break;
        auto const [code, size] = firstOf(text);
        if (special.find(text[0]) != special.npos)
            out.append({'\\', text[0]});
        else if (isHarmful(code))
            appendEscape(out, code);
        else
            out.append(text.substr(0, size));
        text.remove_prefix(size);
    }
    return out;
}

} // namespace

std::string quoted(std::string_view text, std::size_t mostBytes) {
    auto shown = text.substr(0, mostBytes);
    if (shown.size() < text.size())
        shown = shown.substr(0, findInvalidUtf8(shown)); // the cut may be within a character
    auto out = '"' + escaped(validUtf8(shown), "\"\\", false);
    if (shown.size() < text.size())
        return out + "...\" (" + std::to_string(text.size()) + " bytes)";
    return out + '"';
}

std::string harmless(std::string_view text) { return escaped(validUtf8(text), {}, false); }

std::string harmlessJson(std::string json) {
    return plainBytes(json, true) == json.size() ? std::move(json) : escaped(json, {}, true);
}

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
