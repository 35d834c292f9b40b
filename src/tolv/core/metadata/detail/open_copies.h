#pragma once

#include <cstddef>

#include <tolv/core/metadata/mirrored_object.h>

namespace Tolv::MetaData::Detail {

/// The records of one thread that the compiler's copy constructors are filling, the innermost last.
/// The copy of a field finds its record by the distance that the source has from its own; whether
/// there is a record, or the field is copied on its own, only this list can tell.
///
/// A record leaves when its last field is copied. One that never gets it (a base class copied from
/// an object of a derived class) leaves when it is destroyed.
///
/// Trivially destructible, because records may be copied while a thread or the process ends.
class OpenCopies {
public:
    /// @throws std::bad_alloc
    void push(MirroredObject& record) {
        if (size_ == capacity_) [[unlikely]]
            grow();
        records()[size_++] = &record;
    }

    /// The innermost record is complete.
    void pop() noexcept {
        if (--size_ == 0 && many_ != nullptr) [[unlikely]]
            shrink();
    }

    /// Makes `record` the innermost, if it is in the list.
    [[nodiscard]] bool reach(MirroredObject const& record) noexcept {
        auto* const* const all = records();
        for (auto at = size_; at != 0; --at) {
            if (all[at - 1] == &record) {
                size_ = at;
                return true;
            }
        }
        return false;
    }

    void remove(MirroredObject const& record) noexcept;

private:
    static constexpr std::size_t few = 8;

    [[nodiscard]] MirroredObject** records() noexcept { return many_ != nullptr ? many_ : few_; }
    void grow();
    void shrink() noexcept;

    MirroredObject* few_[few]{};
    MirroredObject** many_ = nullptr; ///< in place of `few_`
    std::size_t size_ = 0;
    std::size_t capacity_ = few;
};

/// That of this thread.
OpenCopies& openCopies() noexcept;

} // namespace Tolv::MetaData::Detail
