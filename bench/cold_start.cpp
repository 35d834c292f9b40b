// The cost of loading both libraries, including all registrations. Prints nanoseconds of processor
// time; a process can measure it only once.
//   tolv_cold_start CORE_LIBRARY MESSAGES_LIBRARY
#include <cstdlib>
#include <ctime>
#include <iostream>

#include <dlfcn.h>

namespace {

long long processorTime() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    auto const start = processorTime();
    for (int i = 1; i < argc; ++i) {
        if (dlopen(argv[i], RTLD_NOW | RTLD_GLOBAL) == nullptr) {
            std::cerr << dlerror() << '\n'; // NOLINT(concurrency-mt-unsafe): one thread
            return EXIT_FAILURE;
        }
    }
    std::cout << processorTime() - start << '\n';
}
