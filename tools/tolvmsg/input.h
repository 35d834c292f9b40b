#pragma once

#include <cstddef>
#include <string>

namespace Tolv::Tool {

/// A file that is open for reading.
class Input {
public:
    /// @param file "-": the standard input. Where that is a terminal, the user is told what is
    /// waited for
    /// @param awaited what the file holds
    /// @throws std::system_error
    explicit Input(std::string const& file,
                   char const* awaited = "messages, one line of JSON each");
    Input(Input const&) = delete;
    Input& operator=(Input const&) = delete;
    ~Input();

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

    /// The rest of the file, up to `mostBytes`. @throws std::system_error
    [[nodiscard]] std::string read(std::size_t mostBytes) const;

    /// The name of a file in a complaint.
    static std::string name(std::string const& file);

private:
    int descriptor_;
};

} // namespace Tolv::Tool
