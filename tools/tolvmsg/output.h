#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace Tolv::Tool {

/// The standard output could not be written.
class OutputLost : public std::runtime_error {
public:
    explicit OutputLost(int error);
    /// The reader has gone (`| head`), which is no fault to complain about.
    [[nodiscard]] bool readerGone() const noexcept { return readerGone_; }

private:
    bool readerGone_;
};

/// Text on its way to a file descriptor, collected into large writes. What is not flushed when the
/// object ends is lost.
class Output {
public:
    explicit Output(int descriptor) : descriptor_(descriptor) {}
    Output(Output const&) = delete;
    Output& operator=(Output const&) = delete;

    /// @throws OutputLost
    void write(std::string_view text) {
        buffer_.append(text);
        if (buffer_.size() >= enough)
            flush();
    }

    /// @throws OutputLost
    void flush();

private:
    static constexpr std::size_t enough = std::size_t{1} << 16U;

    int descriptor_;
    std::string buffer_;
};

} // namespace Tolv::Tool
