#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// @file
/// The list of what is measured. Files named *_roads.cpp add roads, and two programs run them:
/// `tolv_bench` measures times, `tolv_road` runs one road for tools that measure a whole process.
namespace Tolv::Bench {

/// Makes the compiler compute `value` and assume that all memory has changed.
template <class T>
void keep(T const& value) {
    asm volatile("" : : "r"(&value) : "memory");
}

/// Bytes that malloc has allocated to this process.
std::size_t bytesInUse();

/// A road whose inputs are ready.
struct Prepared {
    /// Runs the road once.
    std::function<void()> step;
    /// Runs it once and returns the bytes that the result holds; may be empty.
    std::function<std::size_t()> held;
};

/// A road to a result: the step destroys what `make` returns.
template <class Make>
Prepared readingWith(Make make) {
    return {[make] { keep(make()); },
            [make] {
                auto const before = bytesInUse();
                auto const result = make();
                keep(result);
                return bytesInUse() - before;
            }};
}

/// A road into an object that is reused.
template <class Go>
Prepared writingWith(Go go) {
    return {std::move(go), {}};
}

struct Road {
    std::string name; ///< "road/library"
    std::function<Prepared()> prepare;
    std::size_t elements = 1;   ///< handled in one step
    std::vector<int> threads{}; ///< numbers of threads to try; empty: only one
};

/// All roads, in the order in which they were added.
std::vector<Road>& roads();

/// Adds roads at program start: one static object per file.
struct Entered {
    Entered(std::initializer_list<Road> list) { roads().insert(roads().end(), list); }
};

} // namespace Tolv::Bench
