#pragma once

#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include <tolv/core/metadata/mirrored_object.h>

namespace Tolv::MetaData::Detail {

/// While one exists, this thread keeps what the fields of records replace by assignment. The record
/// that is being copied may lie in it: `node = node().children()[0]` replaces the list before it
/// copies the fields that follow the list.
class TOLV_CORE_API Replaced {
public:
    Replaced() noexcept; ///< has no effect inside the lifetime of another
    Replaced(Replaced const&) = delete;
    Replaced& operator=(Replaced const&) = delete;
    ~Replaced();

    /// Takes over `old` if one exists; otherwise leaves it to the caller.
    template <class Content>
    static void keep(Content&& old) {
        static_assert(std::is_rvalue_reference_v<Content&&>, "old content is moved, not copied");
        if (auto* const open = current())
            open->kept_.push_back(std::make_shared<Content>(std::move(old)));
    }
    /// The same without a block of memory.
    template <class T>
    static void keep(std::shared_ptr<T>&& old) {
        if (auto* const open = current())
            open->kept_.push_back(std::move(old));
    }

private:
    static Replaced* current() noexcept;

    std::vector<std::shared_ptr<void>> kept_;
};

/// Assigns `source` to `target`, which may own it. `source` lives until all of it is copied.
template <class Record>
void replaceRecord(Record& target, Record const& source) {
    if constexpr (std::derived_from<Record, MirroredObject>) {
        Replaced const kept;
        target = source;
    } else { // may release anything while it copies itself
        Record old(source);
        std::swap(target, old);
        Replaced::keep(std::move(old));
    }
}

} // namespace Tolv::MetaData::Detail
