#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text.h"

namespace Tolv::Tool {

/// One JSON object in compact form, written member by member. Texts that are not valid UTF-8 are
/// mended, so that the result is always valid, and what could harm a terminal is escaped, so that
/// the result can be shown on one.
class JsonObject {
public:
    JsonObject& add(std::string_view key, std::string_view text);
    JsonObject& add(std::string_view key, char const* text) {
        return add(key, std::string_view(text));
    }
    JsonObject& add(std::string_view key, std::uint64_t number);
    JsonObject& addNull(std::string_view key) { return addJson(key, "null"); }
    /// A value that is JSON text already.
    JsonObject& addJson(std::string_view key, std::string_view json);

    [[nodiscard]] std::string text() const { return harmlessJson(text_ + '}'); }

private:
    std::string text_ = "{";
};

/// The text as a JSON string.
std::string jsonString(std::string_view text);

/// The values, which are JSON text, as a JSON array.
std::string jsonArray(std::vector<std::string> const& values);

} // namespace Tolv::Tool
