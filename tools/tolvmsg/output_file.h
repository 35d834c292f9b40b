#pragma once

#include <string>

#include "output.h"

namespace Tolv::Tool {

/// A file that is written as a whole: it is written beside its place and takes it in `close`, so
/// that an older file of that name stays as it is when anything fails before. What is no regular
/// file, such as a device or a pipe, is written in place.
class OutputFile {
public:
    /// Symbolic links are followed. @throws OutputLost
    explicit OutputFile(std::string const& file);
    /// A file of this folder, which no symbolic link leads out of: a link of that name is replaced.
    /// @param folder the descriptor of an open folder, which outlives this object
    /// @param name of the file, without a slash
    /// @param shown what a complaint calls the file
    /// @throws OutputLost
    OutputFile(int folder, std::string name, std::string const& shown);
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    ~OutputFile();

    Output& output() noexcept { return output_; }

    /// Writes what is left and puts the file in its place. @throws OutputLost
    void close();

private:
    struct Place {
        int folder;            ///< where the file stands; AT_FDCWD: at its path
        std::string name;      ///< of the file; its path without a folder
        std::string temporary; ///< its name until `close`; empty: it is written in place
        int descriptor;        ///< -1 when it cannot be opened; see errno
    };
    static Place placeOf(std::string const& file);
    static Place placeIn(int folder, std::string name);
    OutputFile(Place place, std::string const& shown);

    std::string shown_;
    Place place_;
    Output output_;
};

} // namespace Tolv::Tool
