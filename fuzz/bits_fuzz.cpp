// Both bit vectors: their packed text, which is the only one for its content, and the field that
// holds them.

#include <complex>
#include <string_view>
#include <vector>

#include <tolv/core/base64.h>
#include <tolv/core/bit_vectors.h>
#include <tolv/core/exceptions.h>
#include <tolv/msgs/record.h>

#include "fuzzing.h"

namespace {

using namespace Tolv::Fuzzing;

/// The fast and the portable form agree about `text`.
template <class Vector>
void checkText(std::string_view text, unsigned long long count) {
    Vector elements;
    try {
        Tolv::decodeBits(text, count, elements);
    } catch (Tolv::Exception::InvalidParameter const&) {
        require(elements.empty(), "a refused text changed the vector");
        return;
    }
    require(elements.size() == count, "another number of elements");
    Vector plain;
    Tolv::Detail::decodeBitsPortable(text, count, plain);
    require(plain == elements, "the portable form decodes something else");
    std::string again;
    Tolv::encodeBits(elements, again);
    require(again == text, "the text changed");
    Tolv::Detail::encodeBitsPortable(elements, again);
    require(again == text, "the portable form encodes something else");
}

/// A field that was read is written as it was, or kept its content.
template <class T>
void checkField(std::string const& text, unsigned long long count) {
    using namespace Tolv::MetaData;
    Element tree;
    auto& list = tree["list"];
    list["type"].setUnsigned(std::is_same_v<T, bool> ? 1 : 2);
    list["len"].setUnsigned(count);
    list["base64"].setString(text);
    ReflectorArray<T> field(nullptr, "list"_key, Required, true);
    try {
        field.copyFromMetaData(tree);
    } catch (Tolv::Exception::InvalidParameter const&) {
        require(field().empty(), "a refused text changed the field");
        return;
    }
    Element again;
    field.copyToMetaData(again);
    if (count == 0) // the text may then be present and empty
        again["list"]["base64"].setString("");
    require(again == tree, "the field wrote something else");
}

template <class T>
void check(std::string const& bytes, std::string const& text, unsigned long long count,
           unsigned int perByte) {
    using Vector = std::vector<T>;
    checkText<Vector>(bytes, count); // rarely base64
    checkText<Vector>(text, count);
    checkField<T>(text, count);
    // A count that is right except for the last byte, which a fuzzer would rarely find.
    auto const most = static_cast<unsigned long long>(bytes.size()) * perByte;
    auto const fitting = most - std::min<unsigned long long>(most, count % perByte);
    checkText<Vector>(text, fitting);
    checkField<T>(text, fitting);
}

} // namespace

// The input is a count of 8 bytes and the packed elements.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    silenceDiagnostics();
    Input input(data, size);
    auto const count = input.take<std::uint64_t>();
    auto const bytes = input.rest();
    std::string text;
    Tolv::encodeBase64(reinterpret_cast<unsigned char const*>(bytes.data()),
                       static_cast<unsigned int>(bytes.size()), text);
    check<bool>(bytes, text, count, 8);
    check<std::complex<bool>>(bytes, text, count, 4);
    return 0;
}
