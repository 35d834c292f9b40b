// What explained reads cost: nothing to threads that have no report, and what a report takes.
#include <string>

#include <tolv/messages.h>
#include <benchmark/benchmark.h>

namespace {

using namespace Tolv;

/// A chassis of 20 modules.
MetaData::Element chassis() {
    Msgs::App::ChassisInformation payload("make", "model");
    for (int i = 0; i < 20; ++i)
        payload.moduleList.edit().emplace_back("make", "module " + std::to_string(i));
    Msgs::App::ChassisInformationResponseMessage const message(payload);
    MetaData::Element written;
    message.copyToMetaData(written);
    std::string text;
    MetaData::WriterJson::Write(written, text);
    MetaData::Element tree; // as one that came over the wire
    MetaData::ReaderJson::Read(tree, text);
    return tree;
}

void readPlain(benchmark::State& state) {
    auto const tree = chassis();
    for (auto _ : state)
        benchmark::DoNotOptimize(Msgs::Message::CreateFromMetaData(tree));
}
BENCHMARK(readPlain);

/// Any report makes threads without one look at a variable of their own.
void readBesideAReport(benchmark::State& state) {
    MetaData::Detail::openReports.fetch_add(1);
    readPlain(state);
    MetaData::Detail::openReports.fetch_sub(1);
}
BENCHMARK(readBesideAReport);

void readReported(benchmark::State& state) {
    auto const tree = chassis();
    for (auto _ : state) {
        MetaData::ReadReport const report;
        benchmark::DoNotOptimize(Msgs::Message::CreateFromMetaData(tree));
    }
}
BENCHMARK(readReported);

void readExplained(benchmark::State& state) {
    auto const tree = chassis();
    for (auto _ : state) {
        MetaData::ReadReport const report;
        benchmark::DoNotOptimize(Msgs::Message::CreateFromMetaData(tree));
        benchmark::DoNotOptimize(Msgs::Introspection::explain(report));
    }
}
BENCHMARK(readExplained);

} // namespace
