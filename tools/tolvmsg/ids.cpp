#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cstdio>
#include <numeric>

#include "commands.h"
#include "ids.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

template <class T>
bool parseWhole(std::string_view text, T& value, int base) {
    auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    return error == std::errc() && end == text.data() + text.size();
}

std::optional<unsigned long long> parseDotted(std::string_view text) {
    std::array<unsigned short, 4> fields{};
    for (std::size_t i = 0; i < fields.size(); ++i) {
        auto const dot = i + 1 < fields.size() ? text.find('.') : text.size();
        if (dot == std::string_view::npos || !parseWhole(text.substr(0, dot), fields[i], 10))
            return {};
        text.remove_prefix(std::min(dot + 1, text.size()));
    }
    return Msgs::Identifier::toValue(fields[0], fields[1], fields[2], fields[3]);
}

std::string lowerCase(std::string_view text) {
    std::string out(text);
    for (auto& c : out)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

/// The edit distance of two words: insertions, deletions and replacements.
std::size_t distance(std::string_view from, std::string_view to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        auto diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            auto const replaced = diagonal + (from[i - 1] != to[j - 1] ? 1 : 0);
            diagonal = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, replaced});
        }
    }
    return row.back();
}

std::string listed(std::vector<std::string> const& names) {
    std::string out;
    for (auto const& name : names)
        out.append(out.empty() ? "" : ", ").append(name);
    return out;
}

/// The aliases similar to `text`, nearest first.
std::vector<std::string> similar(Classes const& classes, std::string_view text) {
    auto const wanted = lowerCase(text.substr(0, 200));
    auto const tolerated = 1 + wanted.size() / 4;
    std::vector<std::pair<std::size_t, std::string>> near;
    for (auto const& known : classes.all()) {
        if (known.alias.empty())
            continue;
        auto const full = lowerCase(known.alias);
        auto const brief = lowerCase(known.shortAlias);
        auto const away = std::min(distance(wanted, full), distance(wanted, brief));
        if (away <= tolerated)
            near.emplace_back(away, known.alias);
        else if (wanted.size() >= 3 && full.find(wanted) != std::string::npos)
            near.emplace_back(tolerated + away, known.alias);
    }
    std::sort(near.begin(), near.end());
    near.resize(std::min(near.size(), std::size_t{4}));
    std::vector<std::string> names;
    names.reserve(near.size());
    for (auto& [away, name] : near)
        names.push_back(std::move(name));
    return names;
}

} // namespace

std::string hexadecimal(unsigned long long id) {
    char text[19];
    std::snprintf(text, sizeof text, "0x%016llx", id);
    return text;
}

std::string dotted(unsigned long long value) {
    Msgs::Identifier const id(value);
    return std::to_string(id.family()) + '.' + std::to_string(id.sub1()) + '.' +
           std::to_string(id.sub2()) + '.' + std::to_string(id.type());
}

std::optional<unsigned long long> parseId(std::string_view text) {
    unsigned long long id = 0;
    if (text.starts_with("0x") || text.starts_with("0X"))
        return parseWhole(text.substr(2), id, 16) ? std::optional(id) : std::nullopt;
    return parseWhole(text, id, 10) ? std::optional(id) : parseDotted(text);
}

MessageClass const& resolveClass(Classes const& classes, std::string_view text) {
    constexpr auto seeList = "; \"tolvmsg list\" shows all classes";
    if (auto const id = parseId(text)) {
        if (auto const* const found = classes.find(*id))
            return *found;
        throw UsageError("no message class has the id " + hexadecimal(*id) + " (" + dotted(*id) +
                         ")" + seeList);
    }
    std::vector<MessageClass const*> found;
    for (auto const& known : classes.all()) {
        if (known.name() == text)
            return known;
        if (known.shortAlias == text)
            found.push_back(&known);
    }
    if (found.size() == 1)
        return *found.front();
    if (!found.empty()) {
        std::vector<std::string> names;
        names.reserve(found.size());
        for (auto const* const known : found)
            names.push_back(known->alias);
        throw UsageError(quoted(text, 200) + " is ambiguous: " + listed(names));
    }
    auto const near = similar(classes, text);
    throw UsageError(quoted(text, 200) + " is neither the id nor the alias of a message class" +
                     (near.empty() ? seeList : "; did you mean " + listed(near) + '?'));
}

} // namespace Tolv::Tool
