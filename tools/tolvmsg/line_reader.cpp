#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include "line_reader.h"

namespace Tolv::Tool {

namespace {

constexpr std::size_t firstCapacity = std::size_t{1} << 17U;

bool isRegularFile(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace

LineReader::LineReader(int descriptor, std::size_t mostBytes, std::function<void()> beforeWait)
    : descriptor_(descriptor), mayWait_(!isRegularFile(descriptor)), mostBytes_(mostBytes),
      beforeWait_(std::move(beforeWait)),
      buffer_(std::make_unique_for_overwrite<char[]>(firstCapacity)), capacity_(firstCapacity) {}

bool LineReader::next(Line& line) {
    for (;;) {
        if (auto const* const lf = std::memchr(buffer_.get() + scanned_, '\n', end_ - scanned_)) {
            auto const at = static_cast<std::size_t>(static_cast<char const*>(lf) - buffer_.get());
            line = take(at);
            begin_ = scanned_ = at + 1;
            return true;
        }
        scanned_ = end_;
        if (skipping_ || end_ - begin_ > mostBytes_ + 1) { // one extra byte for the CR of CR LF
            skipping_ = true;
            begin_ = scanned_ = end_ = 0;
        }
        if (atEnd_) {
            auto const any = skipping_ || begin_ < end_;
            if (any)
                line = take(end_);
            begin_ = scanned_ = end_;
            return any;
        }
        fill();
    }
}

LineReader::Line LineReader::take(std::size_t end) {
    std::string_view text(buffer_.get() + begin_, end - begin_);
    if (text.ends_with('\r'))
        text.remove_suffix(1);
    if (std::exchange(skipping_, false) || text.size() > mostBytes_)
        return {{}, true};
    return {text, false};
}

void LineReader::fill() {
    if (end_ == capacity_) {
        auto const kept = end_ - begin_;
        if (kept > capacity_ / 2) {
            auto grown = std::make_unique_for_overwrite<char[]>(capacity_ * 2);
            std::copy_n(buffer_.get() + begin_, kept, grown.get());
            buffer_ = std::move(grown);
            capacity_ *= 2;
        } else {
            std::memmove(buffer_.get(), buffer_.get() + begin_, kept);
        }
        begin_ = 0;
        scanned_ = end_ = kept;
    }
    if (mayWait_) {
        pollfd ready{descriptor_, POLLIN, 0};
        if (::poll(&ready, 1, 0) == 0)
            beforeWait_();
    }
    for (;;) {
        auto const count = ::read(descriptor_, buffer_.get() + end_, capacity_ - end_);
        if (count >= 0) {
            end_ += static_cast<std::size_t>(count);
            if (count == 0 && follows_)
                waitForMore();
            else
                atEnd_ = count == 0;
            return;
        }
        if (errno == EAGAIN) {
            pollfd ready{descriptor_, POLLIN, 0};
            ::poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category());
        }
    }
}

void LineReader::waitForMore() {
    beforeWait_();
    ::poll(nullptr, 0, 100);
    struct stat status {};
    if (::fstat(descriptor_, &status) == 0 && status.st_size < ::lseek(descriptor_, 0, SEEK_CUR)) {
        ::lseek(descriptor_, 0, SEEK_SET); // the file was truncated
        begin_ = scanned_ = end_ = 0;
        skipping_ = false;
    }
}

} // namespace Tolv::Tool
