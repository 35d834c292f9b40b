#include "support/counters.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <dlfcn.h>
#include <malloc.h>

namespace {

thread_local Tolv::Testing::Counted::Totals totals;
/// How many allocations succeed before one fails; later ones succeed again. Negative: none fails.
thread_local std::ptrdiff_t untilFailure = -1;

bool allowed() noexcept { return untilFailure < 0 || untilFailure-- != 0; }

void* allocate(std::size_t size) noexcept {
    ++totals.allocations;
    totals.allocated += size;
    totals.largest = std::max(totals.largest, size);
    void* const block = allowed() ? std::malloc(size != 0 ? size : 1) : nullptr;
    if (block != nullptr) {
        ++totals.blocks;
        totals.bytes += static_cast<std::ptrdiff_t>(malloc_usable_size(block));
        totals.peak = std::max(totals.peak, totals.bytes);
    }
    return block;
}

void* allocateOrThrow(std::size_t size) {
    if (void* const block = allocate(size))
        return block;
    throw std::bad_alloc();
}

void release(void* block) noexcept {
    if (block != nullptr) {
        --totals.blocks;
        totals.bytes -= static_cast<std::ptrdiff_t>(malloc_usable_size(block));
    }
    std::free(block);
}

} // namespace

// The standard forms for over-aligned types are not replaced: nothing here uses them.
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

/// Wraps the function of the C++ runtime that every `throw` in every library calls. It has another
/// name here, because compilers and headers declare that function differently.
[[noreturn]] __attribute__((visibility("default"))) void
countThrow(void* exception, void* type, void (*destroy)(void*)) __asm__("__cxa_throw");

[[noreturn]] void countThrow(void* exception, void* type, void (*destroy)(void*)) {
    using Throw = void (*)(void*, void*, void (*)(void*));
    static auto const next = reinterpret_cast<Throw>(dlsym(RTLD_NEXT, "__cxa_throw"));
    ++totals.exceptions;
    next(exception, type, destroy);
    std::abort();
}

namespace Tolv::Testing {

Counted::Counted() noexcept {
    totals.largest = 0;
    totals.peak = totals.bytes;
    start_ = totals;
}

std::size_t Counted::exceptions() const noexcept { return totals.exceptions - start_.exceptions; }

std::size_t Counted::allocations() const noexcept {
    return totals.allocations - start_.allocations;
}

std::size_t Counted::allocatedBytes() const noexcept { return totals.allocated - start_.allocated; }

std::ptrdiff_t Counted::blocks() const noexcept { return totals.blocks - start_.blocks; }

std::size_t Counted::largestAllocation() const noexcept { return totals.largest; }

std::ptrdiff_t Counted::bytes() const noexcept { return totals.bytes - start_.bytes; }

std::ptrdiff_t Counted::peakBytes() const noexcept { return totals.peak - start_.bytes; }

FailingAllocation::FailingAllocation(std::size_t number) noexcept {
    untilFailure = static_cast<std::ptrdiff_t>(number);
}

FailingAllocation::~FailingAllocation() { untilFailure = -1; }

bool FailingAllocation::happened() noexcept { return untilFailure < 0; }

} // namespace Tolv::Testing
