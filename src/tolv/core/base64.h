#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <tolv/core/export.h>

/// @file
/// Base64 with the standard alphabet and padding (RFC 4648 section 4), the form in which the
/// messages carry blocks of samples inside text.
///
/// Decoding is strict: no white space or line ends, padding is required, the bits which the last
/// character leaves unused must be zero. So every block of bytes has exactly one accepted text.
///
/// All functions may be called from any thread at any time, static initialisers included; they keep
/// no state except the choice of the code path for the processor, which is made on first use.

namespace Tolv {

/// Encodes @p length bytes and puts the text in place of what @p out held.
///
/// @param data   the bytes to encode, outside @p out; may be null only when @p length is zero
/// @param length number of bytes
/// @param out    receives the text. Its storage is used again when it is large enough
/// @throws Exception::InvalidParameter when @p data is null and @p length is not zero, or when the
///         text would be longer than the address space; @p out is then unchanged
TOLV_CORE_API void encodeBase64(unsigned char const* data, unsigned int length, std::string& out);

/// Number of bytes that @p text decodes to, from its length and its trailing padding alone.
///
/// The content is not examined: a malformed text also gives a number (an incomplete last group of
/// characters counts for nothing), decoding it throws later.
///
/// @throws Exception::InvalidParameter when the number does not fit an unsigned int
TOLV_CORE_API unsigned int decodeSize(std::string const& text);

/// Decodes @p text into a buffer of @p length bytes.
///
/// A buffer shorter than the content receives the first @p length bytes, and the rest of the text
/// is checked all the same. Bytes of the buffer after the content are not touched.
///
/// @param text   the text to decode
/// @param data   the buffer, not overlapping @p text; may be null only when nothing is written
/// @param length size of the buffer in bytes
/// @return number of bytes written, the smaller of @p length and the size of the content
/// @throws Exception::InvalidParameter when the text is malformed, naming the fault and its offset
///         in bytes from the start of the text, or when @p data is null but needed. After a fault
///         in the text the buffer may hold part of the content
TOLV_CORE_API unsigned int decodeBase64(std::string const& text, unsigned char* data,
                                        unsigned int length);

namespace Base64 {

/// Number of characters, padding included, of the text for @p bytes bytes.
/// @throws Exception::InvalidParameter when that number does not fit std::size_t
TOLV_CORE_API std::size_t encodedSize(std::size_t bytes);

/// Number of bytes that @p text decodes to; as decodeSize(), for any length.
TOLV_CORE_API std::size_t decodedSize(std::string_view text) noexcept;

/// Encodes @p length bytes to @p out, which must have room for encodedSize(length) characters;
/// exactly that many are written, no terminating zero.
/// @return the end of the text, out + encodedSize(length)
TOLV_CORE_API char* encode(unsigned char const* data, std::size_t length, char* out) noexcept;

/// As encodeBase64(), for any length.
/// @throws Exception::InvalidParameter as encodeBase64() does
TOLV_CORE_API void encode(unsigned char const* data, std::size_t length, std::string& out);

/// Decodes @p text into a buffer of @p length bytes; as decodeBase64(), for any length. With a
/// @p length of zero it only checks the text.
/// @return number of bytes written
/// @throws Exception::InvalidParameter as decodeBase64() does
TOLV_CORE_API std::size_t decode(std::string_view text, unsigned char* data, std::size_t length);

/// Size in bytes of the pieces that decodePieces() hands out; a multiple of 48.
inline constexpr std::size_t pieceSize = 12288;

/// Decodes @p text piece by piece: @p take gets @p context and each piece in turn, of pieceSize
/// bytes but for the last, at an address that suits any number type.
///
/// @throws Exception::InvalidParameter when the text is malformed, as decodeBase64() does; pieces
///         before the fault have then been handed out. What @p take throws passes through
TOLV_CORE_API void decodePieces(std::string_view text,
                                void (*take)(void* context, unsigned char const* bytes,
                                             std::size_t size),
                                void* context);

} // namespace Base64
} // namespace Tolv
