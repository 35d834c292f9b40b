#include <tolv/core/base64.h>
#include <tolv/core/detail/base64_kernels.h>
#include <tolv/core/exceptions.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "support/trees.h"

namespace {

using Tolv::Base64::Detail::Kernel;
using Bytes = std::vector<unsigned char>;

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// A reference implementation, bit by bit.
std::string encodedPlainly(Bytes const& bytes) {
    std::string text;
    std::size_t const bits = bytes.size() * 8;
    for (std::size_t bit = 0; bit < bits; bit += 6) {
        unsigned int value = 0;
        for (std::size_t i = bit; i < bit + 6; ++i) {
            unsigned int const one = i < bits ? bytes[i / 8] >> (7 - i % 8) & 1u : 0u;
            value = value * 2 + one;
        }
        text += alphabet[value];
    }
    while (text.size() % 4 != 0)
        text += '=';
    return text;
}

// The same bytes on every run.
Bytes someBytes(std::size_t count, unsigned int seed = 1) {
    Bytes bytes(count);
    for (auto& byte : bytes) {
        seed = seed * 1664525u + 1013904223u;
        byte = static_cast<unsigned char>(seed >> 24);
    }
    return bytes;
}

// A heap block of exactly the required size, so that the address sanitizer detects every read
// beyond it.
template <typename T>
std::unique_ptr<T[]> exactCopy(T const* from, std::size_t count) {
    auto block = std::make_unique_for_overwrite<T[]>(count);
    std::copy_n(from, count, block.get());
    return block;
}

// A buffer with a known pattern on both sides; detects stray writes without a sanitizer too.
class Guarded {
public:
    explicit Guarded(std::size_t size) : _size(size), _bytes(size + 2 * margin, canary) {}

    unsigned char* data() { return _bytes.data() + margin; }

    bool isIntact() const {
        return untouchedFrom(_size) &&
               std::all_of(_bytes.begin(), _bytes.begin() + margin, isCanary);
    }

    // Whether everything from this place on still holds the pattern.
    bool untouchedFrom(std::size_t place) const {
        return std::all_of(_bytes.begin() + margin + static_cast<std::ptrdiff_t>(place),
                           _bytes.end(), isCanary);
    }

private:
    static constexpr std::ptrdiff_t margin = 64;
    static constexpr unsigned char canary = 0xc5;

    static bool isCanary(unsigned char byte) { return byte == canary; }

    std::size_t _size;
    Bytes _bytes;
};

// The text of the error, or "nothing thrown".
template <typename Function>
std::string errorOf(Function&& function) {
    return Tolv::Testing::thrownBy<Tolv::Exception::InvalidParameter>(function);
}

class Base64Kernel : public testing::TestWithParam<Kernel const*> {
protected:
    std::string encode(Bytes const& bytes) const {
        auto const data = exactCopy(bytes.data(), bytes.size());
        Guarded room(Tolv::Base64::encodedSize(bytes.size()));
        auto* const begin = reinterpret_cast<char*>(room.data());
        char* const end =
            Tolv::Base64::Detail::encodeWith(*GetParam(), data.get(), bytes.size(), begin);
        EXPECT_TRUE(room.isIntact()) << bytes.size() << " bytes";
        return {begin, end};
    }

    std::size_t decode(std::string_view text, unsigned char* data, std::size_t length) const {
        auto const block = exactCopy(text.data(), text.size());
        return Tolv::Base64::Detail::decodeWith(*GetParam(), {block.get(), text.size()}, data,
                                                length);
    }
};

TEST_P(Base64Kernel, encodesEveryLength) {
    for (std::size_t length = 0; length <= 200; ++length) {
        Bytes const bytes = someBytes(length, static_cast<unsigned int>(length) + 1);
        ASSERT_EQ(encode(bytes), encodedPlainly(bytes)) << length << " bytes";
    }
    Bytes const bytes = someBytes(10007);
    EXPECT_EQ(encode(bytes), encodedPlainly(bytes));
}

// Nothing is written after the content, even if the buffer continues there.
TEST_P(Base64Kernel, decodesEveryLength) {
    for (std::size_t length = 0; length <= 200; ++length) {
        Bytes const bytes = someBytes(length, static_cast<unsigned int>(length) + 1);
        for (std::size_t const spare : {0u, 1u, 48u}) {
            Guarded room(length + spare);
            ASSERT_EQ(decode(encodedPlainly(bytes), room.data(), length + spare), length);
            ASSERT_TRUE(std::equal(bytes.begin(), bytes.end(), room.data())) << length << " bytes";
            ASSERT_TRUE(room.isIntact()) << length << " bytes";
            ASSERT_TRUE(room.untouchedFrom(length)) << length << " bytes";
        }
    }
    Bytes const bytes = someBytes(10007);
    Guarded room(bytes.size());
    EXPECT_EQ(decode(encodedPlainly(bytes), room.data(), bytes.size()), bytes.size());
    EXPECT_TRUE(std::equal(bytes.begin(), bytes.end(), room.data()));
    EXPECT_TRUE(room.isIntact());
}

// Each of the 64 values in each place of a block longer than any step of a kernel.
TEST_P(Base64Kernel, knowsEveryCharacterInEveryPlace) {
    for (std::size_t shift = 0; shift < 64; ++shift) {
        std::string text;
        for (std::size_t i = 0; i < 256; ++i)
            text += alphabet[(i + shift) % 64];
        Bytes bytes(192);
        ASSERT_EQ(decode(text, bytes.data(), bytes.size()), 192u);
        ASSERT_EQ(encodedPlainly(bytes), text);
        ASSERT_EQ(encode(bytes), text);
    }
}

// The blocks of a kernel end, at the latest, at the group with the first invalid character.
TEST_P(Base64Kernel, leavesEveryInvalidByteInEveryPlace) {
    std::string const good = encodedPlainly(someBytes(150));
    Bytes room(150);
    for (unsigned int value = 0; value < 256; ++value) {
        auto const bad = static_cast<char>(value);
        if (alphabet.find(bad) != std::string_view::npos)
            continue;
        for (std::size_t place = 0; place < good.size(); ++place) {
            std::string text = good;
            text[place] = bad;
            std::size_t const used =
                GetParam()->decodeBlocks(text.data(), text.size(), room.data());
            ASSERT_LE(used, place) << "byte " << value;
            ASSERT_EQ(used % 4, 0u);
        }
    }
}

TEST_P(Base64Kernel, namesEveryInvalidByteAndItsPlace) {
    std::string const good = encodedPlainly(someBytes(150));
    auto const expectNamed = [&](unsigned int value, std::size_t place) {
        char const digits[] = "0123456789abcdef";
        std::string text = good;
        text[place] = static_cast<char>(value);
        Guarded room(150);
        ASSERT_EQ(errorOf([&] { decode(text, room.data(), 150); }),
                  std::string("base64: character 0x") + digits[value / 16] + digits[value % 16] +
                      " at offset " + std::to_string(place) + " is not in the alphabet");
        ASSERT_TRUE(room.isIntact());
    };
    for (std::size_t place = 0; place < good.size(); ++place) {
        for (unsigned int const value : {0x00u, 0x2du, 0x0au, 0x5fu, 0xc1u, 0xffu})
            expectNamed(value, place);
    }
    for (unsigned int value = 0; value < 256; ++value) {
        if (value != '=' && alphabet.find(static_cast<char>(value)) == std::string_view::npos) {
            for (std::size_t const place : {0u, 17u, 131u, 198u, 199u})
                expectNamed(value, place);
        }
    }
}

TEST_P(Base64Kernel, namesTheFirstOfTwoFaults) {
    for (std::size_t place = 0; place < 199; ++place) {
        std::string text = encodedPlainly(someBytes(150));
        text[place] = '.';
        text[place + 1] = '\0';
        Bytes room(150);
        ASSERT_EQ(errorOf([&] { decode(text, room.data(), 150); }),
                  "base64: character 0x2e at offset " + std::to_string(place) +
                      " is not in the alphabet");
    }
}

TEST_P(Base64Kernel, refusesPaddingBeforeTheEnd) {
    std::string const good = encodedPlainly(someBytes(150));
    for (std::size_t place = 0; place + 1 < good.size(); ++place) {
        std::string text = good;
        text[place] = '=';
        Bytes room(150);
        ASSERT_EQ(errorOf([&] { decode(text, room.data(), 150); }),
                  "base64: misplaced padding at offset " + std::to_string(place));
    }
}

TEST_P(Base64Kernel, fillsAShortBufferAndNoMore) {
    for (std::size_t length = 1; length <= 200; ++length) {
        Bytes const bytes = someBytes(length);
        std::string const text = encodedPlainly(bytes);
        for (std::size_t room = 0; room < length; ++room) {
            Guarded guarded(room);
            ASSERT_EQ(decode(text, guarded.data(), room), room);
            ASSERT_TRUE(std::equal(guarded.data(), guarded.data() + room, bytes.begin()))
                << room << " of " << length;
            ASSERT_TRUE(guarded.isIntact()) << room << " of " << length;
        }
    }
}

// Long enough that the part that does not fit is checked in several pieces.
TEST_P(Base64Kernel, checksWhatAShortBufferLeavesOut) {
    std::string const good = encodedPlainly(someBytes(10000));
    for (std::size_t const room : {0u, 1u, 2u, 3u, 100u, 3073u, 9999u}) {
        for (std::size_t const place : {1u, 2000u, 4095u, 4096u, 4100u, 9000u, 13332u, 13333u}) {
            std::string text = good;
            text[place] = '-';
            Guarded guarded(room);
            ASSERT_EQ(errorOf([&] { decode(text, guarded.data(), room); }),
                      "base64: character 0x2d at offset " + std::to_string(place) +
                          " is not in the alphabet");
            ASSERT_TRUE(guarded.isIntact());
        }
    }
}

/// The kernels that this processor can run.
std::vector<Kernel const*> supportedKernels() {
    std::vector<Kernel const*> supported;
    std::ranges::copy_if(Tolv::Base64::Detail::kernels(), std::back_inserter(supported),
                         [](Kernel const* kernel) { return kernel->isSupported(); });
    return supported;
}

INSTANTIATE_TEST_SUITE_P(Supported, Base64Kernel, testing::ValuesIn(supportedKernels()),
                         [](auto const& info) { return std::string(info.param->name); });

TEST(Base64, prefersTheFirstSupportedKernel) {
    EXPECT_EQ(&Tolv::Base64::Detail::chosenKernel(), supportedKernels().front());
}

// RFC 4648 section 10, and the bytes whose text needs the last two characters of the alphabet.
TEST(Base64, encodesAndDecodesKnownTexts) {
    struct {
        std::string bytes;
        std::string text;
    } const cases[] = {
        {"", ""},
        {"f", "Zg=="},
        {"fo", "Zm8="},
        {"foo", "Zm9v"},
        {"foob", "Zm9vYg=="},
        {"fooba", "Zm9vYmE="},
        {"foobar", "Zm9vYmFy"},
        {std::string("\0", 1), "AA=="},
        {"\xff", "/w=="},
        {"\xfb\xff", "+/8="},
        {"\xfb\xef\xbe", "++++"},
        {"\xff\xff\xff", "////"},
    };
    for (auto const& [bytes, text] : cases) {
        auto const length = static_cast<unsigned int>(bytes.size());
        std::string out = "what was there before, longer than the text";
        Tolv::encodeBase64(reinterpret_cast<unsigned char const*>(bytes.data()), length, out);
        EXPECT_EQ(out, text);
        EXPECT_EQ(Tolv::decodeSize(text), length);
        std::string content(length, '?');
        EXPECT_EQ(
            Tolv::decodeBase64(text, reinterpret_cast<unsigned char*>(content.data()), length),
            length);
        EXPECT_EQ(content, bytes);
    }
}

TEST(Base64, refusesWhatIsNotStrict) {
    struct {
        std::string_view text;
        std::string_view error;
    } const cases[] = {
        {"A", "base64: length 1 is not a multiple of 4, the group at offset 0 is incomplete"},
        {"AA", "base64: length 2 is not a multiple of 4, the group at offset 0 is incomplete"},
        {"AAA", "base64: length 3 is not a multiple of 4, the group at offset 0 is incomplete"},
        {"AAAAA", "base64: length 5 is not a multiple of 4, the group at offset 4 is incomplete"},
        {"AA=", "base64: length 3 is not a multiple of 4, the group at offset 0 is incomplete"},
        {"AAAA=", "base64: length 5 is not a multiple of 4, the group at offset 4 is incomplete"},
        {"AAAA\n", "base64: character 0x0a at offset 4 is not in the alphabet"},
        {" AAAA", "base64: character 0x20 at offset 0 is not in the alphabet"},
        {"AA\r\nAA", "base64: character 0x0d at offset 2 is not in the alphabet"},
        {"====", "base64: misplaced padding at offset 0"},
        {"A===", "base64: misplaced padding at offset 1"},
        {"AA=A", "base64: misplaced padding at offset 2"},
        {"=AAA", "base64: misplaced padding at offset 0"},
        {"AA==AAAA", "base64: misplaced padding at offset 2"},
        {"AAA=AAA=", "base64: misplaced padding at offset 3"},
        {"AAAA====", "base64: misplaced padding at offset 4"},
        {"AB==", "base64: the unused bits of the character at offset 1 are not zero"},
        {"AI==", "base64: the unused bits of the character at offset 1 are not zero"},
        {"AAB=", "base64: the unused bits of the character at offset 2 are not zero"},
        {"AAC=", "base64: the unused bits of the character at offset 2 are not zero"},
        {"AAAAAAD=", "base64: the unused bits of the character at offset 6 are not zero"},
        {"A-==", "base64: character 0x2d at offset 1 is not in the alphabet"},
        {"-B==", "base64: character 0x2d at offset 0 is not in the alphabet"},
        {"AA_=", "base64: character 0x5f at offset 2 is not in the alphabet"},
    };
    for (auto const& [text, error] : cases) {
        for (unsigned int const length : {0u, 16u}) {
            unsigned char data[16];
            std::string const malformed(text);
            EXPECT_EQ(errorOf([&] { Tolv::decodeBase64(malformed, data, length); }), error) << text;
        }
    }
}

// Every combination of unused bits in the last character.
TEST(Base64, acceptsOneTextPerContentOnly) {
    for (std::size_t value = 0; value < 64; ++value) {
        unsigned char data[2];
        std::string const one = std::string("Q") + alphabet[value] + "==";
        std::string const two = std::string("QU") + alphabet[value] + "=";
        EXPECT_EQ(errorOf([&] { Tolv::decodeBase64(one, data, 2); }) == "nothing thrown",
                  value % 16 == 0)
            << one;
        EXPECT_EQ(errorOf([&] { Tolv::decodeBase64(two, data, 2); }) == "nothing thrown",
                  value % 4 == 0)
            << two;
    }
}

TEST(Base64, givesASizeForMalformedTexts) {
    struct {
        std::string_view text;
        unsigned int size;
    } const cases[] = {
        {"", 0},     {"=", 0},       {"==", 0},       {"A", 0},     {"AAA=", 2},
        {"AA==", 1}, {"====", 1},    {"A-\n=", 2},    {"AAAA=", 3}, {"AAAAAA==", 4},
        {"AA=A", 3}, {"AAAAAA=", 3}, {"=AAAAAA=", 5},
    };
    for (auto const& [text, size] : cases)
        EXPECT_EQ(Tolv::decodeSize(std::string(text)), size) << text;
}

TEST(Base64, computesSizesUpToTheLimit) {
    constexpr auto most = static_cast<std::size_t>(-1);
    EXPECT_EQ(Tolv::Base64::encodedSize(most / 4 * 3), most / 4 * 4);
    EXPECT_THROW(Tolv::Base64::encodedSize(most / 4 * 3 + 1), Tolv::Exception::InvalidParameter);
    EXPECT_THROW(Tolv::Base64::encodedSize(most), Tolv::Exception::InvalidParameter);
}

// Large texts are assembled from pieces unless the string already has that size.
TEST(Base64, replacesTheStringForLargeBlocksToo) {
    for (std::size_t const length : {49148u, 49149u, 49150u, 49152u, 55296u, 55297u, 100000u}) {
        Bytes const bytes = someBytes(length);
        std::string const text = encodedPlainly(bytes);
        for (std::size_t const before : {0u, 10u, 60000u, 200000u}) {
            std::string out(before, 'x');
            Tolv::encodeBase64(bytes.data(), static_cast<unsigned int>(length), out);
            ASSERT_TRUE(out == text) << length << " bytes in place of " << before;
        }
    }
}

TEST(Base64, takesNullOnlyForNothing) {
    std::string out = "before";
    EXPECT_THROW(Tolv::encodeBase64(nullptr, 1, out), Tolv::Exception::InvalidParameter);
    EXPECT_EQ(out, "before");
    Tolv::encodeBase64(nullptr, 0, out);
    EXPECT_EQ(out, "");

    EXPECT_EQ(Tolv::decodeBase64("", nullptr, 5), 0u);
    EXPECT_EQ(Tolv::decodeBase64("AAAA", nullptr, 0), 0u);
    EXPECT_THROW(Tolv::decodeBase64("AAAA", nullptr, 3), Tolv::Exception::InvalidParameter);
}

TEST(Base64, decodesPieceByPiece) {
    auto const append = [](void* all, unsigned char const* bytes, std::size_t size) {
        static_cast<Bytes*>(all)->insert(static_cast<Bytes*>(all)->end(), bytes, bytes + size);
    };
    auto const piece = Tolv::Base64::pieceSize;
    for (auto const border : {std::size_t{3}, piece, 2 * piece}) {
        for (auto size = border - 3; size <= border + 3;
             ++size) { // all paddings around each border
            Bytes const content = someBytes(size);
            std::string const text = encodedPlainly(content);
            Bytes all;
            Tolv::Base64::decodePieces(text, append, &all);
            ASSERT_TRUE(all == content) << size;

            // A piece is not a text of its own: padding inside is refused, and offsets count from
            // the start.
            if (text.size() < 8)
                continue;
            auto broken = text;
            broken[text.size() - 5] = '=';
            auto const whole = errorOf([&] { Tolv::Base64::decode(broken, nullptr, 0); });
            EXPECT_EQ(errorOf([&] { Tolv::Base64::decodePieces(broken, append, &all); }), whole);
            EXPECT_NE(whole, "nothing thrown") << size;
        }
    }
}

} // namespace
