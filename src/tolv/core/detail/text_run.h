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
/// The search that reading and writing JSON strings both come down to. Not installed.
namespace Tolv::Detail {

/// Whether a byte cannot stand for itself in a JSON string: control characters, quote, backslash.
constexpr bool needsEscape(char byte) noexcept {
    return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

/// The first byte from `at` on that cannot stand for itself, or `end`. Sets `beyondAscii` when a
/// byte before it is not ASCII, and leaves it else.
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
            beyondAscii |= (high & (stops - 1) & ~stops) != 0; // those below the lowest stop
            return at + std::countr_zero(stops);
        }
        beyondAscii |= high != 0;
    }
#else
    // A machine word at a time: the high bit of each byte of `stops` tells. What borrows run over
    // lies above the lowest such byte, and only that one counts.
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

/// How many of 16 bytes, from the first on, are ASCII and can stand for themselves.
inline std::size_t plainRun16(char const* bytes16) noexcept {
#if defined(TOLV_TEXT_RUN_SSE2)
    auto const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(bytes16));
    // Compared as signed bytes, those beyond ASCII are below the space, too.
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

/// Whether all of the first `size` of 16 bytes are ASCII and can stand for themselves.
inline bool isPlainAscii(char const* bytes16, std::size_t size) noexcept {
    return plainRun16(bytes16) >= size;
}

} // namespace Tolv::Detail
