// Attributes from text to a typed message, through the factory, and back to text. Beside them, in
// the same program, what cannot be avoided: a copy of the samples and their bare base64.
//
// Rates are bytes of samples per second (bits of a trace of truth values count an eighth). Items
// are messages.

#include <benchmark/benchmark.h>

#include <complex>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <tolv/core/base64.h>
#include <tolv/core/metadata/json.h>
#include <tolv/msgs/attrs/messages.h>

namespace {

using namespace Tolv;
using namespace Tolv::Msgs;
using namespace Tolv::Msgs::Attrs;
using MetaData::Element;
using MetaData::ReaderJson;
using MetaData::WriterJson;

// ---- Messages --------------------------------------------------------------------------------

DoubleMessage bareNumber() {
    DoubleMessage message(2.45e9);
    message.sender = Address{"instrument", "analyzer"};
    message.destination = Address{"client", "panel"};
    return message;
}

DoubleMessage describedNumber() {
    auto message = bareNumber();
    auto& metaData = message.editPayload().editMetaData();
    metaData.name = std::string("Center frequency");
    metaData.controlAttrId = Address{"instrument", "analyzer", "frequency"};
    metaData.broadcastUnits = std::vector<std::string>{"Hz", "kHz", "MHz", "GHz"};
    metaData.currentBroadcastUnit = std::string("GHz");
    metaData.precision = 6;
    metaData.minimum = 9e3;
    metaData.maximum = 6e9;
    metaData.step = 1e3;
    metaData.stepDimensionless = false;
    return message;
}

template <class T>
T sample(std::uint32_t random) {
    return T(static_cast<double>(random) * 0x1p-31 - 1.0);
}
template <>
bool sample<bool>(std::uint32_t random) {
    return (random >> 31U) != 0;
}

template <class M, class T>
M traceOf(std::size_t count) {
    std::vector<T> samples(count);
    std::uint32_t random = 1;
    for (std::size_t i = 0; i < count; ++i) {
        random = random * 1664525U + 1013904223U;
        samples[i] = sample<T>(random);
    }
    M message;
    message.editPayload().trace = samples;
    return message;
}

constexpr std::size_t sampleCount = 1'000'000;
constexpr std::size_t bitCount = 8'000'000;

DoubleTraceMessage doubles() { return traceOf<DoubleTraceMessage, double>(sampleCount); }
ComplexTraceMessage complexes() {
    return traceOf<ComplexTraceMessage, std::complex<double>>(sampleCount);
}
BoolTraceMessage bits() { return traceOf<BoolTraceMessage, bool>(bitCount); }

std::string textOf(Message const& message) {
    Element element;
    message.copyToMetaData(element);
    std::string text;
    WriterJson::Write(element, text);
    return text;
}

/// The same samples as a plain array of numbers, as a trace writes them that was read from one.
DoubleTraceMessage plainDoubles() {
    auto const message = doubles();
    auto const& samples = message.payload().trace();
    Element element;
    MetaData::Array& array = element["Data"]["trace"];
    array.resize(static_cast<unsigned int>(samples.size()));
    for (unsigned int i = 0; i < array.size(); ++i)
        array[i].setFloating(samples[i]);
    DoubleTraceMessage plain;
    plain.Data.assign(element);
    return plain;
}

// ---- Runs ------------------------------------------------------------------------------------

template <class Make>
void read(benchmark::State& state, Make make, std::size_t bytes) {
    auto const text = textOf(make());
    for (auto _ : state) {
        Element element;
        ReaderJson::Read(element, text);
        auto const message = Message::CreateFromMetaData(element);
        benchmark::DoNotOptimize(message.get());
    }
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

template <class Make>
void write(benchmark::State& state, Make make, std::size_t bytes) {
    auto const message = make();
    std::string text;
    for (auto _ : state) {
        Element element;
        message.copyToMetaData(element);
        WriterJson::Write(element, text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations());
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

void copyOfBytes(benchmark::State& state) {
    std::vector<unsigned char> const from(static_cast<std::size_t>(state.range(0)), 7);
    std::vector<unsigned char> to(from.size());
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), from.size());
        benchmark::DoNotOptimize(to.data());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void base64Encode(benchmark::State& state) {
    std::vector<unsigned char> const from(static_cast<std::size_t>(state.range(0)), 7);
    std::string text;
    for (auto _ : state) {
        Base64::encode(from.data(), from.size(), text);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

void base64Decode(benchmark::State& state) {
    std::vector<unsigned char> to(static_cast<std::size_t>(state.range(0)), 7);
    std::string text;
    Base64::encode(to.data(), to.size(), text);
    for (auto _ : state) {
        Base64::decode(text, to.data(), to.size());
        benchmark::DoNotOptimize(to.data());
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

constexpr std::size_t doubleBytes = sampleCount * sizeof(double);
constexpr std::size_t bitBytes = bitCount / 8;

BENCHMARK_CAPTURE(read, number_without_metadata, bareNumber, sizeof(double));
BENCHMARK_CAPTURE(read, number_with_all_metadata, describedNumber, sizeof(double));
BENCHMARK_CAPTURE(write, number_without_metadata, bareNumber, sizeof(double));
BENCHMARK_CAPTURE(write, number_with_all_metadata, describedNumber, sizeof(double));

#define TOLV_TRACE(run) run->Unit(benchmark::kMicrosecond)
TOLV_TRACE(BENCHMARK_CAPTURE(read, doubles, doubles, doubleBytes));
TOLV_TRACE(BENCHMARK_CAPTURE(read, complexes, complexes, 2 * doubleBytes));
TOLV_TRACE(BENCHMARK_CAPTURE(read, bits, bits, bitBytes));
TOLV_TRACE(BENCHMARK_CAPTURE(read, doubles_plain, plainDoubles, doubleBytes));
TOLV_TRACE(BENCHMARK_CAPTURE(write, doubles, doubles, doubleBytes));
TOLV_TRACE(BENCHMARK_CAPTURE(write, complexes, complexes, 2 * doubleBytes));
TOLV_TRACE(BENCHMARK_CAPTURE(write, bits, bits, bitBytes));
TOLV_TRACE(BENCHMARK_CAPTURE(write, doubles_plain, plainDoubles, doubleBytes));
TOLV_TRACE(BENCHMARK(copyOfBytes)->Arg(doubleBytes)->Arg(2 * doubleBytes)->Arg(bitBytes));
TOLV_TRACE(BENCHMARK(base64Encode)->Arg(doubleBytes)->Arg(2 * doubleBytes)->Arg(bitBytes));
TOLV_TRACE(BENCHMARK(base64Decode)->Arg(doubleBytes)->Arg(2 * doubleBytes)->Arg(bitBytes));
#undef TOLV_TRACE

} // namespace
