#pragma once

#include <string>

#include "output.h"

namespace Tolv::Tool {

/// A file that is replaced atomically: a temporary file beside it is renamed by `close`, so that an
/// older file is kept if anything fails before. Devices, pipes and other special files are written
/// in place.
class OutputFile {
public:
    /// Symbolic links are followed. @throws OutputLost
    explicit OutputFile(std::string const& file);
    /// A file in this folder. A symbolic link of that name is replaced, not followed.
    /// @param folder the descriptor of an open folder, which must outlive this object
    /// @param name of the file, without a slash
    /// @param shown the name of the file for error texts
    /// @throws OutputLost
    OutputFile(int folder, std::string name, std::string const& shown);
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    ~OutputFile();

    Output& output() noexcept { return output_; }

    /// Writes the rest and renames the file. @throws OutputLost
    void close();

private:
    struct Place {
        int folder;            ///< descriptor of its folder; AT_FDCWD if `name` is a path
        std::string name;      ///< name of the file in the folder, or its path
        std::string temporary; ///< its name until `close`; empty if it is written in place
        int descriptor;        ///< -1 if it cannot be opened; see errno
    };
    static Place placeOf(std::string const& file);
    static Place placeIn(int folder, std::string name);
    OutputFile(Place place, std::string const& shown);

    std::string shown_;
    Place place_;
    Output output_;
};

} // namespace Tolv::Tool
