#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

namespace Tolv::Testing {

/// A library at another path, for as long as this lives. The loader takes it for another library.
class SecondCopy {
public:
    explicit SecondCopy(std::filesystem::path const& library)
        : folder_(std::filesystem::temp_directory_path() / "tolv-copy-XXXXXX") {
        if (mkdtemp(folder_.data()) == nullptr)
            throw std::filesystem::filesystem_error("mkdtemp", folder_, std::error_code());
        path_ = std::filesystem::path(folder_) / library.filename();
        std::filesystem::copy_file(library, path_);
    }
    ~SecondCopy() { std::filesystem::remove_all(folder_); }
    SecondCopy(SecondCopy const&) = delete;
    SecondCopy& operator=(SecondCopy const&) = delete;

    [[nodiscard]] char const* path() const { return path_.c_str(); }

private:
    std::string folder_;
    std::string path_;
};

} // namespace Tolv::Testing
