// The unavoidable work for a trace: a copy of its bytes; and finding the text and converting its
// base64, into memory that is already in use.
#include <cstring>
#include <vector>

#include <tolv/core/base64.h>

#include "payloads.h"
#include "roads.h"

namespace Tolv::Bench {
namespace {

constexpr std::size_t sampleBytes = sampleCount * sizeof(double);

/// Finds the string by its quotes, as any reader must, and decodes it.
Prepared scanAndDecode() {
    return writingWith([&text = traceText(), samples = std::vector<double>(sampleCount)]() mutable {
        std::string_view constexpr opening = "\"base64\":\"";
        auto const* const begin = text.data() + text.find(opening) + opening.size();
        auto const left = static_cast<std::size_t>(text.data() + text.size() - begin);
        auto const* const end = static_cast<char const*>(std::memchr(begin, '"', left));
        Base64::decode({begin, end}, reinterpret_cast<unsigned char*>(samples.data()), sampleBytes);
        keep(samples);
    });
}

Prepared encode() {
    auto const message = trace(sampleCount);
    return writingWith([samples = message.payload().trace(),
                        text = std::string(Base64::encodedSize(sampleBytes), ' ')]() mutable {
        Base64::encode(reinterpret_cast<unsigned char const*>(samples.data()), sampleBytes,
                       text.data());
        keep(text);
    });
}

Prepared copy() {
    return writingWith([from = std::vector<double>(sampleCount, 1.5),
                        to = std::vector<double>(sampleCount)]() mutable {
        std::memcpy(to.data(), from.data(), sampleBytes);
        keep(to);
    });
}

Entered const entered{
    {"T read/base64", &scanAndDecode},
    {"T write/base64", &encode},
    {"T read/memcpy", &copy},
    {"T write/memcpy", &copy},
};

} // namespace
} // namespace Tolv::Bench
