#include <algorithm>
#include <cstddef>
#include <fstream>
#include <ios>
#include <iterator>
#include <string>

#include <dlfcn.h>
#include <malloc.h>

#include <gtest/gtest.h>

namespace {

constexpr auto file = TOLV_MESSAGES_FILE;

/// What a process holds: whatever a load leaves behind shows in one of the two.
struct Holdings {
    std::size_t bytes = mallinfo2().uordblks; ///< of the heap
    std::streamoff mappings = [] {
        std::ifstream maps("/proc/self/maps");
        return std::count(std::istreambuf_iterator<char>(maps), {}, '\n');
    }();
};

void loadAndUnload() {
    auto* const library = dlopen(file, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    ASSERT_EQ(dlclose(library), 0) << dlerror();
    for (auto const* const name : {file, TOLV_CORE_FILE})
        ASSERT_EQ(dlopen(name, RTLD_NOW | RTLD_NOLOAD), nullptr) << name << " is still mapped";
}

// This program is linked with neither library, so libTolvCore is loaded and unloaded too.
TEST(Reload, AThousandTimesWithoutGrowth) {
    for (int i = 0; i < 200; ++i) // the loader and the allocator grow at first
        ASSERT_NO_FATAL_FAILURE(loadAndUnload());
    Holdings const before;
    for (int i = 0; i < 1000; ++i)
        ASSERT_NO_FATAL_FAILURE(loadAndUnload());
    Holdings const after;
    // Less than a byte per load: nothing accumulates.
    EXPECT_LE(after.bytes, before.bytes + 999) << before.bytes;
    EXPECT_EQ(after.mappings, before.mappings);
}

} // namespace
