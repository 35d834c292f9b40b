// Times of all roads. The counters of a run are those of one step of one thread.
#include <benchmark/benchmark.h>

#include <sys/resource.h>

#include "roads.h"
#include "support/counters.h"

namespace {

using namespace Tolv::Bench;

/// How often this thread has given up its processor to wait.
long waits() {
    rusage usage{};
    getrusage(RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

void run(benchmark::State& state, Road const& road) {
    auto const prepared = road.prepare();
    prepared.step(); // creates what exists once per process
    Tolv::Testing::Counted const counted;
    prepared.step();
    auto const allocations = counted.allocations();
    auto const bytes = counted.allocatedBytes();
    auto const exceptions = counted.exceptions();
    auto const held = prepared.held ? prepared.held() : 0;

    auto const waitsBefore = waits();
    for (auto _ : state)
        prepared.step();
    auto const waited = waits() - waitsBefore;

    auto const once = [](auto value) {
        return benchmark::Counter(static_cast<double>(value), benchmark::Counter::kAvgThreads);
    };
    state.counters["elements"] = once(road.elements);
    state.counters["allocations"] = once(allocations);
    state.counters["bytes"] = once(bytes);
    state.counters["exceptions"] = once(exceptions);
    state.counters["held"] = once(held);
    state.counters["waits"] = static_cast<double>(waited); // of all threads and steps
}

} // namespace

int main(int argc, char** argv) {
    for (auto const& road : roads()) {
        auto* const entry = benchmark::RegisterBenchmark(
            road.name.c_str(), [&road](benchmark::State& state) { run(state, road); });
        for (auto const threads : road.threads)
            entry->Threads(threads)->UseRealTime();
    }
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
}
