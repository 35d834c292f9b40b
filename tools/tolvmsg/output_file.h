#pragma once

#include <string>

#include "output.h"

namespace Tolv::Tool {

/// A file, made or emptied, that is written from its start; without `close` it may be incomplete.
class OutputFile {
public:
    /// @throws OutputLost
    explicit OutputFile(std::string const& file);
    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;
    ~OutputFile();

    Output& output() noexcept { return output_; }

    /// Writes what is left. @throws OutputLost
    void close();

private:
    std::string name_;
    int descriptor_;
    Output output_;
};

} // namespace Tolv::Tool
