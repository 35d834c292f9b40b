// Converts messages of all classes, including traces and batches, to text and back in one process,
// and prints time and memory for each tenth. Fails if a message changes, memory leaks or the
// process grows.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include <unistd.h>

#include <tolv/messages.h>

#include "support/counters.h"
#include "support/examples.h"

namespace {

using namespace Tolv;
using MetaData::Element;

template <class M>
std::string largeText(auto const& fill) {
    M message({"instrument"}, {"client", "ui"});
    fill(message.editPayload());
    return Testing::written(message);
}

/// The messages to send in turn: each class, a trace in either form, and a batch.
std::vector<std::string> mixture() {
    std::vector<std::string> texts;
    for (auto const& tree : Testing::examples())
        texts.push_back(Testing::textOf(tree));
    std::vector<double> samples;
    for (int i = 0; i < 2000; ++i)
        samples.push_back(i * 0.1);
    texts.push_back(largeText<Msgs::Attrs::DoubleTraceMessage>(
        [&](auto& payload) { payload.trace = samples; }));
    auto plain = Testing::parsed(texts.back());
    auto& trace = plain["Data"]["trace"];
    trace.setNull();
    for (unsigned int i = 0; i < 200; ++i)
        static_cast<MetaData::Array&>(trace)[i].setFloating(samples[i]);
    texts.push_back(Testing::textOf(plain));
    texts.push_back(largeText<Msgs::Attrs::BoolTraceMessage>(
        [](auto& payload) { payload.trace = std::vector<bool>(10'000, true); }));
    texts.push_back(largeText<Msgs::Attrs::DoubleBatchMessage>([](auto& payload) {
        std::vector<Msgs::Attrs::DoubleMessage> list(100);
        for (auto& entry : list)
            entry.editPayload().value = 0.25;
        payload.messages = list;
    }));
    return texts;
}

/// `text` after a round trip through tree and message.
void sendOn(std::string const& text, std::string& again) {
    Element tree;
    MetaData::ReaderJson::Read(tree, text);
    auto const message = Msgs::Message::CreateFromMetaData(tree);
    Element written;
    message->copyToMetaData(written);
    MetaData::WriterJson::Write(written, again);
}

/// Resident memory of the process in megabytes.
double residentSize() {
    std::ifstream statm("/proc/self/statm");
    double pages = 0;
    statm >> pages >> pages;
    return pages * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

struct Tenth {
    double rate; ///< messages a second
    double resident;
    std::ptrdiff_t bytes; ///< allocated and not freed since the start
};

void sendAll(std::vector<std::string> const& texts, long long messages) {
    std::string again;
    for (long long i = 0; i < messages; ++i) {
        auto const& text = texts[static_cast<std::size_t>(i) % texts.size()];
        sendOn(text, again);
        if (again != text) {
            std::fprintf(stderr, "sent: %s\nback: %s\n", text.c_str(), again.c_str());
            std::exit(1);
        }
    }
}

Tenth run(std::vector<std::string> const& texts, long long messages,
          Testing::Counted const& counted) {
    auto const start = std::chrono::steady_clock::now();
    sendAll(texts, messages);
    std::chrono::duration<double> const took = std::chrono::steady_clock::now() - start;
    return {static_cast<double>(messages) / took.count(), residentSize(), counted.bytes()};
}

} // namespace

int main(int argc, char** argv) {
    auto const messages = argc == 2 ? std::atoll(argv[1]) : 0;
    if (messages < 10) {
        std::fprintf(stderr, "usage: tolv_soak MESSAGES\n");
        return 2;
    }
    auto const texts = mixture();
    sendAll(texts,
            static_cast<long long>(texts.size()) * 4); // creates what exists once per process
    (void)residentSize();
    std::vector<Tenth> tenths;
    tenths.reserve(10);
    Testing::Counted const counted;
    std::puts("tenth  messages/s  resident MB  bytes kept");
    for (int i = 0; i < 10; ++i) {
        auto const& tenth = tenths.emplace_back(run(texts, messages / 10, counted));
        std::printf("%5d  %10.0f  %11.1f  %10td\n", i + 1, tenth.rate, tenth.resident, tenth.bytes);
        std::fflush(stdout);
    }
    auto const& first = tenths.front();
    auto const& last = tenths.back();
    std::printf("last to first: throughput %.2f, resident %.3f\n", last.rate / first.rate,
                last.resident / first.resident);
    if (last.bytes != 0) {
        std::puts("FAILED: something stayed allocated");
        return 1;
    }
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // they keep what is freed
    if (last.resident > first.resident * 1.05 + 1) {
        std::puts("FAILED: the process grew");
        return 1;
    }
#endif
    return 0;
}
