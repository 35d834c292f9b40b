#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "output_file.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

/// The target of a symbolic link, or the path itself.
std::string resolved(std::string const& file) {
    std::error_code error;
    auto const target = std::filesystem::is_symlink(file, error)
                            ? std::filesystem::weakly_canonical(file, error).string()
                            : file;
    return error || target.empty() ? file : target;
}

} // namespace

OutputFile::OutputFile(Place place, std::string const& shown)
    : shown_(word(shown)), place_(std::move(place)), output_(place_.descriptor, shown_) {
    if (place_.descriptor < 0)
        throw OutputLost(shown_, errno);
}

OutputFile::Place OutputFile::placeOf(std::string const& file) {
    auto path = resolved(file);
    struct stat before {};
    auto const exists = ::lstat(path.c_str(), &before) == 0;
    if (path.empty() || (exists && !S_ISREG(before.st_mode)))
        return {AT_FDCWD, path, {}, ::open(path.c_str(), O_WRONLY | O_CLOEXEC)};
    auto place = placeIn(AT_FDCWD, std::move(path));
    if (exists && place.descriptor >= 0)
        ::fchmod(place.descriptor, before.st_mode & 07777U);
    return place;
}

OutputFile::Place OutputFile::placeIn(int folder, std::string name) {
    auto const parent = name.substr(0, name.rfind('/') + 1); // empty if there is no slash
    for (int number = 0;; ++number) {
        auto temporary =
            parent + ".tolvmsg-" + std::to_string(::getpid()) + '-' + std::to_string(number);
        auto const descriptor =
            ::openat(folder, temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor >= 0 || errno != EEXIST)
            return {folder, std::move(name), std::move(temporary), descriptor};
    }
}

OutputFile::OutputFile(std::string const& file) : OutputFile(placeOf(file), file) {}

OutputFile::OutputFile(int folder, std::string name, std::string const& shown)
    : OutputFile(placeIn(folder, std::move(name)), shown) {}

OutputFile::~OutputFile() {
    if (place_.descriptor < 0)
        return;
    ::close(place_.descriptor);
    if (!place_.temporary.empty())
        ::unlinkat(place_.folder, place_.temporary.c_str(), 0);
}

void OutputFile::close() {
    output_.flush();
    auto const& [folder, name, temporary, descriptor] = place_;
    auto failed = ::close(descriptor) != 0; // some file systems report errors only here
    place_.descriptor = -1;
    if (!temporary.empty() && !failed)
        failed = ::renameat(folder, temporary.c_str(), folder, name.c_str()) != 0;
    if (!failed)
        return;
    OutputLost const lost(shown_, errno);
    if (!temporary.empty())
        ::unlinkat(folder, temporary.c_str(), 0);
    throw lost;
}

} // namespace Tolv::Tool
