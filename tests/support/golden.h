#pragma once

#include <algorithm>
#include <string>

#include <tolv/msgs/catalogue.h>

#include "support/examples.h"

namespace Tolv::Testing {

/// The path of a class's file below `goldenFolder`.
inline std::filesystem::path pathOf(Msgs::MessageDescription const& row) {
    std::filesystem::path path;
    auto const name = row.fullAlias();
    for (std::size_t at = 0; at < name.size();) {
        auto const end = std::min(name.find("::", at), name.size());
        path /= name.substr(at, end - at);
        at = end + 2;
    }
    return path += ".json";
}

inline MetaData::Element goldenOf(Msgs::MessageDescription const& row) {
    return parsedFile(goldenFolder / pathOf(row));
}

} // namespace Tolv::Testing
