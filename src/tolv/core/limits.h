#pragma once

#include <cstddef>

namespace Tolv {

/// Bounds on what is accepted from a peer. A text or tree beyond a bound is refused with
/// `Exception::InvalidParameter`.
struct Limits {
    /// Levels of arrays and objects in one another. Stops a text such as a million "[" from
    /// exhausting the stack of whoever walks the tree.
    std::size_t depth = 256;
};

} // namespace Tolv
