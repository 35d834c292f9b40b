#pragma once

#include <cstddef>
#include <string>

namespace Tolv::Tool {

/// A file open for reading.
class Input {
public:
    /// @param file its name, or "-" for the standard input. If that is a terminal, a message says
    /// what the program is waiting for
    /// @param awaited the expected content, for this message
    /// @throws std::system_error
    explicit Input(std::string const& file,
                   char const* awaited = "messages, one line of JSON each");
    Input(Input const&) = delete;
    Input& operator=(Input const&) = delete;
    ~Input();

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

    /// Reads the rest of the file, up to `mostBytes`. @throws std::system_error
    [[nodiscard]] std::string read(std::size_t mostBytes) const;

    /// The name of a file for error texts.
    static std::string name(std::string const& file);

private:
    int descriptor_;
};

} // namespace Tolv::Tool
