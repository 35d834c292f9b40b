#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include <tolv/core/base64.h>
#include <tolv/core/metadata/conversion.h>

#include "encoded_array.h"

namespace Tolv::Tool {

using MetaData::Element;

namespace {

template <class T>
T at(unsigned char const* bytes) {
    T value;
    std::memcpy(&value, bytes, sizeof value); // little-endian, as the machine
    return value;
}

Element number(double value) {
    Element element;
    element.setFloating(value);
    return element;
}

Element boolean(unsigned int bit) { return MetaData::Trivial_T<bool>((bit & 1U) != 0); }

Element pair(Element first, Element second) {
    MetaData::Array both;
    both.push_back(std::move(first));
    both.push_back(std::move(second));
    return both;
}

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
        element.object().size() != (text != nullptr ? 3U : 2U) ||
        (tag != 9 && (tag < 1 || tag > 4)))
        return {};
    return EncodedArray(static_cast<Type>(tag), count,
                        text != nullptr ? text->text() : std::string_view());
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
    switch (type_) {
    case Type::boolean:
        return 1;
    case Type::complexBoolean:
        return 2;
    case Type::floating:
        return 64;
    case Type::complexFloating:
        return 128;
    case Type::integer:
        return 32;
    }
    return 1;
}

std::size_t EncodedArray::count() const noexcept {
    auto const room = Base64::decodedSize(text_) * 8 / bitsPerElement();
    return bitsPerElement() < 8 ? static_cast<std::size_t>(std::min<unsigned long long>(len_, room))
                                : room;
}

MetaData::Array EncodedArray::values(std::size_t most) const {
    auto const wanted = std::min(most, count());
    auto const bytesWanted = (wanted * bitsPerElement() + 7) / 8;
    std::vector<unsigned char> bytes((bytesWanted + 2) / 3 * 3);
    Base64::decode(text_.substr(0, bytes.size() / 3 * 4), bytes.data(), bytes.size());

    MetaData::Array values;
    values.reserve(static_cast<unsigned int>(wanted));
    for (std::size_t i = 0; i < wanted; ++i) {
        auto const* const here = bytes.data() + i * bitsPerElement() / 8;
        switch (type_) {
        case Type::boolean:
            values.push_back(boolean(*here >> i % 8));
            break;
        case Type::complexBoolean: {
            auto const bits = static_cast<unsigned int>(*here) >> i % 4 * 2;
            values.push_back(pair(boolean(bits), boolean(bits >> 1U)));
            break;
        }
        case Type::floating:
            values.push_back(number(at<double>(here)));
            break;
        case Type::complexFloating:
            values.push_back(pair(number(at<double>(here)), number(at<double>(here + 8))));
            break;
        case Type::integer: {
            Element element;
            element.setSigned(at<std::int32_t>(here));
            values.push_back(std::move(element));
            break;
        }
        }
    }
    return values;
}

} // namespace Tolv::Tool
