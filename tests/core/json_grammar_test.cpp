// What is JSON and what is not, by enumeration: all short texts of relevant characters, all escapes
// and all bytes, at all positions that the reader's vector code distinguishes.

#include <tolv/core/metadata/json.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>

#include "support/trees.h"

namespace Tolv::MetaData {
namespace {

/// The tree of `text`, or nothing if it is refused.
std::optional<Element> read(std::string_view text) {
    Element element;
    try {
        ReaderJson::Read(element, text);
    } catch (Exception::InvalidParameter const&) {
        EXPECT_THROW(Testing::Taken().copyFromText(text), Exception::InvalidParameter);
        return std::nullopt;
    }
    Testing::Taken taken;
    taken.copyFromText(text);
    EXPECT_EQ(taken.tree, element) << text;
    return element;
}

/// A second implementation of the grammar of RFC 8259, as simple as possible: each function removes
/// a production from the start of the text.
class Grammar {
public:
    /// Where a reader notices that the text is not valid; nothing if it is valid.
    static std::optional<std::size_t> faultIn(std::string_view text) {
        Grammar grammar{text};
        auto const isText = grammar.value() && grammar.rest_.empty();
        return isText ? std::nullopt : std::optional(grammar.reached_);
    }

private:
    explicit Grammar(std::string_view text) : rest_(text), size_(text.size()) {}

    bool take(std::string_view word) {
        auto const there = rest_.starts_with(word);
        if (!there && !failed_) // a wrong literal fails at its start unless it is merely cut off
            reached_ = std::max(reached_, size_ - (word.starts_with(rest_) ? 0 : rest_.size()));
        rest_.remove_prefix(there ? word.size() : 0);
        return there;
    }
    void space() {
        while (take(" ") || take("\t") || take("\n") || take("\r")) {
        }
    }
    bool spaced(std::string_view word) {
        space();
        return take(word);
    }

    bool value() {
        space();
        auto const taken = take("null") || take("true") || take("false") || string() ||
                           list("[", "]", &Grammar::value) || list("{", "}", &Grammar::member) ||
                           number();
        space();
        return taken && !failed_;
    }
    bool member() {
        space();
        return string() && spaced(":") && value();
    }
    bool list(std::string_view open, std::string_view close, bool (Grammar::*entry)()) {
        if (!take(open))
            return false;
        if (spaced(close))
            return true;
        do
            if (!(this->*entry)())
                return fail();
        while (spaced(","));
        return spaced(close) || fail();
    }
    bool string() { // of ASCII, without escapes
        if (!take("\""))
            return false;
        while (!rest_.empty() && rest_.front() >= ' ' && rest_.front() != '"')
            rest_.remove_prefix(1);
        return take("\"") || fail();
    }
    bool digits() {
        auto const before = rest_.size();
        while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9')
            rest_.remove_prefix(1);
        take("0"); // notes the place
        return rest_.size() != before;
    }
    bool number() {
        auto const negative = take("-");
        if (!take("0") && !digits())
            return negative && fail();
        if (take(".") && !digits())
            return fail();
        if (take("e") || take("E")) {
            if (!take("+"))
                take("-");
            return digits() || fail();
        }
        return true;
    }
    bool fail() {
        failed_ = true;
        return false;
    }

    std::string_view rest_;
    std::size_t size_;
    std::size_t reached_ = 0; ///< the last offset where a literal was expected
    bool failed_ = false;
};

/// The byte at which `text` is refused; nothing if it is accepted.
std::optional<std::size_t> refusedAt(std::string_view text) {
    auto const refusal = Testing::thrownBy<Exception::InvalidParameter>([&] {
        Element element;
        ReaderJson::Read(element, text);
    });
    EXPECT_EQ(Testing::thrownBy<Exception::InvalidParameter>(
                  [&] { Testing::Taken().copyFromText(text); }),
              refusal);
    auto const place = refusal.rfind(' ');
    return refusal == "nothing thrown" ? std::nullopt
                                       : std::optional(std::stoul(refusal.substr(place)));
}

/// Calls `check` with each text of up to `most` of these pieces.
template <class Check>
void forEachText(std::vector<std::string> const& pieces, std::size_t most, Check const& check,
                 std::string const& begun = "") {
    for (auto const& piece : pieces) {
        check(begun + piece);
        if (most > 1)
            forEachText(pieces, most - 1, check, begun + piece);
    }
}

TEST(JsonGrammar, AllShortTexts) {
    std::size_t accepted = 0;
    forEachText({"[", "]", "{", "}", ",", ":", "\"a\"", "1", "null", " "}, 5,
                [&](std::string const& text) {
                    // Texts this short have no room for a duplicate key.
                    auto const fault = Grammar::faultIn(text);
                    ASSERT_EQ(refusedAt(text), fault) << text;
                    ASSERT_EQ(read(text).has_value(), !fault) << text;
                    accepted += fault ? 0 : 1;
                });
    EXPECT_GT(accepted, 150U);
    for (auto const* const text :
         {R"({"a":1,"b":[{},[]]})", R"([{"a":[1,null]},"b",-0.5e1])", "[[[[[[[[1]]]]]]]]"}) {
        ASSERT_EQ(Grammar::faultIn(text), std::nullopt) << text;
        // Each byte removed, duplicated, or replaced by another.
        std::string const whole(text);
        for (std::size_t i = 0; i < whole.size(); ++i) {
            auto removed = whole;
            removed.erase(i, 1);
            auto doubled = whole;
            doubled.insert(i, 1, whole[i]);
            auto exchanged = whole;
            std::swap(exchanged[i], exchanged[i / 2]);
            for (auto const& changed : {removed, doubled, exchanged})
                EXPECT_EQ(refusedAt(changed), Grammar::faultIn(changed)) << changed;
        }
    }
}

TEST(JsonGrammar, AllShortNumbers) {
    std::size_t accepted = 0;
    forEachText({"0", "1", "-", "+", ".", "e"}, 6, [&](std::string const& text) {
        auto const fault = Grammar::faultIn(text);
        auto const found = refusedAt(text);
        // The only other reason for refusal is that it is too large.
        auto const exponent = text.find('e');
        auto const mayBeTooLarge = exponent != text.npos && text.size() - exponent > 3;
        if (!fault && found)
            ASSERT_TRUE(mayBeTooLarge) << text;
        else
            ASSERT_EQ(found, fault) << text;
        accepted += found ? 0 : 1;
    });
    EXPECT_GT(accepted, 500U);
}

/// Strings of ASCII of all lengths up to more than two steps of the reader, around `part`.
template <class Check>
void atAllPlaces(std::string const& part, Check const& check) {
    for (std::size_t before = 0; before < 40; ++before)
        for (std::size_t const after : {std::size_t{0}, std::size_t{1}, std::size_t{40}})
            check(std::string(before, 'x') + part + std::string(after, 'y'));
}

TEST(JsonGrammar, AllBytesInStrings) {
    for (int byte = 0; byte < 256; ++byte)
        atAllPlaces(std::string(1, static_cast<char>(byte)), [&](std::string const& text) {
            auto const plain = byte >= 0x20 && byte < 0x80 && byte != '"' && byte != '\\';
            auto const value = read('"' + text + '"');
            ASSERT_EQ(value.has_value(), plain) << byte;
            ASSERT_TRUE(!plain || value->text() == text) << byte;
            ASSERT_EQ(read("{\"" + text + "\":0}").has_value(), plain) << byte;
        });
    for (int letter = 0; letter < 256; ++letter) {
        auto const known = std::string_view("\"\\/bfnrt").find(static_cast<char>(letter));
        auto const text = "\"\\" + std::string(1, static_cast<char>(letter)) + '"';
        auto const value = read(text);
        ASSERT_EQ(value.has_value(), known != std::string_view::npos) << letter;
        ASSERT_TRUE(value || letter == 'u' || refusedAt(text) == 2U) << letter;
        ASSERT_TRUE(!value || value->text() == std::string_view("\"\\/\b\f\n\r\t").substr(known, 1))
            << letter;
    }
}

TEST(JsonGrammar, AllEscapedCharacters) {
    auto const escaped = [](unsigned int unit, bool upper) {
        auto const* const digits = upper ? "0123456789ABCDEF" : "0123456789abcdef";
        std::string text = "\\u";
        for (int shift = 12; shift >= 0; shift -= 4)
            text += digits[unit >> static_cast<unsigned int>(shift) & 15U];
        return text;
    };
    auto const utf8 = [](unsigned int c) {
        auto const tail = [c](unsigned int shift) {
            return static_cast<char>(0x80U | (c >> shift & 0x3FU));
        };
        if (c < 0x80)
            return std::string{static_cast<char>(c)};
        if (c < 0x800)
            return std::string{static_cast<char>(0xC0U | c >> 6U), tail(0)};
        if (c < 0x10000)
            return std::string{static_cast<char>(0xE0U | c >> 12U), tail(6), tail(0)};
        return std::string{static_cast<char>(0xF0U | c >> 18U), tail(12), tail(6), tail(0)};
    };
    for (unsigned int unit = 0; unit < 0x10000; ++unit) {
        auto const value = read('"' + escaped(unit, unit % 2 == 0) + '"');
        auto const isHalf = unit >= 0xD800 && unit < 0xE000;
        ASSERT_EQ(value.has_value(), !isHalf) << unit;
        ASSERT_TRUE(isHalf || value->text() == utf8(unit)) << unit;
    }
    unsigned int const edges[] = {0,      0xD7FF, 0xD800, 0xD801, 0xDBFF,
                                  0xDC00, 0xDC01, 0xDFFF, 0xE000, 0xFFFF};
    for (auto const first : edges)
        for (auto const second : edges) {
            auto const isHigh = first >= 0xD800 && first < 0xDC00;
            auto const isLow = second >= 0xDC00 && second < 0xE000;
            auto const isLone = [](unsigned int unit) { return unit >= 0xD800 && unit < 0xE000; };
            auto const good = isHigh ? isLow : !isLone(first) && !isLone(second);
            auto const value = read('"' + escaped(first, true) + escaped(second, false) + '"');
            ASSERT_EQ(value.has_value(), good) << first << ' ' << second;
            auto const expected =
                isHigh ? utf8(0x10000 + ((first - 0xD800) << 10U) + (second - 0xDC00))
                       : utf8(first) + utf8(second);
            ASSERT_TRUE(!good || value->text() == expected) << first << ' ' << second;
        }
}

// Each class of invalid UTF-8, at each position.
TEST(JsonGrammar, Utf8) {
    for (auto const* const good :
         {"\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80", "\xEF\xBF\xBF",
          "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"})
        atAllPlaces(good, [](std::string const& text) {
            auto const value = read('"' + text + '"');
            ASSERT_TRUE(value.has_value() && value->text() == text) << text;
        });
    for (auto const* const bad : {"\x80",
                                  "\xBF",
                                  "\xC0\x80",
                                  "\xC1\xBF",
                                  "\xC2",
                                  "\xC2\x7F",
                                  "\xC2\xC2",
                                  "\xE0\x9F\xBF",
                                  "\xE0\xA0",
                                  "\xE1\x80\x7F",
                                  "\xED\xA0\x80",
                                  "\xED\xBF\xBF",
                                  "\xF0\x8F\xBF\xBF",
                                  "\xF0\x90\x80",
                                  "\xF4\x90\x80\x80",
                                  "\xF5\x80\x80\x80",
                                  "\xF8\x88\x80\x80\x80",
                                  "\xFE",
                                  "\xFF",
                                  "\xEF\xBB",
                                  "\xC3\x28",
                                  "\xE2\x82\x28"})
        atAllPlaces(bad, [bad](std::string const& text) {
            auto const place = text.find(bad) + 1;
            ASSERT_EQ(refusedAt('"' + text + '"'), place) << text;
            ASSERT_EQ(refusedAt("{\"" + text + "\":0}"), place + 1) << text;
            ASSERT_EQ(refusedAt('"' + text), place) << text;
        });
}

} // namespace
} // namespace Tolv::MetaData
