#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace Tolv::Tool {

/// Thrown if the output cannot be written.
class OutputLost : public std::runtime_error {
public:
    OutputLost(std::string const& name, int error);
    /// Whether the reader has closed the pipe (`| head`), which is not an error to report.
    [[nodiscard]] bool readerGone() const noexcept { return readerGone_; }

private:
    bool readerGone_;
};

/// Buffered output to a file descriptor. Text that has not been flushed when the object is
/// destroyed is lost.
class Output {
public:
    /// @param name for error texts
    explicit Output(int descriptor, std::string name = "the standard output")
        : descriptor_(descriptor), name_(std::move(name)) {}
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

    /// Sets an action to run before each flush; may be empty.
    void setBeforeFlush(std::function<void()> action) { beforeFlush_ = std::move(action); }

private:
    static constexpr std::size_t enough = std::size_t{1} << 16U;

    int descriptor_;
    std::string name_;
    std::string buffer_;
    std::function<void()> beforeFlush_;
};

} // namespace Tolv::Tool
