#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "output_file.h"
#include "text.h"

namespace Tolv::Tool {

OutputFile::OutputFile(std::string const& file)
    : name_(word(file)),
      descriptor_(::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)),
      output_(descriptor_, name_) {
    if (descriptor_ < 0)
        throw OutputLost(name_, errno);
}

OutputFile::~OutputFile() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

void OutputFile::close() {
    output_.flush();
    if (::close(std::exchange(descriptor_, -1)) != 0) // some file systems tell only now
        throw OutputLost(name_, errno);
}

} // namespace Tolv::Tool
