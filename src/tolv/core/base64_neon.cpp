#include <tolv/core/detail/base64_kernels.h>

#if defined(TOLV_BASE64_NEON)

#include <cstdint>

#include <arm_neon.h>
#include <asm/hwcap.h>
#include <sys/auxv.h>

// NEON is optional on 32-bit ARM: the library is built without it, and only these functions use it.
#if defined(__ARM_NEON)
#define TOLV_NEON
#else
#define TOLV_NEON __attribute__((target("fpu=neon")))
#endif
#define TOLV_INLINE inline __attribute__((always_inline))

namespace Tolv::Base64::Detail {
namespace {

// Converts 6-bit values to characters. The offset between value and character changes at the start
// of each of the five runs of the alphabet; comparisons select the steps that apply.
TOLV_NEON TOLV_INLINE uint8x16_t charactersOf(uint8x16_t values) noexcept {
    uint8x16_t const lowerStep = vdupq_n_u8('a' - 'Z' - 1);
    uint8x16_t const digitStep = vdupq_n_u8('z' + 1 - '0');
    uint8x16_t const plusStep = vdupq_n_u8('9' + 1 - '+');
    uint8x16_t const slashStep = vdupq_n_u8('/' - '+' - 1);
    uint8x16_t characters = vaddq_u8(values, vdupq_n_u8('A'));
    characters = vaddq_u8(characters, vandq_u8(vcgeq_u8(values, vdupq_n_u8(26)), lowerStep));
    characters = vsubq_u8(characters, vandq_u8(vcgeq_u8(values, vdupq_n_u8(52)), digitStep));
    characters = vsubq_u8(characters, vandq_u8(vcgeq_u8(values, vdupq_n_u8(62)), plusStep));
    return vaddq_u8(characters, vandq_u8(vceqq_u8(values, vdupq_n_u8(63)), slashStep));
}

// Converts characters to 6-bit values. A byte of valid becomes zero if its character is not in the
// alphabet.
TOLV_NEON TOLV_INLINE uint8x16_t valuesOf(uint8x16_t characters, uint8x16_t& valid) noexcept {
    uint8x16_t const upper = vsubq_u8(characters, vdupq_n_u8('A'));
    uint8x16_t const lower = vsubq_u8(characters, vdupq_n_u8('a'));
    uint8x16_t const digit = vsubq_u8(characters, vdupq_n_u8('0'));
    uint8x16_t const isUpper = vcltq_u8(upper, vdupq_n_u8(26));
    uint8x16_t const isLower = vcltq_u8(lower, vdupq_n_u8(26));
    uint8x16_t const isDigit = vcltq_u8(digit, vdupq_n_u8(10));
    uint8x16_t const isPlus = vceqq_u8(characters, vdupq_n_u8('+'));
    uint8x16_t const isSlash = vceqq_u8(characters, vdupq_n_u8('/'));
    uint8x16_t const isLetter = vorrq_u8(isUpper, isLower);
    uint8x16_t const isOther = vorrq_u8(vorrq_u8(isDigit, isPlus), isSlash);
    valid = vandq_u8(valid, vorrq_u8(isLetter, isOther));
    uint8x16_t const letters =
        vorrq_u8(vandq_u8(isUpper, upper), vandq_u8(isLower, vaddq_u8(lower, vdupq_n_u8(26))));
    uint8x16_t const others =
        vorrq_u8(vandq_u8(isDigit, vaddq_u8(digit, vdupq_n_u8(52))),
                 vorrq_u8(vandq_u8(isPlus, vdupq_n_u8(62)), vandq_u8(isSlash, vdupq_n_u8(63))));
    return vorrq_u8(letters, others);
}

// Each step encodes 48 bytes to 64 characters. The interleaving loads and stores transpose the
// data, and touch exactly these bytes.
TOLV_NEON std::size_t encodeNeon(unsigned char const* data, std::size_t length,
                                 char* out) noexcept {
    uint8x16_t const sixBits = vdupq_n_u8(63);
    std::size_t used = 0;
    for (; length - used >= 48; used += 48) {
        uint8x16x3_t const in = vld3q_u8(data + used);
        uint8x16x4_t text;
        text.val[0] = charactersOf(vshrq_n_u8(in.val[0], 2));
        text.val[1] = charactersOf(
            vandq_u8(vorrq_u8(vshlq_n_u8(in.val[0], 4), vshrq_n_u8(in.val[1], 4)), sixBits));
        text.val[2] = charactersOf(
            vandq_u8(vorrq_u8(vshlq_n_u8(in.val[1], 2), vshrq_n_u8(in.val[2], 6)), sixBits));
        text.val[3] = charactersOf(vandq_u8(in.val[2], sixBits));
        vst4q_u8(reinterpret_cast<unsigned char*>(out + used / 3 * 4), text);
    }
    return used;
}

TOLV_NEON std::size_t decodeNeon(char const* text, std::size_t length,
                                 unsigned char* data) noexcept {
    std::size_t used = 0;
    for (; length - used >= 64; used += 64) {
        uint8x16x4_t const in = vld4q_u8(reinterpret_cast<unsigned char const*>(text + used));
        uint8x16_t valid = vdupq_n_u8(0xff);
        uint8x16_t const a = valuesOf(in.val[0], valid);
        uint8x16_t const b = valuesOf(in.val[1], valid);
        uint8x16_t const c = valuesOf(in.val[2], valid);
        uint8x16_t const d = valuesOf(in.val[3], valid);
        uint64x1_t const both =
            vreinterpret_u64_u8(vand_u8(vget_low_u8(valid), vget_high_u8(valid)));
        if (vget_lane_u64(both, 0) != ~std::uint64_t{0})
            break;
        uint8x16x3_t bytes;
        bytes.val[0] = vorrq_u8(vshlq_n_u8(a, 2), vshrq_n_u8(b, 4));
        bytes.val[1] = vorrq_u8(vshlq_n_u8(b, 4), vshrq_n_u8(c, 2));
        bytes.val[2] = vorrq_u8(vshlq_n_u8(c, 6), d);
        vst3q_u8(data + used / 4 * 3, bytes);
    }
    return used;
}

bool hasNeon() noexcept { return (getauxval(AT_HWCAP) & HWCAP_NEON) != 0; }

} // namespace

constinit Kernel const neonKernel{"neon", &hasNeon, &encodeNeon, &decodeNeon};

} // namespace Tolv::Base64::Detail

#endif
