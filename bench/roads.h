#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <vector>

/// @file
/// The list of what is measured. Files named *_roads.cpp enter roads, the programs run them:
/// `tolv_bench` takes times, `tolv_road` runs one road for tools that look at a whole process.
namespace Tolv::Bench {

/// Has the compiler compute `value`, and believe that all memory has changed.
template <class T>
void keep(T const& value) {
    asm volatile("" : : "r"(&value) : "memory");
}

/// Bytes that malloc has given out to this process.
std::size_t bytesInUse();

/// A road that is ready to go: its inputs exist.
struct Prepared {
    std::function<void()> step;        ///< goes the road once
    std::function<std::size_t()> held; ///< goes it once: bytes that the result holds; or empty
};

/// A road to a result: what `make` returns is dropped again within the step.
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

/// A road into something that is used again.
template <class Go>
Prepared writingWith(Go go) {
    return {std::move(go), {}};
}

struct Road {
    std::string name; ///< "road/library"
    std::function<Prepared()> prepare;
    std::size_t elements = 1;   ///< that one step handles
    std::vector<int> threads{}; ///< numbers of threads to try; empty: only one
};

/// All roads, in the order of their entry.
std::vector<Road>& roads();

/// Enters roads while the program starts: one static object a file.
struct Entered {
    Entered(std::initializer_list<Road> list) { roads().insert(roads().end(), list); }
};

} // namespace Tolv::Bench
