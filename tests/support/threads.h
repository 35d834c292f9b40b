#pragma once

#include <cstddef>
#include <latch>
#include <thread>
#include <vector>

namespace Tolv::Testing {

/// Runs `work(number)` on that many threads, which start together, and waits for all of them.
template <class Work>
void inThreads(unsigned int threads, Work const& work) {
    std::latch start(static_cast<std::ptrdiff_t>(threads));
    std::vector<std::jthread> running;
    for (unsigned int i = 0; i < threads; ++i)
        running.emplace_back([&, i] {
            start.arrive_and_wait();
            work(i);
        });
}

} // namespace Tolv::Testing
