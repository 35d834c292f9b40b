// A batch of messages against as many single messages: from text to messages, made by the factory,
// and from messages to text. Times are those of all messages of a run; the counters are an element:
//
// - items_per_second: elements
// - bytes_held: memory of the messages once they are read
// - bytes_peak: memory at most while they are read, tree and messages together
// - text: bytes of text
//
// A batch shall cost at most 1.2 times what its messages cost alone, in time and in `bytes_held`.
// Its peak is another matter: of single messages one tree exists at a time.

#include <benchmark/benchmark.h>

#include <malloc.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <tolv/core/metadata/json.h>
#include <tolv/msgs/attrs/batches.h>

namespace {

/// What `operator new` gave and did not get back, in all libraries of the process. Blocks count
/// with the size that malloc gives them, without its own header.
struct Memory {
    std::size_t live = 0;
    std::size_t peak = 0;

    void* take(std::size_t size) {
        auto* const block = std::malloc(std::max<std::size_t>(size, 1));
        if (block == nullptr)
            throw std::bad_alloc();
        live += malloc_usable_size(block);
        peak = std::max(peak, live);
        return block;
    }
    void give(void* block) noexcept {
        live -= malloc_usable_size(block); // 0 for null
        std::free(block);
    }
};
Memory memory; // one thread

} // namespace

void* operator new(std::size_t size) { return memory.take(size); }
void operator delete(void* block) noexcept { memory.give(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { memory.give(block); }

namespace {

using namespace Tolv;
using namespace Tolv::Msgs;
using namespace Tolv::Msgs::Attrs;
using MetaData::Element;
using MetaData::ReaderJson;
using MetaData::WriterJson;

BoolMessage truthValue(std::size_t number) { return BoolMessage(number % 3 == 0); }

DoubleMessage rangedNumber(std::size_t number) {
    auto const at = static_cast<double>(number);
    DoubleMessage message(2.4e9 + 1.25 * at, {"instrument", "analyzer"}, {"client", "panel"});
    auto& metaData = message.editPayload().editMetaData();
    metaData.name = "Frequency of marker " + std::to_string(number);
    metaData.controlAttrId = Address{"instrument", "analyzer", "frequency"};
    metaData.broadcastUnits = std::vector<std::string>{"Hz", "kHz", "MHz", "GHz"};
    metaData.currentBroadcastUnit = std::string("GHz");
    metaData.precision = 6;
    metaData.minimum = 9e3;
    metaData.maximum = 6e9;
    metaData.step = 0.1;
    metaData.stepDimensionless = false;
    return message;
}

/// N messages of class `M`, each on its own.
template <class M>
struct Singles {
    using Texts = std::vector<std::string>;
    using Messages = std::vector<std::shared_ptr<Message>>;

    template <class Make>
    static Messages made(Make make, std::size_t count) {
        Messages messages;
        for (std::size_t i = 0; i < count; ++i)
            messages.push_back(std::make_shared<M>(make(i)));
        return messages;
    }

    static void write(Messages const& messages, Texts& texts) {
        texts.resize(messages.size());
        for (std::size_t i = 0; i < messages.size(); ++i) {
            Element element;
            messages[i]->copyToMetaData(element);
            WriterJson::Write(element, texts[i]);
        }
    }

    static Messages read(Texts const& texts) {
        Messages messages;
        messages.reserve(texts.size());
        for (auto const& text : texts) {
            Element element;
            ReaderJson::Read(element, text);
            messages.push_back(Message::CreateFromMetaData(element));
        }
        return messages;
    }
};

/// The same messages in one of class `Batch`.
template <class M, class Batch>
struct Batched {
    using Texts = std::vector<std::string>;
    using Messages = std::shared_ptr<Message>;

    template <class Make>
    static Messages made(Make make, std::size_t count) {
        auto batch = std::make_shared<Batch>();
        auto& messages = batch->editPayload().messages.edit();
        messages.reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            messages.push_back(make(i));
        return batch;
    }

    static void write(Messages const& batch, Texts& texts) {
        texts.resize(1);
        Element element;
        batch->copyToMetaData(element);
        WriterJson::Write(element, texts.front());
    }

    static Messages read(Texts const& texts) {
        Element element;
        ReaderJson::Read(element, texts.front());
        return Message::CreateFromMetaData(element);
    }
};

void countElements(benchmark::State& state, std::size_t count,
                   std::vector<std::string> const& texts) {
    std::size_t bytes = 0;
    for (auto const& text : texts)
        bytes += text.size();
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(count));
    state.counters["text"] = static_cast<double>(bytes) / static_cast<double>(count);
}

template <class Road, class Make>
void read(benchmark::State& state, Road /*road*/, Make make) {
    auto const count = static_cast<std::size_t>(state.range(0));
    typename Road::Texts texts;
    Road::write(Road::made(make, count), texts);
    std::size_t held = 0;
    std::size_t peak = 0;
    for (auto _ : state) {
        auto const before = memory.live;
        memory.peak = before;
        auto const messages = Road::read(texts);
        held = memory.live - before;
        peak = memory.peak - before;
        benchmark::DoNotOptimize(&messages);
    }
    countElements(state, count, texts);
    state.counters["bytes_held"] = static_cast<double>(held) / static_cast<double>(count);
    state.counters["bytes_peak"] = static_cast<double>(peak) / static_cast<double>(count);
}

template <class Road, class Make>
void write(benchmark::State& state, Road /*road*/, Make make) {
    auto const count = static_cast<std::size_t>(state.range(0));
    auto const messages = Road::made(make, count);
    typename Road::Texts texts;
    for (auto _ : state) {
        Road::write(messages, texts);
        benchmark::DoNotOptimize(texts.data());
    }
    countElements(state, count, texts);
}

using BoolSingles = Singles<BoolMessage>;
using BoolBatch = Batched<BoolMessage, BoolBatchMessage>;
using DoubleSingles = Singles<DoubleMessage>;
using DoubleBatch = Batched<DoubleMessage, DoubleBatchMessage>;

#define TOLV_MANY(run, count) run->Arg(count)->Unit(benchmark::kMicrosecond)
TOLV_MANY(BENCHMARK_CAPTURE(read, bool_singles, BoolSingles(), truthValue), 10'000);
TOLV_MANY(BENCHMARK_CAPTURE(read, bool_batch, BoolBatch(), truthValue), 10'000);
TOLV_MANY(BENCHMARK_CAPTURE(write, bool_singles, BoolSingles(), truthValue), 10'000);
TOLV_MANY(BENCHMARK_CAPTURE(write, bool_batch, BoolBatch(), truthValue), 10'000);
TOLV_MANY(BENCHMARK_CAPTURE(read, double_singles, DoubleSingles(), rangedNumber), 1'000);
TOLV_MANY(BENCHMARK_CAPTURE(read, double_batch, DoubleBatch(), rangedNumber), 1'000);
TOLV_MANY(BENCHMARK_CAPTURE(write, double_singles, DoubleSingles(), rangedNumber), 1'000);
TOLV_MANY(BENCHMARK_CAPTURE(write, double_batch, DoubleBatch(), rangedNumber), 1'000);
#undef TOLV_MANY

} // namespace
