#pragma once

#include <complex>
#include <string>
#include <string_view>
#include <vector>

#include <tolv/core/export.h>

/// @file
/// Internal: the text form of boolean vectors, which messages carry packed.
///
/// - bool: 8 elements per byte, the first element in the least significant bit.
/// - std::complex<bool>: 4 elements per byte, the first element in the two least significant bits;
///   the lower bit is the real part.
///
/// Unused bits of the last byte are zero. The bytes are then encoded as base64 (see base64.h).
///
/// The C++ standard leaves std::complex<bool> unspecified; the supported compilers instantiate it
/// as a pair of bools. It is part of the public interface and cannot be avoided. All code that
/// depends on its behaviour is in bit_vectors.cpp, which uses only its constructor, real() and
/// imag() unless it has checked the layout.
///
/// All functions may be called concurrently on distinct objects.

namespace Tolv {

/// Packs @p in and replaces the content of @p base64 with its base64 text.
/// @throws Exception::InvalidParameter if the text would exceed the maximum size of a string
TOLV_CORE_API void encodeBits(std::vector<bool> const& in, std::string& base64);

/// The same for pairs of booleans.
TOLV_CORE_API void encodeBits(std::vector<std::complex<bool>> const& in, std::string& base64);

/// Unpacks @p count elements from @p base64 and replaces the content of @p out with them.
///
/// The count usually comes from the same untrusted message as the text; it is compared with the
/// size of the text before any memory is allocated for it.
///
/// @throws Exception::InvalidParameter if the text is not base64, does not hold exactly the bytes
///         that @p count elements need, or has unused bits of the last byte that are not zero; @p
///         out is then unchanged
TOLV_CORE_API void decodeBits(std::string_view base64, unsigned long long count,
                              std::vector<bool>& out);

/// The same for pairs of booleans.
TOLV_CORE_API void decodeBits(std::string_view base64, unsigned long long count,
                              std::vector<std::complex<bool>>& out);

namespace Detail {

/// encodeBits() and decodeBits() in portable C++, element by element. They are used where the
/// layout of the vectors is not known, and exist in every build for the tests.
TOLV_CORE_API void encodeBitsPortable(std::vector<bool> const& in, std::string& base64);
TOLV_CORE_API void encodeBitsPortable(std::vector<std::complex<bool>> const& in,
                                      std::string& base64);
TOLV_CORE_API void decodeBitsPortable(std::string_view base64, unsigned long long count,
                                      std::vector<bool>& out);
TOLV_CORE_API void decodeBitsPortable(std::string_view base64, unsigned long long count,
                                      std::vector<std::complex<bool>>& out);

} // namespace Detail
} // namespace Tolv
