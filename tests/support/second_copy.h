#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

/// Two copies of a library in one process have two of each global object, which the address
/// sanitizer reports as an error of the build. It calls this function for its options.
// NOLINTNEXTLINE(bugprone-reserved-identifier): the sanitizer's name
extern "C" inline __attribute__((used, visibility("default"))) char const*
__asan_default_options() {
    return "detect_odr_violation=0";
}

namespace Tolv::Testing {

/// A copy of a library at another path, which the loader takes for another library. Exists during
/// the lifetime of this object.
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
