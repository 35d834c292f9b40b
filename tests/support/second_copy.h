#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

/// Two copies of a library in one process hold two of each global object, which the address
/// sanitizer takes for a fault of the build. This is where it asks for what shall be otherwise.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer's name
extern "C" inline __attribute__((used, visibility("default"))) char const*
__asan_default_options() {
    return "detect_odr_violation=0";
}

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
