// One road in a process of its own, for figures of a whole process: peak memory, instructions,
// profiles.
//
//   tolv_road                  lists the roads
//   tolv_road ROAD COUNT       runs it that often; prints the cost as JSON
//   tolv_road --check          runs each short road; fails if one throws
#include <chrono>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

#include <malloc.h>

#include "roads.h"
#include "support/counters.h"

namespace {

using namespace Tolv::Bench;

/// A figure of /proc/self/status, in KiB.
long status(std::string const& key) {
    std::ifstream file("/proc/self/status");
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(key + ":"))
            return std::stol(line.substr(key.size() + 1));
    return 0;
}

int go(Road const& road, long count) {
    auto const prepared = road.prepare();
    // The memory of the inputs must not hide that of the road.
    malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5" << std::flush; // resets the peak
    auto const before = status("VmRSS");
    auto const start = std::chrono::steady_clock::now();
    for (long i = 0; i < count; ++i)
        prepared.step();
    std::chrono::duration<double, std::nano> const time = std::chrono::steady_clock::now() - start;
    std::cout << R"({"ns": )" << time.count() / static_cast<double>(count) << R"(, "peak_kib": )"
              << status("VmHWM") - before << "}\n";
    return EXIT_SUCCESS;
}

int check() {
    int failures = 0;
    for (auto const& road : roads()) {
        if (road.name.starts_with("scale/") || road.name.starts_with("P ") ||
            road.name.starts_with("batch"))
            continue; // takes long
        auto const prepared = road.prepare();
        Tolv::Testing::Counted const counted;
        prepared.step();
        if (counted.exceptions() == 0)
            continue;
        std::cerr << road.name << ": " << counted.exceptions() << " exceptions\n";
        ++failures;
    }
    return failures == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv) try {
    std::string const name = argc > 1 ? argv[1] : "";
    if (name == "--check")
        return check();
    for (auto const& road : roads()) {
        if (argc == 1)
            std::cout << road.name << '\n';
        else if (argc == 3 && road.name == name)
            return go(road, std::stol(argv[2]));
    }
    return argc == 1 ? EXIT_SUCCESS : 2;
} catch (std::exception const& error) {
    std::cerr << "tolv_road: " << error.what() << '\n';
    return EXIT_FAILURE;
}
