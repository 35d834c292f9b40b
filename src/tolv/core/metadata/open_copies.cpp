#include <algorithm>

#include <tolv/core/metadata/detail/open_copies.h>

namespace Tolv::MetaData::Detail {

namespace {
thread_local constinit OpenCopies copies;
} // namespace

OpenCopies& openCopies() noexcept { return copies; }

void OpenCopies::remove(MirroredObject const& record) noexcept {
    auto** const all = records();
    auto** const end = std::remove(all, all + size_, &record);
    if (end == all + size_)
        return; // copied on another thread, or left already
    size_ = static_cast<std::size_t>(end - all) + 1;
    pop();
}

void OpenCopies::grow() {
    auto** const more = new MirroredObject*[capacity_ * 2];
    std::copy(records(), records() + size_, more);
    delete[] many_;
    many_ = more;
    capacity_ *= 2;
}

void OpenCopies::shrink() noexcept {
    delete[] many_;
    many_ = nullptr;
    capacity_ = few;
}

} // namespace Tolv::MetaData::Detail
