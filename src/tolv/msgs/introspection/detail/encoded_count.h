#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <tolv/core/base64.h>

/// @file
/// How many elements an encoded array gives when it is read.
namespace Tolv::Msgs::Introspection::Detail {

/// Bits that an element takes in the encoded form with this tag; 0 for a tag that there is none of.
constexpr std::size_t encodedBits(unsigned int tag) noexcept {
    switch (tag) {
    case 1: // bool
        return 1;
    case 2: // std::complex<bool>
        return 2;
    case 3: // double
        return 64;
    case 4: // std::complex<double>
        return 128;
    case 9: // int
        return 32;
    default:
        return 0;
    }
}

/// The number of elements that a reader takes from the encoded form. That of numbers comes from the
/// text, rounded down, unless "len" is 0; truth values are as many as "len" says.
/// @param tag a known one
/// @param base64 whose content need not be valid; empty where there is none
/// @return nothing when a reader refuses the text: it has not exactly the bytes that "len" truth
/// values take, or it is missing
inline std::optional<std::size_t> encodedCount(unsigned int tag, unsigned long long len,
                                               std::optional<std::string_view> base64) noexcept {
    auto const bits = encodedBits(tag);
    if (bits >= 8 && len == 0)
        return 0;
    if (!base64)
        return len == 0 ? std::optional<std::size_t>(0) : std::nullopt;
    auto const bytes = Base64::decodedSize(*base64);
    if (bits >= 8)
        return bytes / (bits / 8);
    auto const perByte = 8 / bits;
    if (len / perByte + (len % perByte != 0 ? 1 : 0) != bytes)
        return {};
    return static_cast<std::size_t>(len);
}

} // namespace Tolv::Msgs::Introspection::Detail
