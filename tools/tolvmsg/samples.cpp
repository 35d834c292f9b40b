#include <cstdint>
#include <utility>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/conversion.h>

#include "encoded_array.h"
#include "samples.h"

namespace Tolv::Tool {

using MetaData::Element;

namespace {

/// Integers up to this magnitude are exact doubles.
constexpr auto mostInteger = std::int64_t{1} << 53U;

/// The values of a plain array, all of the same kind.
class PlainSamples {
public:
    std::optional<Samples> take(MetaData::Array const& array) {
        samples_.isComplex = !array.empty() && array[0].isArray();
        samples_.real.reserve(array.size());
        for (auto const& entry : array)
            if (!add(entry))
                return {};
        samples_.isBoolean = booleans_ > 0;
        if (samples_.isBoolean && numbers_ > 0)
            return {};
        return std::move(samples_);
    }

private:
    bool add(Element const& entry) {
        if (!samples_.isComplex)
            return add(entry, samples_.real);
        return entry.isArray() && entry.array().size() == 2 &&
               add(entry.array()[0], samples_.real) && add(entry.array()[1], samples_.imaginary);
    }

    bool add(Element const& value, std::vector<double>& to) {
        if (value.isBoolean()) {
            ++booleans_;
            to.push_back(value.boolean() ? 1 : 0);
            return true;
        }
        ++numbers_;
        auto const isExact = !value.isUnsigned() && // exceeds the signed range
                             (!value.isSigned() || (value.signedNumber() <= mostInteger &&
                                                    value.signedNumber() >= -mostInteger));
        return isExact && TryGetAs(value, to.emplace_back());
    }

    Samples samples_;
    std::size_t booleans_ = 0;
    std::size_t numbers_ = 0;
};

} // namespace

std::optional<Samples> samplesOf(Element const& element) {
    if (element.isArray())
        return PlainSamples().take(element.array());
    auto const encoded = EncodedArray::from(element);
    auto const count = encoded ? encoded->count() : std::nullopt;
    if (!count)
        return {};
    try {
        return encoded->samples(*count);
    } catch (Exception::Base const&) { // not base64
        return {};
    }
}

} // namespace Tolv::Tool
