#include "support/counters.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <dlfcn.h>

namespace {

thread_local Tolv::Testing::Counted::Totals totals;

void* allocate(std::size_t size) noexcept {
    ++totals.allocations;
    totals.bytes += size;
    totals.largest = std::max(totals.largest, size);
    void* const block = std::malloc(size != 0 ? size : 1);
    if (block != nullptr)
        ++totals.blocks;
    return block;
}

void* allocateOrThrow(std::size_t size) {
    if (void* const block = allocate(size))
        return block;
    throw std::bad_alloc();
}

void release(void* block) noexcept {
    if (block != nullptr)
        --totals.blocks;
    std::free(block);
}

} // namespace

// The forms of the standard library for over-aligned types stay: nothing here uses them.
void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept { return allocate(size); }
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { release(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { release(block); }

/// Stands before the function of the C++ runtime that each `throw` of each library calls. The types
/// are those with which g++ declares it by itself.
extern "C" [[noreturn]] __attribute__((visibility("default"))) void
__cxa_throw(void* exception, void* type, void (*destroy)(void*)) {
    using Throw = void (*)(void*, void*, void (*)(void*));
    static auto const next = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
    ++totals.exceptions;
    next(exception, type, destroy);
    std::abort();
}

namespace Tolv::Testing {

Counted::Counted() noexcept {
    totals.largest = 0;
    start_ = totals;
}

std::size_t Counted::exceptions() const noexcept { return totals.exceptions - start_.exceptions; }

std::size_t Counted::allocations() const noexcept {
    return totals.allocations - start_.allocations;
}

std::size_t Counted::bytes() const noexcept { return totals.bytes - start_.bytes; }

std::ptrdiff_t Counted::blocks() const noexcept { return totals.blocks - start_.blocks; }

std::size_t Counted::largestAllocation() const noexcept { return totals.largest; }

} // namespace Tolv::Testing
