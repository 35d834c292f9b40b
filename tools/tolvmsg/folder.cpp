#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "folder.h"
#include "ids.h"

namespace Tolv::Tool {

Folder::Folder(std::filesystem::path path) : path_(std::move(path)) {
    std::filesystem::create_directories(path_);
}

void Folder::write(std::string const& name, std::string_view text) const {
    auto const full = (path_ / name).string();
    auto* const file = std::fopen(full.c_str(), "wb");
    auto written = file != nullptr && std::fwrite(text.data(), 1, text.size(), file) == text.size();
    auto error = errno;
    if (file != nullptr && std::fclose(file) != 0 && written) {
        error = errno;
        written = false;
    }
    if (!written)
        throw std::system_error(error, std::generic_category(), full);
}

std::string fileStem(MessageClass const& known) {
    if (known.alias.empty())
        return dotted(known.id);
    auto stem = known.alias;
    for (auto at = stem.find("::"); at != std::string::npos; at = stem.find("::"))
        stem.replace(at, 2, ".");
    return stem;
}

} // namespace Tolv::Tool
