#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <tolv/core/export.h>

/// @file
/// Base64 with the standard alphabet and padding (RFC 4648 section 4). Messages use it to carry
/// blocks of samples as text.
///
/// Decoding is strict: white space and line ends are refused, padding is required, and the unused
/// bits of the last character must be zero. Every block of bytes therefore has exactly one accepted
/// text.
///
/// All functions are thread-safe and may be called from static initialisers. Their only state is
/// the code path chosen for the processor on first use.

namespace Tolv {

/// Encodes @p length bytes and replaces the content of @p out with the text.
///
/// @param data   the bytes to encode, which must not lie in @p out; may be null only if @p length
/// is zero
/// @param length number of bytes
/// @param out    receives the text; its storage is reused if it is large enough
/// @throws Exception::InvalidParameter if @p data is null and @p length is not zero, or if the text
///         would exceed the address space; @p out is then unchanged
TOLV_CORE_API void encodeBase64(unsigned char const* data, unsigned int length, std::string& out);

/// The number of bytes that @p text decodes to, computed from its length and its trailing padding
/// alone.
///
/// The content is not examined: malformed text also yields a number, in which an incomplete last
/// group counts as nothing; decoding it then throws.
///
/// @throws Exception::InvalidParameter if the number does not fit into an unsigned int
TOLV_CORE_API unsigned int decodeSize(std::string const& text);

/// Decodes @p text into a buffer of @p length bytes.
///
/// A buffer shorter than the content receives the first @p length bytes; the rest of the text is
/// still checked. Bytes of the buffer beyond the content are not touched.
///
/// @param text   the text to decode
/// @param data   the buffer, which must not overlap @p text; may be null only if nothing is written
/// @param length size of the buffer in bytes
/// @return the number of bytes written: the smaller of @p length and the size of the content
/// @throws Exception::InvalidParameter if the text is malformed, naming the fault and its byte
///         offset, or if @p data is null but needed. After a fault in the text the buffer may hold
///         part of the content
TOLV_CORE_API unsigned int decodeBase64(std::string const& text, unsigned char* data,
                                        unsigned int length);

namespace Base64 {

/// The number of characters, including padding, that @p bytes bytes encode to.
/// @throws Exception::InvalidParameter if that number does not fit into std::size_t
TOLV_CORE_API std::size_t encodedSize(std::size_t bytes);

/// Like decodeSize(), for any length.
TOLV_CORE_API std::size_t decodedSize(std::string_view text) noexcept;

/// Encodes @p length bytes into @p out, which must have room for encodedSize(length) characters.
/// Exactly that many are written, without a terminating zero.
/// @return the end of the text: out + encodedSize(length)
TOLV_CORE_API char* encode(unsigned char const* data, std::size_t length, char* out) noexcept;

/// Like encodeBase64(), for any length.
/// @throws Exception::InvalidParameter as encodeBase64() does
TOLV_CORE_API void encode(unsigned char const* data, std::size_t length, std::string& out);

/// Like decodeBase64(), for any length. A @p length of zero only checks the text.
/// @return the number of bytes written
/// @throws Exception::InvalidParameter as decodeBase64() does
TOLV_CORE_API std::size_t decode(std::string_view text, unsigned char* data, std::size_t length);

/// The size in bytes of the pieces that decodePieces() hands out; a multiple of 48.
inline constexpr std::size_t pieceSize = 12288;

/// Decodes @p text piece by piece. @p take is called with @p context and each piece in turn. All
/// pieces but the last have pieceSize bytes, and each is aligned for any number type.
///
/// @throws Exception::InvalidParameter if the text is malformed, as decodeBase64() does; pieces
///         before the fault have then been handed out. Exceptions of @p take are passed on
TOLV_CORE_API void decodePieces(std::string_view text,
                                void (*take)(void* context, unsigned char const* bytes,
                                             std::size_t size),
                                void* context);

} // namespace Base64
} // namespace Tolv
