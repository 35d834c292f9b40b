#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>

#include <algorithm>
#include <memory>
#include <string>

#include "fuzzing.h"

namespace {

using Tolv::Fuzzing::require;

// Whether `text` is accepted; an accepted text is the only one for its content.
bool checkText(std::string const& text) {
    // Does not throw for sizes that fit into the memory of a fuzzer.
    unsigned int const size = Tolv::decodeSize(text);
    auto const data = std::make_unique<unsigned char[]>(size);
    bool accepted = true;
    try {
        require(Tolv::decodeBase64(text, data.get(), size) == size, "another size");
    } catch (Tolv::Exception::InvalidParameter const&) {
        accepted = false;
    }

    // With a buffer of half the size, the result and the bytes are the same.
    unsigned int const half = size / 2;
    auto const part = std::make_unique<unsigned char[]>(half);
    try {
        require(Tolv::decodeBase64(text, part.get(), half) == half, "another size");
        require(accepted && std::equal(part.get(), part.get() + half, data.get()),
                "another beginning");
    } catch (Tolv::Exception::InvalidParameter const&) {
        require(!accepted, "refused only for a small buffer");
    }

    if (accepted) {
        std::string again;
        Tolv::encodeBase64(data.get(), size, again);
        require(again == text, "the text changed");
    }
    return accepted;
}

} // namespace

// The input is a text, and also bytes whose text must be accepted.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string text(data, data + size);
    checkText(text);
    Tolv::encodeBase64(data, static_cast<unsigned int>(size), text);
    require(checkText(text), "an encoded text was refused");
    return 0;
}
