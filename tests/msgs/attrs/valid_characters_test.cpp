#include <functional>
#include <random>
#include <regex>
#include <string>

#include <gtest/gtest.h>

#include <tolv/core/limits.h>
#include <tolv/msgs/attrs/values.h>

#include "msgs/attrs/judged.h"
#include "support/automaton.h"
#include "support/small_stack.h"

namespace Tolv::Msgs::Attrs {
namespace {

using Testing::onSmallStack;

enum class Outcome { matches, differs, refused };

Outcome outcomeOf(std::string const& pattern, std::string const& value) {
    AttrWithMetaData<std::string, StringMetaData> text(value);
    text.editMetaData().validCharacters = pattern;
    try {
        return text.validate() ? Outcome::matches : Outcome::differs;
    } catch (std::regex_error const&) {
        EXPECT_THROW((void)text.explainInvalid(), std::regex_error);
        return Outcome::refused;
    }
}

std::string times(std::size_t count, std::string const& part) {
    std::string text;
    text.reserve(count * part.size());
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

TEST(ValidCharacters, WhatIsNoExpressionIsRefused) {
    for (auto const* const pattern :
         {"(", ")", "[a", "[[:nothing:]]", "[z-a]", "a{2", "a{2,1}", "\\"})
        EXPECT_EQ(outcomeOf(pattern, "a"), Outcome::refused) << pattern;
    EXPECT_EQ(outcomeOf(std::string("a\0b", 3), "a"), Outcome::refused);
}

// The worst patterns within the bounds, and some beyond them.
TEST(ValidCharacters, HostilePatterns) {
    constexpr Limits limits;
    auto const nested = [](std::size_t depth) {
        return times(depth, "(") + "a" + times(depth, ")");
    };
    struct {
        std::string pattern;
        std::string value;
        Outcome outcome;
        char const* why;
    } const rows[] = {
        {times(limits.patternBytes, "a"), times(limits.patternBytes, "a"), Outcome::matches,
         "as long as can be"},
        {times(limits.patternBytes + 1, "a"), "a", Outcome::refused, "a byte longer"},
        {times(10'000'000, "a"), "a", Outcome::refused, "ten million bytes"},
        {times(5'000'000, "("), "a", Outcome::refused, "nested without end"},
        {nested(limits.patternNesting), "a", Outcome::matches, "as deep as can be"},
        {nested(limits.patternNesting + 1), "a", Outcome::refused, "a group deeper"},
        {times(12, nested(40)), times(12, "a"), Outcome::matches, "groups side by side"},
        {times(64, "aaaaaaaaaaaaa(") + times(64, ")"), times(832, "a"), Outcome::matches,
         "long and deep"},
        {times(512, "a?"), times(300, "a"), Outcome::matches, "all of it optional"},
        {"a" + times(1000, "*"), times(300, "a"), Outcome::matches, "stars upon stars"},
        {"a" + times(1023, "*"), "b", Outcome::differs, "stars upon stars"},
        {times(341, "a|a"), "aaa", Outcome::differs, "alternatives"},
        {"(" + times(500, "a|") + "b)*", times(300, "a"), Outcome::matches, "many alternatives"},
        {times(341, "[a]"), times(341, "a"), Outcome::matches, "many brackets"},
        {"(^^^^^^^^){200}a", "a", Outcome::matches, "many anchors"},
        {"(a?){0,400}", times(300, "a"), Outcome::matches, "repeated and optional"},
        {"(){0,1000}", "", Outcome::matches, "repeated nothing"},
        {"a{1000}", times(1000, "a"), Outcome::matches, "many copies"},
        {"a{1000}", times(999, "a"), Outcome::differs, "many copies"},
        {"a{0,1000}b", times(999, "a") + "b", Outcome::matches, "many copies"},
        {"[a-z]{1024}", times(1024, "a"), Outcome::matches, "many copies"},
        {"[a-z]{2000}", times(2000, "a"), Outcome::matches, "many copies"},
        {"a{2045}", times(2045, "a"), Outcome::matches, "as many states as can be"},
        {"a{2046}", times(2046, "a"), Outcome::refused, "a state more"},
        {"(a?){0,681}", times(681, "a"), Outcome::matches, "as many as can be, all optional"},
        {"a{0,1022}", times(1022, "a"), Outcome::matches, "as many as can be, all optional"},
        {"(){0,2045}", "", Outcome::matches, "as many as can be, all of them nothing"},
        {"(){1000}{90}", "", Outcome::refused, "placeholders without end"},
        {"(){2049}", "", Outcome::refused, "more copies than states, of nothing"},
        {"(){9999999999999999}", "", Outcome::refused, "copies of nothing, for years"},
        {"(){0,9999999999999999}", "", Outcome::refused, "copies of nothing, for years"},
        {"(){99999999999999999999999}", "", Outcome::refused, "too many for a number"},
        {"([a-zA-Z0-9]([a-zA-Z0-9-]{0,61}[a-zA-Z0-9])?\\.){0,15}[a-zA-Z]{2,63}",
         times(15, "a-0.") + "example", Outcome::matches, "a host name, label by label"},
        {"([a-z0-9]|-|\\.){1,253}", "host-1." + times(246, "a"), Outcome::matches,
         "a host name, byte by byte"},
        {"a{5000}", "a", Outcome::refused, "too many copies"},
        {"a{999999999999999999999999}", "a", Outcome::refused, "too many for a number"},
        {"a{1,999999999999999999999999}", "a", Outcome::refused, "too many for a number"},
        {"(a{100}){100}", "a", Outcome::refused, "copies of copies"},
        {"((a{20}){20}){20}", "a", Outcome::refused, "copies of copies"},
        {"a{20}{20}{20}", "a", Outcome::refused, "copies of copies, without groups"},
        {"(a{1000}){1000}", "a", Outcome::refused, "copies of copies"},
        {"[{1000}]{1000}", times(1000, "{"), Outcome::matches, "a bracket hides what is in it"},
        {"[]{5000}]", "{", Outcome::matches, "a bracket that holds \"]\""},
        {"[^]{5000}]", "a", Outcome::matches, "a bracket that holds \"]\""},
        {"[[:alpha:]{5000}]", "{", Outcome::matches, "a bracket that holds a class"},
        {"\\[a{5000}", "a", Outcome::refused, "no bracket"},
        {"[a\\]{5000}", "a", Outcome::refused, "a backslash is a member like any other"},
        {"[[.].]{5000}]", "]", Outcome::refused, "the class does not end at its first \"]\""},
        {"(a*)*(a*)*b", times(2000, "a"), Outcome::differs, "exponential when backtracking"},
        {"(a|a)*(a|aa)*c", times(2000, "a"), Outcome::differs, "exponential when backtracking"},
    };
    for (auto const& row : rows)
        onSmallStack(448, [&row] {
            EXPECT_EQ(outcomeOf(row.pattern, row.value), row.outcome)
                << row.why << ": " << row.pattern.substr(0, 60);
        });
}

#ifdef __GLIBCXX__
TEST(ValidCharacters, CountsWhatIsBuilt) {
    std::mt19937 random(17); // NOLINT(cert-msc51-cpp): the same patterns each time
    auto const oneOf = [&](auto const&... texts) {
        std::string const all[] = {texts...};
        return all[random() % sizeof...(texts)];
    };
    std::function<std::string(int)> const expression = [&](int depth) {
        std::string text;
        for (auto terms = random() % 4; terms > 0; --terms) {
            if (depth == 0 || random() % 3 != 0)
                text += oneOf("a", ".", "[^]b-d]", "[[:digit:]{3}]", "\\{", "a|b", "(|a)");
            else
                text += '(' + expression(depth - 1) + ')';
            for (auto quantifiers = random() % 3; quantifiers > 0; --quantifiers)
                text += oneOf("*", "+", "?", "{0}", "{1}", "{3}", "{2,}", "{0,}", "{0,3}", "{2,4}");
            text += oneOf("", "", "", "|", "^", "$");
        }
        return text;
    };
    Limits limits;
    limits.patternStates = 100'000;
    for (int i = 0; i < 5000; ++i) {
        auto const pattern = expression(3);
        auto const built = Testing::builtFor(pattern);
        auto const counted = sizeOf(pattern, limits);
        ASSERT_EQ(counted.states, built.states) << pattern;
        ASSERT_EQ(counted.built, built.built) << pattern;
    }
}
#endif

TEST(ValidCharacters, HostileValues) {
#ifdef __OPTIMIZE__
    auto const many = std::string(10'000'000, 'a');
#else
    auto const many = std::string(2'000'000, 'a');
#endif
    onSmallStack(256, [&many] {
        EXPECT_EQ(outcomeOf("[0-9]*", many), Outcome::differs);
        EXPECT_EQ(outcomeOf("[a-z]*", many), Outcome::matches);
        // Too much work: as many steps as states times bytes.
        EXPECT_EQ(outcomeOf("[a-z]*(a|b|c|d|e|f|g|h|i|j){0,3}", many), Outcome::refused);
        EXPECT_EQ(outcomeOf("a{0,1000}", many), Outcome::refused);
    });
}

} // namespace
} // namespace Tolv::Msgs::Attrs
