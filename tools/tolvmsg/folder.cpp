#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "folder.h"
#include "ids.h"
#include "output_file.h"
#include "text.h"

namespace Tolv::Tool {

Folder::Folder(std::string path) : path_(std::move(path)), descriptor_(-1) {
    std::error_code error;
    std::filesystem::create_directories(path_, error);
    if (error)
        throw OutputLost(word(path_), error.value());
    descriptor_ = ::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor_ < 0)
        throw OutputLost(word(path_), errno);
}

Folder::~Folder() { ::close(descriptor_); }

void Folder::write(std::string const& name, std::string_view text) const {
    OutputFile file(descriptor_, name, path_ + '/' + name);
    file.output().write(text);
    file.close();
}

std::string fileStem(MessageClass const& known) {
    if (known.alias.empty())
        return dotted(known.id);
    auto stem = known.alias;
    for (auto at = stem.find("::"); at != std::string::npos; at = stem.find("::"))
        stem.replace(at, 2, ".");
    return stem;
}

} // namespace Tolv::Tool
