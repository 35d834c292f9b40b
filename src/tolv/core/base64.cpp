#include <tolv/core/base64.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

#include <tolv/core/detail/base64_kernels.h>
#include <tolv/core/exceptions.h>

namespace Tolv::Base64 {
namespace Detail {
namespace {

static_assert(std::endian::native == std::endian::little ||
              std::endian::native == std::endian::big);

constexpr bool isLittleEndian = std::endian::native == std::endian::little;

// Encoding handles 12 bits at a time; this table holds the two characters for each of the 4096
// values. Its 8 KiB stay in the first-level cache beside the data.
constexpr auto characterPairs = [] {
    std::array<std::array<char, 2>, 4096> pairs{};
    for (std::size_t value = 0; value < pairs.size(); ++value)
        pairs[value] = {alphabet[value >> 6], alphabet[value & 63]};
    return pairs;
}();

// Decoding combines (by or) one word from each of four tables, one per character of a group. In
// memory the first three bytes of the word are the decoded bytes; the fourth is 0xff for a
// character outside the alphabet. A group thus costs four loads, one test and one store.
constexpr std::uint32_t badCharacter = isLittleEndian ? 0xff000000u : 0x000000ffu;

constexpr std::uint32_t wordFor(std::uint32_t threeBytes) noexcept {
    if constexpr (isLittleEndian)
        return (threeBytes >> 16 & 0xffu) | (threeBytes & 0xff00u) | (threeBytes & 0xffu) << 16;
    else
        return threeBytes << 8;
}

using DecodeTable = std::array<std::uint32_t, 256>;

constexpr auto decodeTables = [] {
    std::array<DecodeTable, 4> tables{};
    for (unsigned int place = 0; place < 4; ++place) {
        for (unsigned int character = 0; character < 256; ++character) {
            int const value = valueOf(static_cast<unsigned char>(character));
            tables[place][character] =
                value < 0 ? badCharacter
                          : wordFor(static_cast<std::uint32_t>(value) << (18 - 6 * place));
        }
    }
    return tables;
}();

inline std::uint32_t decodeGroup(char const* text) noexcept {
    return decodeTables[0][static_cast<unsigned char>(text[0])] |
           decodeTables[1][static_cast<unsigned char>(text[1])] |
           decodeTables[2][static_cast<unsigned char>(text[2])] |
           decodeTables[3][static_cast<unsigned char>(text[3])];
}

inline void storePair(char* out, std::uint64_t value) noexcept {
    std::memcpy(out, characterPairs[static_cast<std::size_t>(value & 4095u)].data(), 2);
}

bool isAlwaysSupported() noexcept { return true; }

std::size_t encodeScalar(unsigned char const* data, std::size_t length, char* out) noexcept {
    unsigned char const* in = data;
    std::size_t left = length;
    // Each step loads 8 bytes and uses 6.
    for (; left >= 8; left -= 6, in += 6, out += 8) {
        std::uint64_t word;
        std::memcpy(&word, in, sizeof word);
        if constexpr (isLittleEndian)
            word = __builtin_bswap64(word);
        storePair(out, word >> 52);
        storePair(out + 2, word >> 40);
        storePair(out + 4, word >> 28);
        storePair(out + 6, word >> 16);
    }
    for (; left >= 3; left -= 3, in += 3, out += 4) {
        std::uint32_t const bits = static_cast<std::uint32_t>(in[0]) << 16 |
                                   static_cast<std::uint32_t>(in[1]) << 8 | in[2];
        storePair(out, bits >> 12);
        storePair(out + 2, bits);
    }
    return length - left;
}

std::size_t decodeScalar(char const* text, std::size_t length, unsigned char* data) noexcept {
    std::size_t used = 0;
    // Each group is stored as 4 bytes, the last of which belongs to the next group; the loop below
    // therefore handles the very last group.
    for (; length - used > 16; used += 16, data += 12) {
        std::uint32_t const first = decodeGroup(text + used);
        std::uint32_t const second = decodeGroup(text + used + 4);
        std::uint32_t const third = decodeGroup(text + used + 8);
        std::uint32_t const fourth = decodeGroup(text + used + 12);
        if (((first | second | third | fourth) & badCharacter) != 0)
            break;
        std::memcpy(data, &first, 4);
        std::memcpy(data + 3, &second, 4);
        std::memcpy(data + 6, &third, 4);
        std::memcpy(data + 9, &fourth, 4);
    }
    for (; used < length; used += 4, data += 3) {
        std::uint32_t const group = decodeGroup(text + used);
        if ((group & badCharacter) != 0)
            break;
        std::memcpy(data, &group, 3);
    }
    return used;
}

constexpr Kernel scalarKernel{"scalar", &isAlwaysSupported, &encodeScalar, &decodeScalar};

constexpr Kernel const* allKernels[] = {
#if defined(TOLV_BASE64_X86)
    &avx2Kernel,
    &ssse3Kernel,
#endif
#if defined(TOLV_BASE64_NEON)
    &neonKernel,
#endif
    &scalarKernel,
};

// Constant-initialized, so that static initialisers of other libraries can encode and decode before
// those of this library have run. Threads that race for the first use all store the same pointer to
// a constant, so no ordering is needed.
constinit std::atomic<Kernel const*> chosen{nullptr};

std::string hexByte(char character) {
    constexpr char digits[] = "0123456789abcdef";
    auto const value = static_cast<unsigned char>(character);
    return {'0', 'x', digits[value >> 4], digits[value & 15]};
}

// Throws because text[offset] is outside the alphabet.
[[noreturn]] void throwBadCharacter(std::string_view text, std::size_t offset) {
    if (text[offset] == '=')
        throw Exception::InvalidParameter("base64: misplaced padding at offset " +
                                          std::to_string(offset));
    throw Exception::InvalidParameter("base64: character " + hexByte(text[offset]) + " at offset " +
                                      std::to_string(offset) + " is not in the alphabet");
}

// Throws because the group of 4 at offset has a character outside the alphabet.
[[noreturn]] void throwBadGroup(std::string_view text, std::size_t offset) {
    while (valueOf(static_cast<unsigned char>(text[offset])) >= 0)
        ++offset;
    throwBadCharacter(text, offset);
}

// The usual reason for a wrong length is a line end or a space, so a stray character is reported
// first.
[[noreturn]] void throwBadLength(std::string_view text) {
    for (std::size_t offset = 0; offset < text.size(); ++offset) {
        if (text[offset] != '=' && valueOf(static_cast<unsigned char>(text[offset])) < 0)
            throwBadCharacter(text, offset);
    }
    throw Exception::InvalidParameter("base64: length " + std::to_string(text.size()) +
                                      " is not a multiple of 4, the group at offset " +
                                      std::to_string(text.size() / 4 * 4) + " is incomplete");
}

// The number of padding characters in the last two places of a text whose length is a multiple of
// 4.
std::size_t paddingOf(std::string_view text) noexcept {
    if (text.empty() || text.back() != '=')
        return 0;
    return text[text.size() - 2] == '=' ? 2 : 1;
}

// Decodes the length characters at offset, which are whole groups without padding, to length / 4 *
// 3 bytes.
void decodeGroups(Kernel const& kernel, std::string_view text, std::size_t offset,
                  std::size_t length, unsigned char* data) {
    char const* const begin = text.data() + offset;
    std::size_t used = kernel.decodeBlocks(begin, length, data);
    used += decodeScalar(begin + used, length - used, data + used / 4 * 3);
    if (used < length)
        throwBadGroup(text, offset + used);
}

// Decodes the last group of text, which has one or two padding characters, to two bytes or one.
void decodePaddedGroup(std::string_view text, std::size_t padding, unsigned char* data) {
    std::size_t const offset = text.size() - 4;
    char group[4] = {'A', 'A', 'A', 'A'};
    std::memcpy(group, text.data() + offset, 4 - padding);
    std::uint32_t const word = decodeGroup(group);
    if ((word & badCharacter) != 0)
        throwBadGroup(text, offset);
    unsigned char bytes[4];
    std::memcpy(bytes, &word, 4);
    // The unused bits of the last character end up in the byte after the content.
    if (bytes[3 - padding] != 0)
        throw Exception::InvalidParameter("base64: the unused bits of the character at offset " +
                                          std::to_string(text.size() - padding - 1) +
                                          " are not zero");
    std::memcpy(data, bytes, 3 - padding);
}

void decodePiecesWith(Kernel const& kernel, std::string_view text,
                      void (*take)(void*, unsigned char const*, std::size_t), void* context) {
    if (text.size() % 4 != 0)
        throwBadLength(text);
    std::size_t const padding = paddingOf(text);
    std::size_t const body = padding == 0 ? text.size() : text.size() - 4;
    alignas(std::max_align_t) std::array<unsigned char, pieceSize> piece;
    std::size_t filled = 0;
    for (std::size_t offset = 0; offset < body;) {
        std::size_t const length = std::min(body - offset, pieceSize / 3 * 4);
        decodeGroups(kernel, text, offset, length, piece.data());
        offset += length;
        filled = length / 4 * 3;
        if (filled == pieceSize && offset < text.size()) {
            take(context, piece.data(), filled);
            filled = 0;
        }
    }
    if (padding != 0) {
        decodePaddedGroup(text, padding, piece.data() + filled);
        filled += 3 - padding;
    }
    if (filled != 0)
        take(context, piece.data(), filled);
}

} // namespace

std::span<Kernel const* const> kernels() noexcept { return allKernels; }

Kernel const& chosenKernel() noexcept {
    Kernel const* kernel = chosen.load(std::memory_order_relaxed);
    if (kernel == nullptr) {
        // The scalar kernel at the end is always supported.
        kernel = *std::find_if(std::begin(allKernels), std::end(allKernels),
                               [](Kernel const* candidate) { return candidate->isSupported(); });
        chosen.store(kernel, std::memory_order_relaxed);
    }
    return *kernel;
}

char* encodeWith(Kernel const& kernel, unsigned char const* data, std::size_t length,
                 char* out) noexcept {
    std::size_t used = kernel.encodeBlocks(data, length, out);
    used += encodeScalar(data + used, length - used, out + used / 3 * 4);
    out += used / 3 * 4;
    std::size_t const left = length - used;
    if (left == 0)
        return out;
    std::uint32_t bits = static_cast<std::uint32_t>(data[used]) << 16;
    if (left == 2)
        bits |= static_cast<std::uint32_t>(data[used + 1]) << 8;
    storePair(out, bits >> 12);
    storePair(out + 2, bits);
    if (left == 1)
        out[2] = '=';
    out[3] = '=';
    return out + 4;
}

std::size_t decodeWith(Kernel const& kernel, std::string_view text, unsigned char* data,
                       std::size_t length) {
    if (text.size() % 4 != 0)
        throwBadLength(text);
    std::size_t const padding = paddingOf(text);
    std::size_t const content = text.size() / 4 * 3 - padding;
    std::size_t const wanted = std::min(length, content);
    if (wanted != 0 && data == nullptr)
        throw Exception::InvalidParameter("base64: no buffer to decode into");

    // The groups before body have no padding; the padded group, if any, begins at body.
    std::size_t const body = padding == 0 ? text.size() : text.size() - 4;
    std::size_t const direct = std::min(body, wanted / 3 * 4);
    decodeGroups(kernel, text, 0, direct, data);

    // If the buffer is too short for the content, the rest is decoded only to be checked; its first
    // group can still yield one or two bytes for the buffer.
    std::size_t written = direct / 4 * 3;
    std::array<unsigned char, 3072> scratch;
    for (std::size_t offset = direct; offset < body;) {
        std::size_t const chunk = std::min(body - offset, scratch.size() / 3 * 4);
        decodeGroups(kernel, text, offset, chunk, scratch.data());
        offset += chunk;
        if (written < wanted) {
            std::size_t const count = std::min(wanted - written, chunk / 4 * 3);
            std::memcpy(data + written, scratch.data(), count);
            written += count;
        }
    }
    if (padding != 0) {
        decodePaddedGroup(text, padding, scratch.data());
        if (written < wanted)
            std::memcpy(data + written, scratch.data(), wanted - written);
    }
    return wanted;
}

} // namespace Detail

std::size_t encodedSize(std::size_t bytes) {
    std::size_t const groups = bytes / 3 + (bytes % 3 != 0 ? 1 : 0);
    if (groups > std::numeric_limits<std::size_t>::max() / 4)
        throw Exception::InvalidParameter("base64: the text for " + std::to_string(bytes) +
                                          " bytes would exceed the address space");
    return groups * 4;
}

std::size_t decodedSize(std::string_view text) noexcept {
    std::size_t const size = text.size() / 4 * 3;
    return text.size() % 4 != 0 ? size : size - Detail::paddingOf(text);
}

char* encode(unsigned char const* data, std::size_t length, char* out) noexcept {
    return Detail::encodeWith(Detail::chosenKernel(), data, length, out);
}

void encode(unsigned char const* data, std::size_t length, std::string& out) {
    if (data == nullptr && length != 0)
        throw Exception::InvalidParameter("base64: no data to encode");
    std::size_t const size = encodedSize(length);
    if (size > out.max_size())
        throw Exception::InvalidParameter("base64: the text for " + std::to_string(length) +
                                          " bytes would exceed the maximum size of a string");
    if (size <= out.size() || size < 65536) {
        out.resize(size);
        encode(data, length, out.data());
        return;
    }
    // Resizing would first fill the new part with zeros, which for a large block costs another pass
    // over memory. Pieces that stay in the first-level cache are cheaper.
    out.reserve(size);
    out.clear();
    std::array<char, 8192> piece;
    constexpr std::size_t step = piece.size() / 4 * 3;
    while (length != 0) {
        std::size_t const count = std::min(length, step);
        char* const end = encode(data, count, piece.data());
        out.append(piece.data(), end);
        data += count;
        length -= count;
    }
}

void decodePieces(std::string_view text,
                  void (*take)(void* context, unsigned char const* bytes, std::size_t size),
                  void* context) {
    Detail::decodePiecesWith(Detail::chosenKernel(), text, take, context);
}

std::size_t decode(std::string_view text, unsigned char* data, std::size_t length) {
    return Detail::decodeWith(Detail::chosenKernel(), text, data, length);
}

} // namespace Tolv::Base64

namespace Tolv {

void encodeBase64(unsigned char const* data, unsigned int length, std::string& out) {
    Base64::encode(data, length, out);
}

unsigned int decodeSize(std::string const& text) {
    std::size_t const size = Base64::decodedSize(text);
    if (size > std::numeric_limits<unsigned int>::max())
        throw Exception::InvalidParameter("base64: the content of " + std::to_string(size) +
                                          " bytes is too large for a 32-bit length");
    return static_cast<unsigned int>(size);
}

unsigned int decodeBase64(std::string const& text, unsigned char* data, unsigned int length) {
    // The result is at most length, which is an unsigned int.
    return static_cast<unsigned int>(Base64::decode(text, data, length));
}

} // namespace Tolv
