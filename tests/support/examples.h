#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "support/trees.h"

namespace Tolv::Testing {

/// The folder of the golden files: one message of each class, with all fields set.
inline std::filesystem::path const goldenFolder = TOLV_GOLDEN_FOLDER;

inline MetaData::Element parsedFile(std::filesystem::path const& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("there is no " + path.string());
    return parsed(std::string(std::istreambuf_iterator<char>(file), {}));
}

/// The trees of all golden files, in the order of their names.
inline std::vector<MetaData::Element> const& examples() {
    static auto const all = [] {
        std::vector<std::filesystem::path> paths;
        for (auto const& entry : std::filesystem::recursive_directory_iterator(goldenFolder))
            if (entry.path().extension() == ".json")
                paths.push_back(entry.path());
        std::sort(paths.begin(), paths.end());
        std::vector<MetaData::Element> trees;
        for (auto const& path : paths)
            trees.push_back(parsedFile(path));
        return trees;
    }();
    return all;
}

} // namespace Tolv::Testing
