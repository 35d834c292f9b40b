#include <cerrno>
#include <system_error>

#include <poll.h>
#include <unistd.h>

#include "output.h"

namespace Tolv::Tool {

OutputLost::OutputLost(std::string const& name, int error)
    : std::runtime_error("cannot write to " + name + ": " + std::generic_category().message(error)),
      readerGone_(error == EPIPE) {}

void Output::flush() {
    std::string_view rest = buffer_;
    if (beforeFlush_ && !rest.empty())
        beforeFlush_();
    while (!rest.empty()) {
        auto const written = ::write(descriptor_, rest.data(), rest.size());
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) { // another process made the terminal non-blocking
            pollfd ready{descriptor_, POLLOUT, 0};
            ::poll(&ready, 1, -1);
        } else if (errno != EINTR) {
            throw OutputLost(name_, errno);
        }
    }
    buffer_.clear();
}

} // namespace Tolv::Tool
