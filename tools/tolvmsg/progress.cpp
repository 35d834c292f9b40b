#include <algorithm>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

#include "progress.h"

namespace Tolv::Tool {

namespace {

std::uint64_t sizeOf(int descriptor) {
    struct stat status {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)
               ? static_cast<std::uint64_t>(status.st_size)
               : 0;
}

} // namespace

Progress::Progress(std::uint64_t total, Output& out) : out_(out) {
    if (total > muchWork && ::isatty(STDERR_FILENO) == 1) {
        total_ = total;
        if (::isatty(STDOUT_FILENO) == 1) // both would share a line
            out_.setBeforeFlush([this] { erase(); });
    }
}

Progress::Progress(Input const& input, Output& out) : Progress(sizeOf(input.descriptor()), out) {
    descriptor_ = input.descriptor();
}

Progress::~Progress() {
    erase();
    out_.setBeforeFlush({});
}

bool Progress::isTime() {
    auto const now = std::chrono::steady_clock::now();
    if (now < next_)
        return false;
    next_ = now + std::chrono::milliseconds(100);
    return true;
}

std::uint64_t Progress::position() const {
    return static_cast<std::uint64_t>(std::max<off_t>(0, ::lseek(descriptor_, 0, SEEK_CUR)));
}

void Progress::show(std::uint64_t done) {
    constexpr std::size_t width = 40;
    auto const part = std::min(done, total_);
    auto const filled = static_cast<std::size_t>(part * width / total_);
    auto const text = "\r[" + std::string(filled, '=') + std::string(width - filled, ' ') + "] " +
                      std::to_string(part * 100 / total_) + " %";
    std::fputs(text.c_str(), stderr);
    shown_ = true;
}

void Progress::erase() {
    if (shown_)
        std::fputs("\r\x1b[K", stderr);
    shown_ = false;
}

} // namespace Tolv::Tool
