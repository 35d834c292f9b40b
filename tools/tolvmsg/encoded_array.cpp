#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/conversion.h>
#include <tolv/msgs/introspection/detail/encoded_count.h>

#include "encoded_array.h"

namespace Tolv::Tool {

using MetaData::Element;
using Msgs::Introspection::Detail::encodedBits;
using Msgs::Introspection::Detail::encodedCount;

namespace {

template <class T>
T at(unsigned char const* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value); // little-endian, like the machine
    return value;
}

double bit(int bits) { return (bits & 1) != 0 ? 1 : 0; }

} // namespace

std::optional<EncodedArray> EncodedArray::from(Element const& element) {
    if (!element.isObject())
        return {};
    auto const* const type = element.find("type");
    auto const* const len = element.find("len");
    auto const* const text = element.find("base64");
    unsigned int tag = 0;
    unsigned long long count = 0;
    if (type == nullptr || len == nullptr || !TryGetAs(*type, tag) || !TryGetAs(*len, count) ||
        (text != nullptr && !text->isString()) ||
        element.object().size() != (text != nullptr ? 3U : 2U) || encodedBits(tag) == 0)
        return {};
    return EncodedArray(static_cast<Type>(tag), count,
                        text != nullptr ? std::optional(text->text()) : std::nullopt);
}

char const* EncodedArray::typeName() const noexcept {
    switch (type_) {
    case Type::boolean:
        return "bool";
    case Type::complexBoolean:
        return "complex bool";
    case Type::floating:
        return "double";
    case Type::complexFloating:
        return "complex double";
    case Type::integer:
        return "int";
    }
    return "";
}

std::size_t EncodedArray::bitsPerElement() const noexcept {
    return encodedBits(static_cast<unsigned int>(type_));
}

std::optional<std::size_t> EncodedArray::count() const noexcept {
    return encodedCount(static_cast<unsigned int>(type_), len_, text_);
}

Samples EncodedArray::samples(std::size_t most) const {
    auto const all = count().value_or(0);
    auto const wanted = std::min(most, all);
    auto const bitsWanted = wanted * bitsPerElement();
    auto const bytesWanted = bitsWanted / 8 + (bitsWanted % 8 != 0 ? 1 : 0);
    std::vector<unsigned char> bytes((bytesWanted + 2) / 3 * 3);
    if (wanted > 0)
        Base64::decode(text_->substr(0, bytes.size() / 3 * 4), bytes.data(), bytes.size());
    if (wanted == all && bitsWanted % 8 != 0 && bytes[bytesWanted - 1] >> bitsWanted % 8 != 0)
        throw Exception::InvalidParameter("a bit after the last element is set");

    Samples samples;
    samples.isBoolean = type_ == Type::boolean || type_ == Type::complexBoolean;
    samples.isComplex = type_ == Type::complexBoolean || type_ == Type::complexFloating;
    samples.real.reserve(wanted);
    samples.imaginary.reserve(samples.isComplex ? wanted : 0);
    for (std::size_t i = 0; i < wanted; ++i) {
        auto const* const here = bytes.data() + i * bitsPerElement() / 8;
        switch (type_) {
        case Type::boolean:
            samples.real.push_back(bit(*here >> i % 8));
            break;
        case Type::complexBoolean:
            samples.real.push_back(bit(*here >> i % 4 * 2));
            samples.imaginary.push_back(bit(*here >> (i % 4 * 2 + 1)));
            break;
        case Type::floating:
            samples.real.push_back(at<double>(here));
            break;
        case Type::complexFloating:
            samples.real.push_back(at<double>(here));
            samples.imaginary.push_back(at<double>(here + 8));
            break;
        case Type::integer:
            samples.real.push_back(at<std::int32_t>(here));
            break;
        }
    }
    return samples;
}

MetaData::Array EncodedArray::values(std::size_t most) const {
    auto const samples = this->samples(most);
    auto const one = [this, &samples](double value) {
        Element element;
        if (samples.isBoolean)
            element.setBoolean(value != 0);
        else if (type_ == Type::integer)
            element.setSigned(static_cast<std::int64_t>(value));
        else
            element.setFloating(value);
        return element;
    };
    MetaData::Array values;
    values.reserve(static_cast<unsigned int>(samples.size()));
    for (std::size_t i = 0; i < samples.size(); ++i) {
        if (!samples.isComplex) {
            values.push_back(one(samples.real[i]));
            continue;
        }
        MetaData::Array both;
        both.push_back(one(samples.real[i]));
        both.push_back(one(samples.imaginary[i]));
        values.push_back(std::move(both));
    }
    return values;
}

} // namespace Tolv::Tool
