#include <charconv>

#include <tolv/core/metadata/field_info.h>

namespace Tolv::MetaData {

namespace {

std::string_view trimmed(std::string_view text) {
    auto const first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

std::vector<Literal> FieldInfo::literals() const {
    if (facts_.literals != nullptr)
        return facts_.literals();
    // "0 passed | 1 failed", as checked at compile time
    std::vector<Literal> all;
    for (auto rest = textAt(facts_.words); !rest.empty();) {
        auto const bar = rest.find('|');
        auto const one = trimmed(rest.substr(0, bar));
        rest = bar == std::string_view::npos ? std::string_view() : rest.substr(bar + 1);
        auto const space = one.find(' ');
        auto& literal = all.emplace_back();
        std::from_chars(one.data(), one.data() + space, literal.value);
        literal.word = trimmed(one.substr(space));
    }
    return all;
}

} // namespace Tolv::MetaData
