#include <tolv/core/detail/base64_kernels.h>

#if defined(TOLV_BASE64_X86)

#include <array>
#include <cstdint>

#include <immintrin.h>

// Attributes select the instruction set for each function. The library itself is built for the
// baseline processor, so these instructions cannot leak into other code.
#define TOLV_SSSE3 __attribute__((target("ssse3")))
#define TOLV_AVX2 __attribute__((target("avx2")))
#define TOLV_INLINE inline __attribute__((always_inline))

namespace Tolv::Base64::Detail {
namespace {

// A table for byte shuffles, which look up 16 entries; repeated for each 128-bit lane.
struct alignas(32) Table {
    std::array<std::uint8_t, 32> entries;
};

template <typename Function>
constexpr Table tableOf(Function function) {
    Table table{};
    for (unsigned int i = 0; i < 32; ++i)
        table.entries[i] = static_cast<std::uint8_t>(function(i % 16));
    return table;
}

// Encoding: 6-bit values to characters. The alphabet consists of runs, within which the character
// is the value plus a constant. A saturating subtraction of 51, plus one for values from 26 on,
// numbers the runs: 0 and 1 for the letters, 2..11 for the digits (one run, ten equal entries), 12
// and 13 for the last two characters.
constexpr Table characterOffset = tableOf([](unsigned int run) {
    unsigned int const firstValue = run < 2 ? run * 26 : run + 50;
    return firstValue < 64 ? static_cast<unsigned int>(alphabet[firstValue]) - firstValue : 0u;
});

// Spreads 3 bytes a b c to b a c b in each 32-bit element, so that each 16-bit half holds the bits
// of two characters, low byte first.
constexpr Table spreadGroups = tableOf([](unsigned int i) {
    constexpr unsigned int order[] = {1, 0, 2, 1};
    return i / 4 * 3 + order[i % 4];
});

// Decoding: the high half of a byte is its class, and the low half decides whether it is in the
// alphabet: lowFaults[low] has the bit of each class in which this low half is not a character. Of
// the letters, classes 4 and 6 have the same valid low halves and share a bit, and so do 5 and 7.
constexpr unsigned int classBit(unsigned int high) noexcept {
    switch (high) {
    case 2:
        return 1;
    case 3:
        return 2;
    case 4:
    case 6:
        return 4;
    case 5:
    case 7:
        return 8;
    default:
        return 16;
    }
}

constexpr Table highClass = tableOf([](unsigned int high) { return classBit(high); });

constexpr Table lowFaults = tableOf([](unsigned int low) {
    unsigned int faults = 0;
    for (unsigned int high = 0; high < 16; ++high) {
        if (valueOf(static_cast<unsigned char>(high * 16 + low)) < 0)
            faults |= classBit(high);
    }
    return faults;
});

// The number to add to a character to get its value, by the high half of the character. '/' has the
// same high half as '+', so it is moved to the unused entry below.
constexpr Table valueOffset = tableOf([](unsigned int index) -> unsigned int {
    constexpr unsigned char sample[] = {0, '/', '+', '0', 'A', 'P', 'a', 'p'};
    if (index == 0 || index > 7)
        return 0;
    return static_cast<unsigned int>(valueOf(sample[index]) - static_cast<int>(sample[index])) &
           0xffu;
});

// Moves the three decoded bytes of each 32-bit element to the front of the lane. The remaining four
// bytes become zero.
constexpr Table packGroups =
    tableOf([](unsigned int i) { return i < 12 ? i / 3 * 4 + 2 - i % 3 : 0x80u; });

TOLV_SSSE3 TOLV_INLINE __m128i load(Table const& table) noexcept {
    return _mm_load_si128(reinterpret_cast<__m128i const*>(table.entries.data()));
}

TOLV_SSSE3 TOLV_INLINE __m128i load(void const* from) noexcept {
    return _mm_loadu_si128(static_cast<__m128i const*>(from));
}

TOLV_SSSE3 TOLV_INLINE void store(void* to, __m128i value) noexcept {
    _mm_storeu_si128(static_cast<__m128i*>(to), value);
}

// Encodes the 12 bytes at the front of in to 16 characters.
TOLV_SSSE3 TOLV_INLINE __m128i encodeVector(__m128i in) noexcept {
    __m128i const pairs = _mm_shuffle_epi8(in, load(spreadGroups));
    // No instruction shifts each 16-bit half by its own count, so they are multiplied by powers of
    // two: the high half of the product is a right shift, the low half a left shift.
    __m128i const evens = _mm_mulhi_epu16(_mm_and_si128(pairs, _mm_set1_epi32(0x0fc0fc00)),
                                          _mm_set1_epi32(0x04000040));
    __m128i const odds = _mm_mullo_epi16(_mm_and_si128(pairs, _mm_set1_epi32(0x003f03f0)),
                                         _mm_set1_epi32(0x01000010));
    __m128i const values = _mm_or_si128(evens, odds);

    // A true comparison yields -1.
    __m128i const run = _mm_sub_epi8(_mm_subs_epu8(values, _mm_set1_epi8(51)),
                                     _mm_cmpgt_epi8(values, _mm_set1_epi8(25)));
    return _mm_add_epi8(values, _mm_shuffle_epi8(load(characterOffset), run));
}

// Decodes 16 characters to 12 bytes at the front. A byte of faults becomes non-zero if its
// character is not in the alphabet.
TOLV_SSSE3 TOLV_INLINE __m128i decodeVector(__m128i in, __m128i& faults) noexcept {
    __m128i const halfMask = _mm_set1_epi8(0x0f);
    __m128i const high = _mm_and_si128(_mm_srli_epi32(in, 4), halfMask);
    __m128i const low = _mm_and_si128(in, halfMask);
    faults = _mm_and_si128(_mm_shuffle_epi8(load(highClass), high),
                           _mm_shuffle_epi8(load(lowFaults), low));

    __m128i const index = _mm_add_epi8(high, _mm_cmpeq_epi8(in, _mm_set1_epi8('/')));
    __m128i const values = _mm_add_epi8(in, _mm_shuffle_epi8(load(valueOffset), index));
    // Joins four 6-bit values to two of 12 bits, and these to one of 24.
    __m128i const pairs = _mm_maddubs_epi16(values, _mm_set1_epi32(0x01400140));
    __m128i const groups = _mm_madd_epi16(pairs, _mm_set1_epi32(0x00011000));
    return _mm_shuffle_epi8(groups, load(packGroups));
}

TOLV_SSSE3 TOLV_INLINE bool isZero(__m128i value) noexcept {
    return _mm_movemask_epi8(_mm_cmpeq_epi8(value, _mm_setzero_si128())) == 0xffff;
}

// The loops over single 128-bit vectors, from used on; the AVX2 kernel uses them for its last
// blocks.
TOLV_SSSE3 TOLV_INLINE std::size_t encodeRest128(unsigned char const* data, std::size_t length,
                                                 char* out, std::size_t used) noexcept {
    // Each step reads 16 bytes and uses 12.
    for (; length - used >= 16; used += 12)
        store(out + used / 3 * 4, encodeVector(load(data + used)));
    return used;
}

TOLV_SSSE3 TOLV_INLINE std::size_t decodeRest128(char const* text, std::size_t length,
                                                 unsigned char* data, std::size_t used) noexcept {
    // Each step stores 16 bytes, of which 12 are kept, so at least two more groups must follow.
    for (; length - used >= 24; used += 16) {
        __m128i faults;
        __m128i const bytes = decodeVector(load(text + used), faults);
        if (!isZero(faults))
            break;
        store(data + used / 4 * 3, bytes);
    }
    return used;
}

TOLV_SSSE3 std::size_t encodeSsse3(unsigned char const* data, std::size_t length,
                                   char* out) noexcept {
    std::size_t used = 0;
    for (; length - used >= 52; used += 48) {
        unsigned char const* const from = data + used;
        char* const to = out + used / 3 * 4;
        store(to, encodeVector(load(from)));
        store(to + 16, encodeVector(load(from + 12)));
        store(to + 32, encodeVector(load(from + 24)));
        store(to + 48, encodeVector(load(from + 36)));
    }
    return encodeRest128(data, length, out, used);
}

TOLV_SSSE3 std::size_t decodeSsse3(char const* text, std::size_t length,
                                   unsigned char* data) noexcept {
    std::size_t used = 0;
    for (; length - used >= 72; used += 64) {
        __m128i faults[4];
        char const* const from = text + used;
        __m128i const first = decodeVector(load(from), faults[0]);
        __m128i const second = decodeVector(load(from + 16), faults[1]);
        __m128i const third = decodeVector(load(from + 32), faults[2]);
        __m128i const fourth = decodeVector(load(from + 48), faults[3]);
        if (!isZero(_mm_or_si128(_mm_or_si128(faults[0], faults[1]),
                                 _mm_or_si128(faults[2], faults[3]))))
            break;
        unsigned char* const to = data + used / 4 * 3;
        store(to, first);
        store(to + 12, second);
        store(to + 24, third);
        store(to + 36, fourth);
    }
    return decodeRest128(text, length, data, used);
}

TOLV_AVX2 TOLV_INLINE __m256i load256(Table const& table) noexcept {
    return _mm256_load_si256(reinterpret_cast<__m256i const*>(table.entries.data()));
}

TOLV_AVX2 TOLV_INLINE void store256(void* to, __m256i value) noexcept {
    _mm256_storeu_si256(static_cast<__m256i*>(to), value);
}

// Reads 28 bytes and encodes 24 of them to 32 characters; each lane works like encodeVector().
TOLV_AVX2 TOLV_INLINE __m256i encodeVector256(unsigned char const* data) noexcept {
    __m256i const in =
        _mm256_inserti128_si256(_mm256_castsi128_si256(load(data)), load(data + 12), 1);
    __m256i const pairs = _mm256_shuffle_epi8(in, load256(spreadGroups));
    __m256i const evens = _mm256_mulhi_epu16(_mm256_and_si256(pairs, _mm256_set1_epi32(0x0fc0fc00)),
                                             _mm256_set1_epi32(0x04000040));
    __m256i const odds = _mm256_mullo_epi16(_mm256_and_si256(pairs, _mm256_set1_epi32(0x003f03f0)),
                                            _mm256_set1_epi32(0x01000010));
    __m256i const values = _mm256_or_si256(evens, odds);

    __m256i const run = _mm256_sub_epi8(_mm256_subs_epu8(values, _mm256_set1_epi8(51)),
                                        _mm256_cmpgt_epi8(values, _mm256_set1_epi8(25)));
    return _mm256_add_epi8(values, _mm256_shuffle_epi8(load256(characterOffset), run));
}

// Decodes 32 characters to 24 bytes at the front and clears the rest; see decodeVector().
TOLV_AVX2 TOLV_INLINE __m256i decodeVector256(char const* text, __m256i& faults) noexcept {
    __m256i const in = _mm256_loadu_si256(reinterpret_cast<__m256i const*>(text));
    __m256i const halfMask = _mm256_set1_epi8(0x0f);
    __m256i const high = _mm256_and_si256(_mm256_srli_epi32(in, 4), halfMask);
    __m256i const low = _mm256_and_si256(in, halfMask);
    faults = _mm256_and_si256(_mm256_shuffle_epi8(load256(highClass), high),
                              _mm256_shuffle_epi8(load256(lowFaults), low));

    __m256i const index = _mm256_add_epi8(high, _mm256_cmpeq_epi8(in, _mm256_set1_epi8('/')));
    __m256i const values = _mm256_add_epi8(in, _mm256_shuffle_epi8(load256(valueOffset), index));
    __m256i const pairs = _mm256_maddubs_epi16(values, _mm256_set1_epi32(0x01400140));
    __m256i const groups = _mm256_madd_epi16(pairs, _mm256_set1_epi32(0x00011000));
    __m256i const lanes = _mm256_shuffle_epi8(groups, load256(packGroups));
    return _mm256_permutevar8x32_epi32(lanes, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
}

TOLV_AVX2 std::size_t encodeAvx2(unsigned char const* data, std::size_t length,
                                 char* out) noexcept {
    std::size_t used = 0;
    for (; length - used >= 100; used += 96) {
        unsigned char const* const from = data + used;
        char* const to = out + used / 3 * 4;
        store256(to, encodeVector256(from));
        store256(to + 32, encodeVector256(from + 24));
        store256(to + 64, encodeVector256(from + 48));
        store256(to + 96, encodeVector256(from + 72));
    }
    for (; length - used >= 28; used += 24)
        store256(out + used / 3 * 4, encodeVector256(data + used));
    return encodeRest128(data, length, out, used);
}

TOLV_AVX2 std::size_t decodeAvx2(char const* text, std::size_t length,
                                 unsigned char* data) noexcept {
    std::size_t used = 0;
    // Each step stores 32 bytes, of which 24 are kept, so at least three more groups must follow.
    for (; length - used >= 140; used += 128) {
        __m256i faults[4];
        char const* const from = text + used;
        __m256i const first = decodeVector256(from, faults[0]);
        __m256i const second = decodeVector256(from + 32, faults[1]);
        __m256i const third = decodeVector256(from + 64, faults[2]);
        __m256i const fourth = decodeVector256(from + 96, faults[3]);
        __m256i const any = _mm256_or_si256(_mm256_or_si256(faults[0], faults[1]),
                                            _mm256_or_si256(faults[2], faults[3]));
        if (_mm256_testz_si256(any, any) == 0)
            break;
        unsigned char* const to = data + used / 4 * 3;
        store256(to, first);
        store256(to + 24, second);
        store256(to + 48, third);
        store256(to + 72, fourth);
    }
    for (; length - used >= 44; used += 32) {
        __m256i faults;
        __m256i const bytes = decodeVector256(text + used, faults);
        if (_mm256_testz_si256(faults, faults) == 0)
            break;
        store256(data + used / 4 * 3, bytes);
    }
    return decodeRest128(text, length, data, used);
}

// The first call may precede the run-time library's own detection of the processor.
bool hasSsse3() noexcept {
    __builtin_cpu_init();
    return __builtin_cpu_supports("ssse3") != 0;
}

bool hasAvx2() noexcept {
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") != 0;
}

} // namespace

constinit Kernel const ssse3Kernel{"ssse3", &hasSsse3, &encodeSsse3, &decodeSsse3};
constinit Kernel const avx2Kernel{"avx2", &hasAvx2, &encodeAvx2, &decodeAvx2};

} // namespace Tolv::Base64::Detail

#endif
