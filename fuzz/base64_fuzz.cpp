#include <tolv/core/base64.h>
#include <tolv/core/bit_vectors.h>
#include <tolv/core/exceptions.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

void require(bool condition) {
    if (!condition)
        std::abort();
}

// An accepted text is the only one for its content.
void checkText(std::string const& text) {
    // Throws for nothing that fits in the memory of a fuzzer.
    unsigned int const size = Tolv::decodeSize(text);
    auto const data = std::make_unique<unsigned char[]>(size);
    bool accepted = true;
    try {
        require(Tolv::decodeBase64(text, data.get(), size) == size);
    } catch (Tolv::Exception::InvalidParameter const&) {
        accepted = false;
    }

    // A buffer of half the size gives the same verdict and the same bytes.
    unsigned int const half = size / 2;
    auto const part = std::make_unique<unsigned char[]>(half);
    try {
        require(Tolv::decodeBase64(text, part.get(), half) == half);
        require(accepted && std::equal(part.get(), part.get() + half, data.get()));
    } catch (Tolv::Exception::InvalidParameter const&) {
        require(!accepted);
    }

    if (accepted) {
        std::string again;
        Tolv::encodeBase64(data.get(), size, again);
        require(again == text);
    }
}

template <typename Vector>
void checkBits(std::string const& text, unsigned long long count) {
    Vector elements;
    try {
        Tolv::decodeBits(text, count, elements);
    } catch (Tolv::Exception::InvalidParameter const&) {
        require(elements.empty());
        return;
    }
    require(elements.size() == count);
    Vector plain;
    Tolv::Detail::decodeBitsPortable(text, count, plain);
    require(plain == elements);
    std::string again;
    Tolv::encodeBits(elements, again);
    require(again == text);
}

template <typename Vector>
void checkBitsOfAnyCount(std::string const& text, unsigned long long count, unsigned int perByte) {
    checkBits<Vector>(text, count);
    // Also a count that can be right, which a fuzzer would seldom find.
    unsigned long long const largest =
        static_cast<unsigned long long>(Tolv::decodeSize(text)) * perByte;
    checkBits<Vector>(text, largest - std::min<unsigned long long>(largest, count % perByte));
}

} // namespace

// The input is a count of 8 bytes and the text.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::uint64_t count = 0;
    std::size_t const head = std::min(size, sizeof count);
    if (head != 0)
        std::memcpy(&count, data, head);
    std::string const text(data + head, data + size);
    checkText(text);
    checkBitsOfAnyCount<std::vector<bool>>(text, count, 8);
    checkBitsOfAnyCount<std::vector<std::complex<bool>>>(text, count, 4);
    return 0;
}
