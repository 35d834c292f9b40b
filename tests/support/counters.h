#pragma once

#include <cstddef>

namespace Tolv::Testing {

/// Counts the allocations and exceptions of this thread since the object was created, in all
/// libraries of the process.
class Counted {
public:
    struct Totals {
        std::size_t exceptions = 0;  ///< thrown
        std::size_t allocations = 0; ///< by `operator new`
        std::ptrdiff_t blocks = 0;   ///< allocated and not freed
        std::size_t allocated = 0;   ///< bytes in all these allocations
        std::size_t largest = 0;     ///< bytes of the largest allocation
        std::ptrdiff_t bytes = 0;    ///< of the blocks, as the heap rounds them
        std::ptrdiff_t peak = 0;     ///< the maximum of `bytes`
    };

    Counted() noexcept;

    [[nodiscard]] std::size_t exceptions() const noexcept;
    [[nodiscard]] std::size_t allocations() const noexcept;
    /// Bytes in all these allocations, including those freed since.
    [[nodiscard]] std::size_t allocatedBytes() const noexcept;
    /// Blocks in addition to those at the start; zero if nothing leaks.
    [[nodiscard]] std::ptrdiff_t blocks() const noexcept;
    /// Bytes of the thread's largest allocation since the newest `Counted` was created.
    [[nodiscard]] std::size_t largestAllocation() const noexcept;

    /// Bytes in these additional blocks.
    [[nodiscard]] std::ptrdiff_t bytes() const noexcept;
    /// The maximum of `bytes` since the newest `Counted` was created.
    [[nodiscard]] std::ptrdiff_t peakBytes() const noexcept;

private:
    Totals start_;
};

/// During its lifetime one allocation of this thread fails: the one with this number, counted from
/// 0.
class FailingAllocation {
public:
    explicit FailingAllocation(std::size_t number) noexcept;
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    ~FailingAllocation();

    /// Whether that allocation was reached.
    [[nodiscard]] static bool happened() noexcept;
};

} // namespace Tolv::Testing
