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
        std::size_t bytes = 0;       ///< in all these allocations
        std::size_t largest = 0;     ///< bytes of the largest allocation
    };

    Counted() noexcept;

    [[nodiscard]] std::size_t exceptions() const noexcept;
    [[nodiscard]] std::size_t allocations() const noexcept;
    /// Bytes in all these allocations, freed since or not.
    [[nodiscard]] std::size_t bytes() const noexcept;
    /// Blocks that are more than there were at the start; zero when nothing leaks.
    [[nodiscard]] std::ptrdiff_t blocks() const noexcept;
    /// Bytes of the largest allocation of the thread since the newest `Counted` was made.
    [[nodiscard]] std::size_t largestAllocation() const noexcept;

private:
    Totals start_;
};

} // namespace Tolv::Testing
