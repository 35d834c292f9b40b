#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace Tolv::Tool {

/// The output could not be written.
class OutputLost : public std::runtime_error {
public:
    OutputLost(std::string const& name, int error);
    /// The reader has gone (`| head`), which is no fault to complain about.
    [[nodiscard]] bool readerGone() const noexcept { return readerGone_; }

private:
    bool readerGone_;
};

/// Text on its way to a file descriptor, collected into large writes. What is not flushed when the
/// object ends is lost.
class Output {
public:
    /// @param name what a complaint calls it
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

    /// What is done before anything goes out, or nothing.
    void setBeforeFlush(std::function<void()> action) { beforeFlush_ = std::move(action); }

private:
    static constexpr std::size_t enough = std::size_t{1} << 16U;

    int descriptor_;
    std::string name_;
    std::string buffer_;
    std::function<void()> beforeFlush_;
};

} // namespace Tolv::Tool
