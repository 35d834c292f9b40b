#include <cerrno>
#include <stdexcept>
#include <system_error>

#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include "gnuplot.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

/// An anonymous file for a stream of a child process. It accepts any amount of data, so that
/// neither process blocks.
class MemoryFile {
public:
    MemoryFile() : descriptor_(::memfd_create("gnuplot", MFD_CLOEXEC)) {
        if (descriptor_ < 0)
            throw std::system_error(errno, std::generic_category(), "no memory for gnuplot");
    }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;
    ~MemoryFile() { ::close(descriptor_); }

    [[nodiscard]] int descriptor() const noexcept { return descriptor_; }

    void write(std::string_view text) const {
        while (!text.empty()) {
            auto const count = ::write(descriptor_, text.data(), text.size());
            if (count < 0)
                throw std::system_error(errno, std::generic_category(), "no memory for gnuplot");
            text.remove_prefix(static_cast<std::size_t>(count));
        }
        ::lseek(descriptor_, 0, SEEK_SET);
    }

    [[nodiscard]] std::string read() const {
        std::string text(static_cast<std::size_t>(::lseek(descriptor_, 0, SEEK_END)), '\0');
        auto const count = ::pread(descriptor_, text.data(), text.size(), 0);
        text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
        return text;
    }

private:
    int descriptor_;
};

/// @return the status from waitpid, or -1 if gnuplot is not installed
int run(MemoryFile const& script, MemoryFile const& printed, MemoryFile const& complaints) {
    posix_spawn_file_actions_t streams;
    ::posix_spawn_file_actions_init(&streams);
    ::posix_spawn_file_actions_adddup2(&streams, script.descriptor(), STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&streams, printed.descriptor(), STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&streams, complaints.descriptor(), STDERR_FILENO);
    std::string name = "gnuplot";
    std::string defaults = "--default-settings";
    char* const arguments[]{name.data(), defaults.data(), nullptr};
    pid_t process = 0;
    auto const error =
        ::posix_spawnp(&process, name.c_str(), &streams, nullptr, arguments, environ);
    ::posix_spawn_file_actions_destroy(&streams);
    if (error == ENOENT)
        return -1;
    if (error != 0)
        throw std::system_error(error, std::generic_category(), "cannot run gnuplot");
    int status = 0;
    while (::waitpid(process, &status, 0) < 0)
        if (errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "cannot wait for gnuplot");
    return status;
}

} // namespace

std::string runGnuplot(std::string const& script) {
    MemoryFile const input;
    MemoryFile const printed;
    MemoryFile const complaints;
    input.write(script);
    auto const status = run(input, printed, complaints);
    if (status == -1 || (WIFEXITED(status) && WEXITSTATUS(status) == 127))
        throw std::runtime_error("plot needs gnuplot, which is not installed (Debian: "
                                 "apt install gnuplot-nox)");
    auto picture = printed.read();
    if (status != 0 || picture.empty()) {
        auto const reason = complaints.read();
        throw std::runtime_error("gnuplot failed" +
                                 (reason.empty() ? "" : ": " + quoted(reason, 400)));
    }
    return picture;
}

std::string gnuplotString(std::string_view text) {
    std::string out = "\"";
    for (char const c : text) {
        auto const isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                             (c >= 'a' && c <= 'z') || c == ' ' || c == '.';
        if (isPlain) {
            out.push_back(c);
            continue;
        }
        auto const code = static_cast<unsigned char>(c);
        out.push_back('\\');
        for (unsigned int shift = 6; shift <= 6; shift -= 3)
            out.push_back(static_cast<char>('0' + (code >> shift & 7U)));
    }
    return out + '"';
}

} // namespace Tolv::Tool
