#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "text.h"

namespace Tolv::Tool {

/// A JSON object in compact form, written member by member. Invalid UTF-8 is replaced, so that the
/// result is always valid, and characters that could harm a terminal are escaped.
class JsonObject {
public:
    JsonObject& add(std::string_view key, std::string_view text);
    JsonObject& add(std::string_view key, char const* text) {
        return add(key, std::string_view(text));
    }
    JsonObject& add(std::string_view key, std::uint64_t number);
    JsonObject& addNull(std::string_view key) { return addJson(key, "null"); }
    /// Adds a value that already is JSON text.
    JsonObject& addJson(std::string_view key, std::string_view json);

    [[nodiscard]] std::string text() const { return harmlessJson(text_ + '}'); }

private:
    std::string text_ = "{";
};

/// The text as a JSON string.
std::string jsonString(std::string_view text);

/// A JSON array of values that already are JSON text.
std::string jsonArray(std::vector<std::string> const& values);

} // namespace Tolv::Tool
