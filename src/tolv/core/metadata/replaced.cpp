#include <tolv/core/metadata/detail/replaced.h>

namespace Tolv::MetaData::Detail {

namespace {

thread_local constinit Replaced* outermost = nullptr;

} // namespace

Replaced::Replaced() noexcept {
    if (outermost == nullptr)
        outermost = this;
}

Replaced::~Replaced() {
    if (outermost == this)
        outermost = nullptr; // before what it kept goes, whose destructors may assign records
}

Replaced* Replaced::current() noexcept { return outermost; }

} // namespace Tolv::MetaData::Detail
