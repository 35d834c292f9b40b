// Base64 of a block of samples, beside a copy of the same block. The rates are bytes of the block
// per second in both directions. Blocks of 8 MB do not fit into the second-level cache, so the rate
// of the copy is the bound; small blocks show the cost of the code itself.

#include <tolv/core/base64.h>
#include <tolv/core/bit_vectors.h>
#include <tolv/core/detail/base64_kernels.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

namespace {

using Tolv::Base64::Detail::Kernel;
using Bytes = std::vector<unsigned char>;

constexpr std::int64_t largeBlock = 8'000'000;
constexpr std::int64_t smallBlock = 3'000;

Bytes blockFor(benchmark::State const& state) {
    Bytes block(static_cast<std::size_t>(state.range(0)));
    unsigned int seed = 1;
    for (auto& byte : block) {
        seed = seed * 1664525u + 1013904223u;
        byte = static_cast<unsigned char>(seed >> 24);
    }
    return block;
}

void setRate(benchmark::State& state) {
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void copy(benchmark::State& state) {
    Bytes const from = blockFor(state);
    Bytes to(from.size());
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), from.size());
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    setRate(state);
}
BENCHMARK(copy)->Arg(largeBlock)->Arg(smallBlock);

void encodeKernel(benchmark::State& state, Kernel const* kernel) {
    Bytes const block = blockFor(state);
    std::string text(Tolv::Base64::encodedSize(block.size()), ' ');
    for (auto _ : state) {
        Tolv::Base64::Detail::encodeWith(*kernel, block.data(), block.size(), text.data());
        benchmark::DoNotOptimize(text.data());
        benchmark::ClobberMemory();
    }
    setRate(state);
}

void decodeKernel(benchmark::State& state, Kernel const* kernel) {
    Bytes const block = blockFor(state);
    std::string text;
    Tolv::Base64::encode(block.data(), block.size(), text);
    Bytes to(block.size());
    for (auto _ : state) {
        Tolv::Base64::Detail::decodeWith(*kernel, text, to.data(), to.size());
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    setRate(state);
}

// As a message does: a new string for every block.
void encodeNewString(benchmark::State& state) {
    Bytes const block = blockFor(state);
    for (auto _ : state) {
        std::string text;
        Tolv::Base64::encode(block.data(), block.size(), text);
        benchmark::DoNotOptimize(text.data());
    }
    setRate(state);
}
BENCHMARK(encodeNewString)->Arg(largeBlock);

// The same for a copy.
void copyNewString(benchmark::State& state) {
    std::string const from(static_cast<std::size_t>(state.range(0)) / 3 * 4, 'A');
    for (auto _ : state) {
        std::string text(from);
        benchmark::DoNotOptimize(text.data());
    }
    setRate(state);
}
BENCHMARK(copyNewString)->Arg(largeBlock);

// The rates of the following are elements per second.
template <typename Vector>
void encodeBits(benchmark::State& state) {
    Vector const elements(static_cast<std::size_t>(state.range(0)), true);
    std::string text;
    for (auto _ : state) {
        Tolv::encodeBits(elements, text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Vector>
void decodeBits(benchmark::State& state) {
    Vector elements(static_cast<std::size_t>(state.range(0)), true);
    std::string text;
    Tolv::encodeBits(elements, text);
    auto const count = elements.size();
    for (auto _ : state) {
        Tolv::decodeBits(text, count, elements);
        benchmark::DoNotOptimize(&elements);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(encodeBits<std::vector<bool>>)->Arg(largeBlock);
BENCHMARK(decodeBits<std::vector<bool>>)->Arg(largeBlock);
BENCHMARK(encodeBits<std::vector<std::complex<bool>>>)->Arg(largeBlock);
BENCHMARK(decodeBits<std::vector<std::complex<bool>>>)->Arg(largeBlock);

// The available kernels depend on the build and the processor.
bool const kernelsRegistered = [] {
    for (Kernel const* kernel : Tolv::Base64::Detail::kernels()) {
        if (!kernel->isSupported())
            continue;
        std::string const name = kernel->name;
        benchmark::RegisterBenchmark(("encode/" + name).c_str(), encodeKernel, kernel)
            ->Arg(largeBlock)
            ->Arg(smallBlock);
        benchmark::RegisterBenchmark(("decode/" + name).c_str(), decodeKernel, kernel)
            ->Arg(largeBlock)
            ->Arg(smallBlock);
    }
    return true;
}();

} // namespace
