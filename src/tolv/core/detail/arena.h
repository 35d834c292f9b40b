#pragma once

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

namespace Tolv::Detail {

/// Memory that is allocated piece by piece and released as a whole. The first pieces lie inside
/// this object.
class Arena {
public:
    /// @param expected the estimated number of bytes; what does not fit inside is allocated in
    /// blocks of this size
    explicit Arena(std::size_t expected) noexcept
        : room_(std::clamp(expected / step * step, 2 * inside, mostRoom)) {}
    Arena(Arena const&) = delete;
    Arena& operator=(Arena const&) = delete;
    ~Arena() {
        while (blocks_ != nullptr)
            ::operator delete(std::exchange(blocks_, blocks_->next));
    }

    /// Memory for any object of `bytes` bytes. @throws std::bad_alloc
    void* take(std::size_t bytes) {
        if (bytes > static_cast<std::size_t>(end_ - at_)) [[unlikely]]
            return takeFromNewBlock(bytes);
        auto* const taken = at_;
        at_ += (bytes + step - 1) / step * step; // `end_` is also a multiple of it
        return taken;
    }

private:
    struct alignas(std::max_align_t) Block {
        Block* next;
    };

    static constexpr std::size_t step = alignof(std::max_align_t);
    static constexpr std::size_t inside = 3072;
    static constexpr std::size_t mostRoom = std::size_t{1} << 16U;

    void* takeFromNewBlock(std::size_t bytes) {
        // A large piece gets its own block, so that at most half of a block is wasted.
        auto const alone = bytes > room_ / 2;
        auto* const block =
            static_cast<Block*>(::operator new(sizeof(Block) + (alone ? bytes : room_)));
        block->next = std::exchange(blocks_, block);
        auto* const start = reinterpret_cast<std::byte*>(block + 1);
        if (alone)
            return start;
        at_ = start;
        end_ = start + room_;
        room_ = room_ < mostRoom ? room_ * 2 : room_;
        return take(bytes);
    }

    alignas(std::max_align_t) std::byte own_[inside];
    std::byte* at_ = own_;
    std::byte* end_ = own_ + inside;
    std::size_t room_; ///< of the next block, a multiple of the alignment
    Block* blocks_ = nullptr;
};

} // namespace Tolv::Detail
