#include <complex>
#include <cstddef>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/fields/base64_encoder.h>
#include <tolv/msgs/introspection/detail/encoded_count.h>

#include "encoded_array.h"

namespace Tolv::Tool {
namespace {

/// What a reader takes; nothing when it refuses.
template <class T>
std::optional<std::size_t> countRead(MetaData::Element const& element) try {
    MetaData::Base64Encoder<T> form;
    form.copyFromMetaData(element);
    std::vector<T> values;
    form.decode(values);
    return values.size();
} catch (Exception::Base const&) {
    return {};
}

std::optional<std::size_t> countRead(unsigned int tag, MetaData::Element const& element) {
    switch (tag) {
    case 1:
        return countRead<bool>(element);
    case 2:
        return countRead<std::complex<bool>>(element);
    case 3:
        return countRead<double>(element);
    case 4:
        return countRead<std::complex<double>>(element);
    default:
        return countRead<int>(element);
    }
}

/// Whatever "len" says and however long the text is, as many samples as a reader takes.
TEST(EncodedArray, HasAsManyElementsAsAreRead) {
    for (unsigned int const tag : {1U, 2U, 3U, 4U, 9U})
        for (unsigned long long const len :
             {0ULL, 1ULL, 3ULL, 4ULL, 5ULL, 8ULL, 9ULL, 16ULL, ~0ULL})
            for (int bytes = -1; bytes <= 33; ++bytes) { // -1: no text
                MetaData::Element element;
                element["type"].setUnsigned(tag);
                element["len"].setUnsigned(len);
                if (bytes >= 0) {
                    std::string text;
                    std::string const zeros(static_cast<std::size_t>(bytes), '\0');
                    Base64::encode(reinterpret_cast<unsigned char const*>(zeros.data()),
                                   zeros.size(), text);
                    element["base64"].setString(text);
                }
                auto const encoded = EncodedArray::from(element);
                auto const samples = samplesOf(element);
                auto const read = countRead(tag, element);
                EXPECT_EQ(encoded->count(), read) << tag << ' ' << len << ' ' << bytes;
                EXPECT_EQ(samples ? std::optional(samples->size()) : std::nullopt, read)
                    << tag << ' ' << len << ' ' << bytes;
            }
}

TEST(EncodedArray, SpareBitsAreRefused) {
    MetaData::Element element;
    MetaData::ReaderJson::Read(element, R"({"type":1,"len":3,"base64":"CA=="})");
    EXPECT_FALSE(countRead<bool>(element));
    EXPECT_FALSE(samplesOf(element));
}

} // namespace
} // namespace Tolv::Tool
