#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>

namespace Tolv::Tool {

/// Reads lines from a file descriptor. Memory depends only on the longest line. A line ends with
/// LF, CR LF, or the end of the input.
class LineReader {
public:
    struct Line {
        std::string_view text; ///< without the line end; valid until the next call
        bool tooLong = false;  ///< longer than the maximum: the text is dropped
    };

    /// @param mostBytes the maximum length of a line; the excess is skipped without being stored
    /// @param beforeWait called before reading blocks to wait for input
    LineReader(int descriptor, std::size_t mostBytes, std::function<void()> beforeWait);

    /// From now on waits for more input at the end of a regular file, restarts at the beginning if
    /// the file has become shorter, and returns only complete lines.
    void follow() noexcept { follows_ = !mayWait_; }

    /// Reads the next line. @return false at the end of the input @throws std::system_error if
    /// reading fails
    bool next(Line& line);

private:
    void fill();
    void waitForMore();
    Line take(std::size_t end);

    int descriptor_;
    bool mayWait_; ///< not a regular file
    std::size_t mostBytes_;
    std::function<void()> beforeWait_;

    // The unread bytes are [begin_, end_) of the buffer; none before scanned_ is an LF.
    std::unique_ptr<char[]> buffer_;
    std::size_t capacity_;
    std::size_t begin_ = 0;
    std::size_t scanned_ = 0;
    std::size_t end_ = 0;
    bool skipping_ = false; ///< within a line that is too long
    bool follows_ = false;
    bool atEnd_ = false;
};

} // namespace Tolv::Tool
