#include <regex>
#include <string>

#include <gtest/gtest.h>

#include <tolv/core/limits.h>
#include <tolv/msgs/attrs/values.h>

#include "msgs/attrs/judged.h"
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
        onSmallStack(256, [&row] {
            EXPECT_EQ(outcomeOf(row.pattern, row.value), row.outcome)
                << row.why << ": " << row.pattern.substr(0, 60);
        });
}

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
