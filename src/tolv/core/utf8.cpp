#include <tolv/core/utf8.h>

#include <bit>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace Tolv {
namespace {

// The number of ASCII bytes at begin, counted in whole steps and then byte by byte.
std::size_t asciiRun(unsigned char const* begin, std::size_t length) noexcept {
    std::size_t run = 0;
#if defined(__SSE2__)
    for (; length - run >= 16; run += 16) {
        __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(begin + run));
        auto const high = static_cast<unsigned int>(_mm_movemask_epi8(bytes));
        if (high != 0)
            return run + static_cast<std::size_t>(std::countr_zero(high));
    }
#else
    for (; length - run >= 16; run += 16) {
        std::uint64_t words[2];
        std::memcpy(words, begin + run, sizeof words);
        if (((words[0] | words[1]) & 0x8080808080808080u) != 0)
            break;
    }
#endif
    while (run < length && begin[run] < 0x80)
        ++run;
    return run;
}

constexpr bool isContinuation(unsigned char byte) noexcept { return (byte & 0xc0) == 0x80; }

// The length in bytes of the well-formed character of two or more bytes at begin, or 0 if there is
// none. Only the range of the second byte depends on the first (RFC 3629 section 4).
std::size_t sequenceLength(unsigned char const* begin, std::size_t length) noexcept {
    unsigned char const lead = begin[0];
    if (lead < 0xc2 || lead > 0xf4 || length < 2)
        return 0;
    unsigned char const second = begin[1];
    if (lead < 0xe0)
        return isContinuation(second) ? 2 : 0;

    unsigned char lowest = 0x80;
    unsigned char highest = 0xbf;
    switch (lead) {
    case 0xe0: // lower ones would be overlong
        lowest = 0xa0;
        break;
    case 0xed: // higher ones would be surrogates
        highest = 0x9f;
        break;
    case 0xf0: // lower ones would be overlong
        lowest = 0x90;
        break;
    case 0xf4: // higher ones would exceed U+10FFFF
        highest = 0x8f;
        break;
    default:
        break;
    }
    std::size_t const size = lead < 0xf0 ? 3 : 4;
    if (length < size || second < lowest || second > highest || !isContinuation(begin[2]))
        return 0;
    return size == 3 || isContinuation(begin[3]) ? size : 0;
}

} // namespace

std::size_t findInvalidUtf8(std::string_view text) noexcept {
    auto const* const bytes = reinterpret_cast<unsigned char const*>(text.data());
    std::size_t offset = 0;
    while (true) {
        offset += asciiRun(bytes + offset, text.size() - offset);
        // Multi-byte characters come in runs, so do not return to the search for ASCII after each
        // one.
        while (offset < text.size() && bytes[offset] >= 0x80) {
            std::size_t const size = sequenceLength(bytes + offset, text.size() - offset);
            if (size == 0)
                return offset;
            offset += size;
        }
        if (offset == text.size())
            return std::string_view::npos;
    }
}

} // namespace Tolv
