#include <tolv/core/bit_vectors.h>

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>

// libstdc++ stores a std::vector<bool> in machine words, first element in the least significant
// bit, and its iterators expose the address of their word. On a little-endian machine the bytes of
// these words already are the packed form. In debug mode the iterators are wrapped.
#if defined(__GLIBCXX__) && !defined(_GLIBCXX_DEBUG) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
#define TOLV_BOOLS_ARE_PACKED 1
#endif

namespace Tolv {
namespace {

using Bools = std::vector<bool>;
using ComplexBool = std::complex<bool>;
using ComplexBools = std::vector<ComplexBool>;

template <typename Vector>
constexpr unsigned int elementsPerByte = std::is_same_v<Vector, Bools> ? 8 : 4;

// The number of bytes for count elements. Rounding up must not overflow for a count near the
// maximum.
template <typename Vector>
constexpr unsigned long long packedSize(unsigned long long count) noexcept {
    return count / elementsPerByte<Vector> + (count % elementsPerByte<Vector> != 0 ? 1 : 0);
}

// Refuses a count that does not match the text. A count that passes is in proportion to the size of
// the text.
template <typename Vector>
void checkCount(std::string_view base64, unsigned long long count, Vector const& out) {
    std::size_t const held = Base64::decodedSize(base64);
    unsigned long long const needed = packedSize<Vector>(count);
    if (held != needed) {
        // Malformed text has no meaningful size, so report that fault first.
        Base64::decode(base64, nullptr, 0);
        throw Exception::InvalidParameter("packed bits: " + std::to_string(count) +
                                          " elements need " + std::to_string(needed) +
                                          " bytes, the text holds " + std::to_string(held));
    }
    if (count > out.max_size())
        throw Exception::InvalidParameter("packed bits: " + std::to_string(count) +
                                          " elements exceed the maximum size of a vector");
}

// Refuses unused bits that are set in the last byte of count elements.
template <typename Vector>
void checkSpareBits(unsigned char lastByte, std::size_t count) {
    constexpr unsigned int perByte = elementsPerByte<Vector>;
    std::size_t const used = count % perByte * (8 / perByte);
    if (used != 0 && lastByte >> used != 0)
        throw Exception::InvalidParameter("packed bits: the unused bits after " +
                                          std::to_string(count) + " elements are not zero");
}

// The bits of one element, in the lowest bits of the result.
unsigned int bitsOf(bool element) noexcept { return element ? 1u : 0u; }

unsigned int bitsOf(ComplexBool const& element) noexcept {
    return (element.real() ? 1u : 0u) | (element.imag() ? 2u : 0u);
}

template <typename Vector>
typename Vector::value_type elementOf(unsigned int bits) noexcept {
    if constexpr (std::is_same_v<Vector, Bools>)
        return (bits & 1u) != 0;
    else
        return ComplexBool((bits & 1u) != 0, (bits & 2u) != 0);
}

using Bytes = std::unique_ptr<unsigned char[]>;

// Checks the count, decodes the text and checks the unused bits. Returns packedSize(count) bytes.
template <typename Vector>
Bytes decodePacked(std::string_view base64, unsigned long long count, Vector const& out) {
    checkCount(base64, count, out);
    auto const size = static_cast<std::size_t>(packedSize<Vector>(count));
    auto bytes = std::make_unique_for_overwrite<unsigned char[]>(size);
    Base64::decode(base64, bytes.get(), size);
    if (size != 0)
        checkSpareBits<Vector>(bytes[size - 1], static_cast<std::size_t>(count));
    return bytes;
}

// Packs the elements from first on into bytes, one by one.
template <typename Vector>
void packFrom(std::size_t first, Vector const& in, unsigned char* bytes) {
    constexpr unsigned int perByte = elementsPerByte<Vector>;
    for (std::size_t i = first; i < in.size();) {
        unsigned int byte = 0;
        for (unsigned int place = 0; place < perByte && i < in.size(); ++place, ++i)
            byte |= bitsOf(in[i]) << place * (8 / perByte);
        *bytes++ = static_cast<unsigned char>(byte);
    }
}

template <typename Vector>
void unpackFrom(std::size_t first, unsigned char const* bytes, Vector& out) {
    constexpr unsigned int perByte = elementsPerByte<Vector>;
    for (std::size_t i = first; i < out.size(); ++bytes) {
        unsigned int byte = *bytes;
        for (unsigned int place = 0; place < perByte && i < out.size(); ++place, ++i) {
            out[i] = elementOf<Vector>(byte);
            byte >>= 8 / perByte;
        }
    }
}

template <typename Vector>
void encodePortable(Vector const& in, std::string& base64) {
    auto const size = static_cast<std::size_t>(packedSize<Vector>(in.size()));
    auto const bytes = std::make_unique_for_overwrite<unsigned char[]>(size);
    packFrom(0, in, bytes.get());
    Base64::encode(bytes.get(), size, base64);
}

template <typename Vector>
void decodePortable(std::string_view base64, unsigned long long count, Vector& out) {
    Bytes const bytes = decodePacked(base64, count, out);
    Vector elements(static_cast<std::size_t>(count));
    unpackFrom(0, bytes.get(), elements);
    out = std::move(elements);
}

// Whether a ComplexBool is two bytes of value 0 or 1, real part first. Four of them can then be
// moved as one 64-bit word.
constexpr bool complexIsTwoBytes = [] {
    if constexpr (std::endian::native == std::endian::little && sizeof(ComplexBool) == 2 &&
                  std::is_trivially_copyable_v<ComplexBool>) {
        using TwoBytes = std::array<unsigned char, 2>;
        return std::bit_cast<TwoBytes>(ComplexBool(true, false)) == TwoBytes{1, 0} &&
               std::bit_cast<TwoBytes>(ComplexBool(false, true)) == TwoBytes{0, 1};
    }
    return false;
}();

// Gathers eight bytes of value 0 or 1 into eight bits. Multiplying the byte at place i by 2^(56 - 7
// i) moves its bit to 56 + i; no two products overlap, so nothing carries into the highest byte.
constexpr std::uint64_t gatherBits = 0x0102040810204080u;

// Maps a byte to eight bytes of value 0 or 1, lowest bit first in memory.
constexpr auto spreadBits = [] {
    std::array<std::uint64_t, 256> words{};
    for (std::size_t byte = 0; byte < words.size(); ++byte) {
        for (unsigned int place = 0; place < 8; ++place)
            words[byte] |= static_cast<std::uint64_t>(byte >> place & 1u) << place * 8;
    }
    return words;
}();

} // namespace

namespace Detail {

void encodeBitsPortable(std::vector<bool> const& in, std::string& base64) {
    encodePortable(in, base64);
}

void encodeBitsPortable(std::vector<std::complex<bool>> const& in, std::string& base64) {
    encodePortable(in, base64);
}

void decodeBitsPortable(std::string_view base64, unsigned long long count, std::vector<bool>& out) {
    decodePortable(base64, count, out);
}

void decodeBitsPortable(std::string_view base64, unsigned long long count,
                        std::vector<std::complex<bool>>& out) {
    decodePortable(base64, count, out);
}

} // namespace Detail

void encodeBits(std::vector<bool> const& in, std::string& base64) {
#if defined(TOLV_BOOLS_ARE_PACKED)
    std::size_t const size = static_cast<std::size_t>(packedSize<Bools>(in.size()));
    // The last group of up to three bytes is copied first, because the bits after the last element
    // are indeterminate.
    std::size_t const lastGroup = size == 0 ? 0 : (size - 1) / 3 * 3;
    std::array<unsigned char, 3> last{};
    packFrom(lastGroup * 8, in, last.data());
    auto const* const bytes = reinterpret_cast<unsigned char const*>(in.begin()._M_p);
    base64.resize(Base64::encodedSize(size));
    char* const end = Base64::encode(bytes, lastGroup, base64.data());
    Base64::encode(last.data(), size - lastGroup, end);
#else
    encodePortable(in, base64);
#endif
}

void encodeBits(std::vector<std::complex<bool>> const& in, std::string& base64) {
    if constexpr (complexIsTwoBytes) {
        auto const size = static_cast<std::size_t>(packedSize<ComplexBools>(in.size()));
        auto const bytes = std::make_unique_for_overwrite<unsigned char[]>(size);
        std::size_t const whole = in.size() / 4;
        for (std::size_t i = 0; i < whole; ++i) {
            std::uint64_t word;
            std::memcpy(&word, in.data() + i * 4, sizeof word);
            bytes[i] = static_cast<unsigned char>(word * gatherBits >> 56);
        }
        packFrom(whole * 4, in, bytes.get() + whole);
        Base64::encode(bytes.get(), size, base64);
    } else {
        encodePortable(in, base64);
    }
}

void decodeBits(std::string_view base64, unsigned long long count, std::vector<bool>& out) {
#if defined(TOLV_BOOLS_ARE_PACKED)
    checkCount(base64, count, out);
    auto const elements = static_cast<std::size_t>(count);
    auto const size = static_cast<std::size_t>(packedSize<Bools>(count));
    std::vector<bool> bits(elements);
    auto* const bytes = reinterpret_cast<unsigned char*>(bits.begin()._M_p);
    Base64::decode(base64, bytes, size);
    if (size != 0)
        checkSpareBits<Bools>(bytes[size - 1], elements);
    out = std::move(bits);
#else
    decodePortable(base64, count, out);
#endif
}

void decodeBits(std::string_view base64, unsigned long long count,
                std::vector<std::complex<bool>>& out) {
    if constexpr (complexIsTwoBytes) {
        Bytes const bytes = decodePacked(base64, count, out);
        // All checks have passed. From here on only an allocation can fail, and then resize()
        // leaves out unchanged.
        out.resize(static_cast<std::size_t>(count));
        std::size_t const whole = out.size() / 4;
        for (std::size_t i = 0; i < whole; ++i)
            std::memcpy(static_cast<void*>(out.data() + i * 4), &spreadBits[bytes[i]], 8);
        unpackFrom(whole * 4, bytes.get() + whole, out);
    } else {
        decodePortable(base64, count, out);
    }
}

} // namespace Tolv
