#pragma once

#include <string>
#include <string_view>

#include "classes.h"

namespace Tolv::Tool {

/// A folder that a command fills with files. It is made when it is not there; files in it are
/// replaced, and so are symbolic links: nothing is written outside of it.
class Folder {
public:
    /// @throws OutputLost
    explicit Folder(std::string path);
    Folder(Folder const&) = delete;
    Folder& operator=(Folder const&) = delete;
    ~Folder();

    /// @throws OutputLost when the file is not whole; an older one of that name is then left
    void write(std::string const& name, std::string_view text) const;

private:
    std::string path_;
    int descriptor_;
};

/// The name of the class in names of files: "App.ConnectMessage", and the id in dotted form where
/// there is no alias.
std::string fileStem(MessageClass const& known);

} // namespace Tolv::Tool
