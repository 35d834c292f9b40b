#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "classes.h"

namespace Tolv::Tool {

/// A folder that a command fills with files. It is made when it is not there; files in it are
/// overwritten.
class Folder {
public:
    /// @throws std::filesystem::filesystem_error
    explicit Folder(std::filesystem::path path);
    /// @throws std::system_error when the file is not whole, with its name and the reason
    void write(std::string const& name, std::string_view text) const;

private:
    std::filesystem::path path_;
};

/// The name of the class in names of files: "App.ConnectMessage", and the id in dotted form where
/// there is no alias.
std::string fileStem(MessageClass const& known);

} // namespace Tolv::Tool
