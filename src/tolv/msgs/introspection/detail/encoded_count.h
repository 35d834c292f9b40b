#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <tolv/core/base64.h>

/// @file
/// The number of elements that an encoded array yields when read.
namespace Tolv::Msgs::Introspection::Detail {

/// The bits per element in the encoded form with this tag; 0 for an unknown tag.
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

/// The number of elements that a reader takes from the encoded form. For numbers it follows from
/// the text, rounded down, unless "len" is 0; for booleans it is "len".
/// @param tag a known one
/// @param base64 the text, whose content need not be valid; empty if absent
/// @return empty if a reader refuses the text because it is missing or its size does not match
/// "len" booleans
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
