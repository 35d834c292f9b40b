#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace Tolv::Tool {

/// Reads lines from a file descriptor, in memory that depends on the longest line only. A line ends
/// with LF, CR LF, or the end of the input.
class LineReader {
public:
    struct Line {
        std::string_view text; ///< without its end; valid until the next call
        bool tooLong = false;  ///< beyond the bound: the text is dropped
    };

    /// @param mostBytes the bound on a line; what goes beyond is skipped without being kept
    /// @param beforeWait called when no input is there at once and reading is going to wait for it
    LineReader(int descriptor, std::size_t mostBytes, std::function<void()> beforeWait);

    /// From now on the end of a regular file is no end: the reader waits for more, from the start
    /// when the file has become shorter, and returns no line that is not complete.
    void follow() noexcept { follows_ = !mayWait_; }

    /// The next line; false at the end. @throws std::system_error when reading fails
    bool next(Line& line);

private:
    void fill();
    void waitForMore();
    Line take(std::size_t end);

    int descriptor_;
    bool mayWait_; ///< anything but a regular file
    std::size_t mostBytes_;
    std::function<void()> beforeWait_;

    // The unread bytes are [begin_, end_) of the buffer; up to scanned_ there is no LF among them.
    std::unique_ptr<char[]> buffer_;
    std::size_t capacity_;
    std::size_t begin_ = 0;
    std::size_t scanned_ = 0;
    std::size_t end_ = 0;
    bool skipping_ = false; ///< inside a line that is too long
    bool follows_ = false;
    bool atEnd_ = false;
};

} // namespace Tolv::Tool
