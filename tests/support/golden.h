#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include <tolv/msgs/catalogue.h>

#include "support/trees.h"

namespace Tolv::Testing {

/// One message of each class with all fields set: tests/golden/<family>/<alias>.json. The build
/// file names the folder to the tests that include this.
inline std::filesystem::path const golden = TOLV_GOLDEN;

/// The path of a class's file below `golden`.
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
    std::ifstream file(golden / pathOf(row));
    EXPECT_TRUE(file) << "there is no tests/golden/" << pathOf(row).string();
    return parsed(std::string(std::istreambuf_iterator<char>(file), {}));
}

} // namespace Tolv::Testing
