#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include "input.h"
#include "text.h"

namespace Tolv::Tool {

Input::Input(std::string const& file, char const* awaited)
    : descriptor_(file == "-" ? STDIN_FILENO : ::open(file.c_str(), O_RDONLY | O_CLOEXEC)) {
    if (descriptor_ < 0)
        throw std::system_error(errno, std::generic_category());
    if (descriptor_ == STDIN_FILENO && ::isatty(descriptor_) == 1)
        std::fprintf(stderr, "tolvmsg: waiting for %s; press Ctrl-D to end\n", awaited);
}

Input::~Input() {
    if (descriptor_ != STDIN_FILENO)
        ::close(descriptor_);
}

std::string Input::read(std::size_t mostBytes) const {
    std::string text;
    std::array<char, 1U << 16U> buffer;
    while (text.size() < mostBytes) {
        auto const wanted = std::min(buffer.size(), mostBytes - text.size());
        auto const count = ::read(descriptor_, buffer.data(), wanted);
        if (count == 0)
            break;
        if (count > 0) {
            text.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) { // another process made the input non-blocking
            pollfd ready{descriptor_, POLLIN, 0};
            ::poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category());
        }
    }
    return text;
}

std::string Input::name(std::string const& file) {
    return file == "-" ? "the standard input" : word(file);
}

} // namespace Tolv::Tool
