#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) && !defined(TOLV_NO_SIMD)
#define TOLV_TEXT_RUN_SSE2
#include <emmintrin.h>
#endif

/// @file
/// The scan that reading and writing JSON strings have in common. Not installed.
namespace Tolv::Detail {

/// Whether a byte must be escaped in a JSON string: control characters, quote and backslash.
constexpr bool needsEscape(char byte) noexcept {
    return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

/// The first byte from `at` on that must be escaped, or `end`. Sets `beyondAscii` if a byte before
/// it is not ASCII, and otherwise leaves it unchanged.
inline char const* endOfRun(char const* at, char const* end, bool& beyondAscii) noexcept {
#if defined(TOLV_TEXT_RUN_SSE2)
    auto const quote = _mm_set1_epi8('"');
    auto const backslash = _mm_set1_epi8('\\');
    auto const lastControl = _mm_set1_epi8(0x1F);
    for (; end - at >= 16; at += 16) {
        auto const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(at));
        auto const found = _mm_or_si128(
            _mm_cmpeq_epi8(_mm_min_epu8(bytes, lastControl), bytes),
            _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, backslash)));
        auto const stops = static_cast<unsigned int>(_mm_movemask_epi8(found));
        auto const high = static_cast<unsigned int>(_mm_movemask_epi8(bytes));
        if (stops != 0) {
            beyondAscii |= (high & (stops - 1) & ~stops) != 0; // bytes before the first stop
            return at + std::countr_zero(stops);
        }
        beyondAscii |= high != 0;
    }
#else
    // One machine word at a time: the high bit of each byte of `stops` marks a stop. Borrows can
    // only corrupt bytes above the lowest stop, and only the lowest one is used.
    using Word = std::size_t;
    constexpr auto ones = ~Word{0} / 0xFF;
    constexpr auto highs = ones * 0x80;
    for (; static_cast<std::size_t>(end - at) >= sizeof(Word); at += sizeof(Word)) {
        Word bytes = 0;
        std::memcpy(&bytes, at, sizeof bytes);
        auto const zeroIn = [&](Word word) { return (word - ones) & ~word & highs; };
        auto const stops = ((bytes - ones * 0x20) & ~bytes & highs) | zeroIn(bytes ^ ones * '"') |
                           zeroIn(bytes ^ ones * '\\');
        auto const high = bytes & highs;
        if (stops != 0) {
            beyondAscii |= (high & (stops - 1) & ~stops) != 0;
            return at + std::countr_zero(stops) / 8;
        }
        beyondAscii |= high != 0;
    }
#endif
    for (; at != end && !needsEscape(*at); ++at)
        beyondAscii |= (*at & 0x80) != 0;
    return at;
}

/// How many of the 16 bytes, from the first on, are ASCII and need no escape.
inline std::size_t plainRun16(char const* bytes16) noexcept {
#if defined(TOLV_TEXT_RUN_SSE2)
    auto const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(bytes16));
    // As signed bytes, those beyond ASCII also compare less than the space.
    auto const found = _mm_or_si128(_mm_cmplt_epi8(bytes, _mm_set1_epi8(0x20)),
                                    _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')),
                                                 _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'))));
    auto const stops = static_cast<unsigned int>(_mm_movemask_epi8(found));
    return static_cast<std::size_t>(std::countr_zero(stops | 1U << 16U));
#else
    auto beyondAscii = false;
    auto const* const end = endOfRun(bytes16, bytes16 + 16, beyondAscii);
    if (!beyondAscii) [[likely]]
        return static_cast<std::size_t>(end - bytes16);
    auto const* at = bytes16;
    while ((*at & 0x80) == 0)
        ++at;
    return static_cast<std::size_t>(at - bytes16);
#endif
}

/// Whether all of the first `size` of the 16 bytes are ASCII and need no escape.
inline bool isPlainAscii(char const* bytes16, std::size_t size) noexcept {
    return plainRun16(bytes16) >= size;
}

} // namespace Tolv::Detail
