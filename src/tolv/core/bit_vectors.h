#pragma once

#include <complex>
#include <string>
#include <string_view>
#include <vector>

#include <tolv/core/export.h>

/// @file
/// Internal: the text form of vectors of truth values, which the messages carry packed.
///
/// - bool: 8 elements a byte, the first element in the least significant bit.
/// - std::complex<bool>: 4 elements a byte, the first element in the two least significant bits, of
///   which the lower one is the real part.
///
/// Spare bits of the last byte are zero. The bytes then travel as base64 (see base64.h).
///
/// The standard leaves std::complex<bool> unspecified; the toolchains of this platform instantiate
/// it as a plain pair of bools. The element type exists in the interface of the platform, so it
/// cannot be avoided; everything that depends on how it behaves is kept in bit_vectors.cpp, which
/// relies on nothing but its constructor, real() and imag() unless it has checked the layout.
///
/// All functions may be called from any thread at any time on distinct objects.

namespace Tolv {

/// Packs @p in and puts its base64 text in place of what @p base64 held.
/// @throws Exception::InvalidParameter when the text would be longer than a string can be
TOLV_CORE_API void encodeBits(std::vector<bool> const& in, std::string& base64);

/// The same for pairs of truth values.
TOLV_CORE_API void encodeBits(std::vector<std::complex<bool>> const& in, std::string& base64);

/// Unpacks @p count elements from @p base64 in place of what @p out held.
///
/// The count usually comes from outside, from beside the text: it is compared with the size of the
/// text before any memory is taken for it.
///
/// @throws Exception::InvalidParameter when the text is not base64, when it does not hold exactly
///         the bytes that @p count elements need, or when spare bits of the last byte are not zero;
///         @p out is then unchanged
TOLV_CORE_API void decodeBits(std::string_view base64, unsigned long long count,
                              std::vector<bool>& out);

/// The same for pairs of truth values.
TOLV_CORE_API void decodeBits(std::string_view base64, unsigned long long count,
                              std::vector<std::complex<bool>>& out);

namespace Detail {

/// encodeBits() and decodeBits() by standard means alone, element by element. In use where the
/// layout of the vectors is not known; there for the tests in any build.
TOLV_CORE_API void encodeBitsPortable(std::vector<bool> const& in, std::string& base64);
TOLV_CORE_API void encodeBitsPortable(std::vector<std::complex<bool>> const& in,
                                      std::string& base64);
TOLV_CORE_API void decodeBitsPortable(std::string_view base64, unsigned long long count,
                                      std::vector<bool>& out);
TOLV_CORE_API void decodeBitsPortable(std::string_view base64, unsigned long long count,
                                      std::vector<std::complex<bool>>& out);

} // namespace Detail
} // namespace Tolv
