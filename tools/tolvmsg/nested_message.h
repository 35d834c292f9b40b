#pragma once

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include <tolv/core/metadata/conversion.h>

namespace Tolv::Tool {

/// Whether this key holds a whole message, or an array of messages.
inline bool holdsMessages(std::string_view key) {
    constexpr std::array<std::string_view, 4> keys{"Error", "param", "Attributes", "Messages"};
    return std::find(keys.begin(), keys.end(), key) != keys.end();
}

/// The id of the message whose tree is `element`; empty if there is none.
inline std::optional<unsigned long long> idOf(MetaData::Element const& element) {
    auto const* const id = element.find("MessageID");
    unsigned long long value = 0;
    if (id == nullptr || !TryGetAs(*id, value))
        return {};
    return value;
}

} // namespace Tolv::Tool
