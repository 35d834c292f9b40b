#include <tolv/core/base64.h>
#include <tolv/core/bit_vectors.h>
#include <tolv/core/exceptions.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

using Bools = std::vector<bool>;
using ComplexBools = std::vector<std::complex<bool>>;

template <typename Vector>
struct Traits;

template <>
struct Traits<Bools> {
    static constexpr std::size_t perByte = 8;
    static bool element(unsigned int bits) { return (bits & 1) != 0; }
};

template <>
struct Traits<ComplexBools> {
    static constexpr std::size_t perByte = 4;
    static std::complex<bool> element(unsigned int bits) {
        return {(bits & 1) != 0, (bits & 2) != 0};
    }
};

template <typename Vector>
Vector someElements(std::size_t count) {
    Vector elements;
    unsigned int seed = static_cast<unsigned int>(count) + 7;
    for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 1664525u + 1013904223u;
        elements.push_back(Traits<Vector>::element(seed >> 24));
    }
    return elements;
}

std::string base64Of(std::vector<unsigned char> const& bytes) {
    std::string text;
    Tolv::Base64::encode(bytes.data(), bytes.size(), text);
    return text;
}

template <typename Vector>
class BitVectors : public testing::Test {};

using Vectors = testing::Types<Bools, ComplexBools>;
TYPED_TEST_SUITE(BitVectors, Vectors);

TEST(BitVectorsOfBool, putTheFirstElementLowest) {
    struct {
        Bools elements;
        std::vector<unsigned char> bytes;
    } const cases[] = {
        {{}, {}},
        {{false}, {0x00}},
        {{true}, {0x01}},
        {{false, true}, {0x02}},
        {{true, true, false, true}, {0x0b}},
        {{false, false, false, false, false, false, false, true}, {0x80}},
        {{true, false, false, false, false, false, false, false, true}, {0x01, 0x01}},
    };
    for (auto const& [elements, bytes] : cases) {
        std::string text = "before";
        Tolv::encodeBits(elements, text);
        EXPECT_EQ(text, base64Of(bytes));
        Bools back{true, false};
        Tolv::decodeBits(text, elements.size(), back);
        EXPECT_EQ(back, elements);
    }
}

TEST(BitVectorsOfComplex, putTheRealPartBelowTheImaginary) {
    std::complex<bool> const zero(false, false);
    std::complex<bool> const real(true, false);
    std::complex<bool> const imaginary(false, true);
    std::complex<bool> const both(true, true);
    struct {
        ComplexBools elements;
        std::vector<unsigned char> bytes;
    } const cases[] = {
        {{}, {}},
        {{real}, {0x01}},
        {{imaginary}, {0x02}},
        {{zero, real}, {0x04}},
        {{real, imaginary, both, zero}, {0x39}},
        {{zero, both, imaginary, real}, {0x6c}},
        {{zero, zero, zero, imaginary, real}, {0x80, 0x01}},
    };
    for (auto const& [elements, bytes] : cases) {
        std::string text = "before";
        Tolv::encodeBits(elements, text);
        EXPECT_EQ(text, base64Of(bytes));
        ComplexBools back{both};
        Tolv::decodeBits(text, elements.size(), back);
        EXPECT_EQ(back, elements);
    }
}

TYPED_TEST(BitVectors, agreeWithThePortableWayForEveryLength) {
    for (std::size_t count = 0; count <= 400; ++count) {
        auto const elements = someElements<TypeParam>(count);
        std::string text;
        std::string plain;
        Tolv::encodeBits(elements, text);
        Tolv::Detail::encodeBitsPortable(elements, plain);
        ASSERT_EQ(text, plain) << count;
        TypeParam back;
        Tolv::decodeBits(text, count, back);
        ASSERT_EQ(back, elements) << count;
        Tolv::Detail::decodeBitsPortable(text, count, back);
        ASSERT_EQ(back, elements) << count;
    }
}

// Shrinking and popping leave old elements after the end in the memory of the vector.
TYPED_TEST(BitVectors, encodeNothingBehindTheEnd) {
    for (std::size_t count = 1; count < 130; ++count) {
        TypeParam elements(200, Traits<TypeParam>::element(3));
        elements.resize(count);
        std::string text;
        Tolv::encodeBits(elements, text);
        TypeParam back;
        ASSERT_NO_THROW(Tolv::decodeBits(text, count, back)) << count;
        ASSERT_EQ(back, elements);
    }
}

// No bits after the last decoded element may appear when the vector grows again.
TYPED_TEST(BitVectors, growAfterDecoding) {
    std::string text;
    TypeParam elements(5, Traits<TypeParam>::element(3));
    Tolv::encodeBits(elements, text);
    TypeParam back;
    Tolv::decodeBits(text, 5, back);
    back.resize(70);
    elements.resize(70);
    EXPECT_EQ(back, elements);
}

TYPED_TEST(BitVectors, refuseEverySpareBit) {
    constexpr std::size_t perByte = Traits<TypeParam>::perByte;
    for (std::size_t count = 1; count <= 5 * perByte; ++count) {
        std::size_t const used = count % perByte * (8 / perByte);
        for (std::size_t bit = used; used != 0 && bit < 8; ++bit) {
            std::vector<unsigned char> bytes((count + perByte - 1) / perByte);
            bytes.back() = static_cast<unsigned char>(1u << bit);
            TypeParam out(3);
            EXPECT_THROW(Tolv::decodeBits(base64Of(bytes), count, out),
                         Tolv::Exception::InvalidParameter)
                << count << " elements, bit " << bit;
            EXPECT_EQ(out, TypeParam(3));
            EXPECT_THROW(Tolv::Detail::decodeBitsPortable(base64Of(bytes), count, out),
                         Tolv::Exception::InvalidParameter);
        }
    }
}

TYPED_TEST(BitVectors, refuseCountsThatDoNotGoWithTheText) {
    constexpr unsigned long long perByte = Traits<TypeParam>::perByte;
    constexpr auto most = std::numeric_limits<unsigned long long>::max();
    for (unsigned int bytes = 0; bytes <= 7; ++bytes) {
        std::string const text = base64Of(std::vector<unsigned char>(bytes));
        unsigned long long const largest = bytes * perByte;
        unsigned long long const smallest = bytes == 0 ? 0 : largest - perByte + 1;
        for (unsigned long long count = 0; count <= 8 * perByte; ++count) {
            TypeParam out(3);
            if (count >= smallest && count <= largest) {
                EXPECT_NO_THROW(Tolv::decodeBits(text, count, out)) << count << " in " << bytes;
                EXPECT_EQ(out, TypeParam(static_cast<std::size_t>(count)));
            } else {
                EXPECT_THROW(Tolv::decodeBits(text, count, out), Tolv::Exception::InvalidParameter)
                    << count << " in " << bytes;
                EXPECT_EQ(out, TypeParam(3));
            }
        }
        // Refused as wrong, not for lack of memory; and not accepted because it was rounded up to
        // zero or truncated to 32 bits.
        for (unsigned long long const count :
             {most, most - 1, most - perByte + 1, most / perByte, most / 2 + 1, 1ull << 32,
              (1ull << 32) + largest, 1ull << 40, (1ull << 63) + largest}) {
            TypeParam out(3);
            EXPECT_THROW(Tolv::decodeBits(text, count, out), Tolv::Exception::InvalidParameter)
                << count << " in " << bytes;
            EXPECT_EQ(out, TypeParam(3));
        }
    }
}

TYPED_TEST(BitVectors, refuseWhatIsNotBase64) {
    struct {
        std::string_view text;
        unsigned long long bytes;
    } const cases[] = {
        {"A", 0},    {"AA", 1},       {"AAA", 2},  {"AA=", 1},  {"AAAAA", 3},
        {"A-AA", 3}, {"AA==AAAA", 6}, {"====", 1}, {"AAB=", 2}, {"AA==\n", 1},
    };
    for (auto const& [text, bytes] : cases) {
        for (unsigned long long const surplus : {0u, 1u}) {
            TypeParam out(3);
            try {
                Tolv::decodeBits(text, (bytes + surplus) * Traits<TypeParam>::perByte, out);
                ADD_FAILURE() << text;
            } catch (Tolv::Exception::InvalidParameter const& error) {
                // The error in the text is reported even if the count is wrong too.
                EXPECT_EQ(std::string_view(error.what()).substr(0, 7), "base64:") << text;
            }
            EXPECT_EQ(out, TypeParam(3));
        }
    }
}

} // namespace
