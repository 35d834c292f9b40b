#pragma once

#include <string>
#include <string_view>

#include "classes.h"

namespace Tolv::Tool {

/// An output folder, created if it does not exist. Existing files are replaced, and so are symbolic
/// links, so that nothing is written outside the folder.
class Folder {
public:
    /// @throws OutputLost
    explicit Folder(std::string path);
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    ~Folder();

    /// @throws OutputLost if the file cannot be written completely; an older file of that name is
    /// then kept
    void write(std::string const& name, std::string_view text) const;

private:
    std::string path_;
    int descriptor_;
};

/// The name of the class for use in file names: "App.ConnectMessage", or the id in dotted form if
/// there is no alias.
std::string fileStem(MessageClass const& known);

} // namespace Tolv::Tool
