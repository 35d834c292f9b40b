#pragma once

// Internal to the library and its tests: the code paths from which base64.cpp chooses.

#include <cstddef>
#include <span>
#include <string_view>

#include <tolv/core/export.h>

#if !defined(TOLV_NO_SIMD) && (defined(__x86_64__) || defined(__i386__)) && defined(__GNUC__)
#define TOLV_BASE64_X86 1
#endif

// arm_neon.h requires a floating-point unit in the target flags. If these flags lack NEON, only GCC
// can enable it for single functions.
#if !defined(TOLV_NO_SIMD) && defined(__arm__) && defined(__linux__) && defined(__ARM_FP) &&       \
    __ARM_ARCH >= 7 && (defined(__ARM_NEON) || (defined(__GNUC__) && !defined(__clang__)))
#define TOLV_BASE64_NEON 1
#endif

namespace Tolv::Base64::Detail {

/// One code path. A kernel processes whole blocks at the front of its input and leaves the rest,
/// including any block that may be invalid, to the scalar code. It therefore never reports an error
/// and never accepts padding.
struct Kernel {
    char const* name;

    /// Whether this processor can run it.
    bool (*isSupported)() noexcept;

    /// Encodes leading bytes and writes exactly 4 characters for every 3 bytes. Returns the number
    /// of bytes used, a multiple of 3.
    std::size_t (*encodeBlocks)(unsigned char const* data, std::size_t length, char* out) noexcept;

    /// Decodes leading characters and stops no later than at the group of 4 with the first
    /// character outside the alphabet. length is a multiple of 4; no byte at or after data + length
    /// / 4 * 3 is touched. Returns the number of characters used, a multiple of 4.
    std::size_t (*decodeBlocks)(char const* text, std::size_t length, unsigned char* data) noexcept;
};

/// All kernels of this build: the preferred one first, the scalar one, which always exists, last.
TOLV_CORE_API std::span<Kernel const* const> kernels() noexcept;

/// The kernel that encode() and decode() use on this processor.
TOLV_CORE_API Kernel const& chosenKernel() noexcept;

/// encode() with a given kernel.
TOLV_CORE_API char* encodeWith(Kernel const& kernel, unsigned char const* data, std::size_t length,
                               char* out) noexcept;

/// decode() with a given kernel.
TOLV_CORE_API std::size_t decodeWith(Kernel const& kernel, std::string_view text,
                                     unsigned char* data, std::size_t length);

#if defined(TOLV_BASE64_X86)
extern Kernel const ssse3Kernel;
extern Kernel const avx2Kernel;
#endif
#if defined(TOLV_BASE64_NEON)
extern Kernel const neonKernel;
#endif

inline constexpr char alphabet[] =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

/// The value 0..63 of a character, or -1 if it is not in the alphabet. Only for building tables.
constexpr int valueOf(unsigned char character) noexcept {
    if (character >= 'A' && character <= 'Z')
        return character - 'A';
    if (character >= 'a' && character <= 'z')
        return character - 'a' + 26;
    if (character >= '0' && character <= '9')
        return character - '0' + 52;
    if (character == '+')
        return 62;
    if (character == '/')
        return 63;
    return -1;
}

} // namespace Tolv::Base64::Detail
