#include <tolv/core/metadata/json.h>

#include "json_object.h"

namespace Tolv::Tool {

JsonObject& JsonObject::add(std::string_view key, std::string_view text) {
    return addJson(key, jsonString(text));
}

JsonObject& JsonObject::add(std::string_view key, std::uint64_t number) {
    return addJson(key, std::to_string(number));
}

JsonObject& JsonObject::addJson(std::string_view key, std::string_view json) {
    if (text_.size() > 1)
        text_.push_back(',');
    text_.append(jsonString(key)).append(":").append(json);
    return *this;
}

std::string jsonString(std::string_view text) {
    MetaData::Element element;
    element.setString(validUtf8(text));
    std::string json;
    MetaData::WriterJson::Write(element, json);
    return json;
}

std::string jsonArray(std::vector<std::string> const& values) {
    std::string json = "[";
    for (auto const& value : values)
        json.append(json.size() > 1 ? "," : "").append(value);
    return json + ']';
}

} // namespace Tolv::Tool
