#pragma once

#include <cstddef>

namespace Tolv::Testing {

/// What this thread did to memory and with exceptions since the object was made, in all libraries
/// of the process.
class Counted {
public:
    struct Totals {
        std::size_t exceptions = 0;  ///< thrown
        std::size_t allocations = 0; ///< by `operator new`
        std::ptrdiff_t blocks = 0;   ///< allocated and not freed
        std::size_t allocated = 0;   ///< bytes in all these allocations
        std::size_t largest = 0;     ///< bytes of the largest allocation
        std::ptrdiff_t bytes = 0;    ///< of the blocks, as the heap rounds them
        std::ptrdiff_t peak = 0;     ///< the most of them at any time
    };

    Counted() noexcept;

    [[nodiscard]] std::size_t exceptions() const noexcept;
    [[nodiscard]] std::size_t allocations() const noexcept;
    /// Bytes in all these allocations, freed since or not.
    [[nodiscard]] std::size_t allocatedBytes() const noexcept;
    /// Blocks that are more than there were at the start; zero when nothing leaks.
    [[nodiscard]] std::ptrdiff_t blocks() const noexcept;
    /// Bytes of the largest allocation of the thread since the newest `Counted` was made.
    [[nodiscard]] std::size_t largestAllocation() const noexcept;

    /// Bytes in blocks that are more than there were at the start.
    [[nodiscard]] std::ptrdiff_t bytes() const noexcept;
    /// The most of them at any time since the newest `Counted` was made.
    [[nodiscard]] std::ptrdiff_t peakBytes() const noexcept;

private:
    Totals start_;
};

/// As long as it lives, one allocation of this thread fails: that with this number, from 0.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t number) noexcept;
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    ~FailingAllocation();

    /// Whether there were so many allocations.
    [[nodiscard]] static bool happened() noexcept;
};

} // namespace Tolv::Testing
