#include <tolv/core/utf8.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

namespace {

constexpr std::size_t npos = std::string_view::npos;

std::string characterOf(unsigned int codePoint) {
    auto const byte = [](unsigned int value) { return static_cast<char>(value); };
    auto const more = [&](unsigned int shift) { return byte(0x80 | (codePoint >> shift & 0x3f)); };
    if (codePoint < 0x80)
        return {byte(codePoint)};
    if (codePoint < 0x800)
        return {byte(0xc0 | codePoint >> 6), more(0)};
    if (codePoint < 0x10000)
        return {byte(0xe0 | codePoint >> 12), more(6), more(0)};
    return {byte(0xf0 | codePoint >> 18), more(12), more(6), more(0)};
}

// Computes the code point, unlike the library, which compares ranges of bytes.
std::size_t findPlainly(std::string_view text) {
    constexpr unsigned int least[] = {0, 0, 0x80, 0x800, 0x10000};
    for (std::size_t offset = 0; offset < text.size();) {
        auto const byteAt = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
        unsigned int const lead = byteAt(offset);
        std::size_t const size = lead < 0x80             ? 1
                                 : (lead & 0xe0) == 0xc0 ? 2
                                 : (lead & 0xf0) == 0xe0 ? 3
                                 : (lead & 0xf8) == 0xf0 ? 4
                                                         : 0;
        if (size == 0 || text.size() - offset < size)
            return offset;
        unsigned int codePoint = size == 1 ? lead : lead & (0x7fu >> size);
        for (std::size_t i = 1; i < size; ++i) {
            if ((byteAt(offset + i) & 0xc0) != 0x80)
                return offset;
            codePoint = codePoint << 6 | (byteAt(offset + i) & 0x3fu);
        }
        if (codePoint < least[size] || codePoint > 0x10ffff || codePoint >> 11 == 0x1b)
            return offset;
        offset += size;
    }
    return npos;
}

// Uses a copy without spare bytes after it, for the address sanitizer.
std::size_t find(std::string_view text) {
    auto const block = std::make_unique_for_overwrite<char[]>(text.size());
    std::copy(text.begin(), text.end(), block.get());
    return Tolv::findInvalidUtf8({block.get(), text.size()});
}

TEST(Utf8, acceptsEveryCharacter) {
    std::string text;
    for (unsigned int codePoint = 0; codePoint <= 0x10ffff; ++codePoint) {
        if (codePoint < 0xd800 || codePoint > 0xdfff)
            text += characterOf(codePoint);
    }
    EXPECT_EQ(find(text), npos);
}

TEST(Utf8, refusesEverySurrogateAndWhatIsBeyondTheLast) {
    for (unsigned int codePoint = 0xd800; codePoint <= 0xdfff; ++codePoint)
        ASSERT_EQ(Tolv::findInvalidUtf8("x" + characterOf(codePoint)), 1u) << codePoint;
    for (unsigned int codePoint = 0x110000; codePoint <= 0x1fffff; codePoint += 0x3ff)
        ASSERT_EQ(Tolv::findInvalidUtf8("x" + characterOf(codePoint)), 1u) << codePoint;
}

TEST(Utf8, judgesKnownTexts) {
    using namespace std::string_view_literals;
    struct {
        std::string_view text;
        std::size_t offset;
    } const cases[] = {
        {""sv, npos},
        {"plain"sv, npos},
        {"zero \0 inside"sv, npos},
        {"\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80"sv, npos},
        {"\xef\xbb\xbfmark"sv, npos},
        {"\xc3\xa4\xa4"sv, 2},             // one continuation too many
        {"\xed\xa0\xbd\xed\xb8\x80"sv, 0}, // a pair of surrogates
        {"\xf8\x88\x80\x80\x80"sv, 0},     // five bytes
        {"x\xf0\x9f\x98"sv, 1},
        {"x\xe2\x82y"sv, 1}, // unfinished before the next character
    };
    for (auto const& [text, offset] : cases)
        EXPECT_EQ(find(text), offset) << testing::PrintToString(text);
}

TEST(Utf8, judgesAllShortSequences) {
    char text[4];
    for (unsigned int pair = 0; pair < 0x10000; ++pair) {
        text[0] = static_cast<char>(pair >> 8);
        text[1] = static_cast<char>(pair);
        std::string_view const two(text, 2);
        ASSERT_EQ(Tolv::findInvalidUtf8(two), findPlainly(two)) << std::hex << pair;
        if (pair >> 8 < 0xe0)
            continue;
        // Only whether the other bytes are continuations matters.
        for (unsigned int const third : {0x00u, 0x7fu, 0x80u, 0xbfu, 0xc0u, 0xffu}) {
            text[2] = static_cast<char>(third);
            std::string_view const three(text, 3);
            ASSERT_EQ(Tolv::findInvalidUtf8(three), findPlainly(three)) << std::hex << pair;
            for (unsigned int const fourth : {0x00u, 0x7fu, 0x80u, 0xbfu, 0xc0u, 0xffu}) {
                text[3] = static_cast<char>(fourth);
                std::string_view const four(text, 4);
                ASSERT_EQ(Tolv::findInvalidUtf8(four), findPlainly(four)) << std::hex << pair;
            }
        }
    }
}

// ASCII is skipped in steps: nothing may be missed at their borders or after the last one.
TEST(Utf8, findsTheFaultInEveryPlace) {
    for (std::size_t length = 1; length <= 70; ++length) {
        std::string const ascii(length, 'a');
        ASSERT_EQ(find(ascii), npos);
        for (std::size_t place = 0; place < length; ++place) {
            std::string text = ascii;
            text[place] = '\x80';
            ASSERT_EQ(find(text), place) << length;
            if (place + 1 < length) {
                text[place + 1] = '\xff';
                ASSERT_EQ(find(text), place) << length;
            }
        }
    }
}

TEST(Utf8, followsCharactersAcrossEveryPlace) {
    for (std::string const character : {"\xc3\xa4", "\xe2\x82\xac", "\xf0\x9f\x98\x80"}) {
        for (std::size_t before = 0; before <= 40; ++before) {
            std::string const start(before, 'a');
            for (std::size_t const after : {0u, 1u, 15u, 16u, 40u}) {
                std::string const end(after, 'z');
                ASSERT_EQ(find(start + character + end), npos);
                ASSERT_EQ(find(start + character + end + '\xff'),
                          before + character.size() + after);
                for (std::size_t cut = 1; cut < character.size(); ++cut)
                    ASSERT_EQ(find(start + character.substr(0, cut) + end), before);
            }
        }
    }
}

} // namespace
