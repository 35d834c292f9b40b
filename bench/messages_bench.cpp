// The whole road of a small message, from text to the typed message and back, beside peers that a
// user would pick. Ends with the ratios, since these say more than the times of a noisy machine.
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <tolv/messages.h>
#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

// What a user of nlohmann-json would write for the same message.
namespace Peer {

struct Data {
    int MaxVersion = 1;
    int MinVersion = 1;
    bool BinaryTransmission = true;
    NLOHMANN_DEFINE_TYPE_INTRUSIVE(Data, MaxVersion, MinVersion, BinaryTransmission)
};

struct Message {
    unsigned long long MessageID = 0;
    std::vector<std::string> Sender;
    std::vector<std::string> Destination;
    Peer::Data Data;
    NLOHMANN_DEFINE_TYPE_INTRUSIVE(Message, MessageID, Sender, Destination, Data)
};

} // namespace Peer

namespace {

using Tolv::MetaData::Element;
using Tolv::MetaData::ReaderJson;
using Tolv::MetaData::WriterJson;
using Tolv::Msgs::App::ConnectMessage;

ConnectMessage const connect({"client", "ui"}, {"instrument", "service"});

std::string connectText() {
    Element tree;
    connect.copyToMetaData(tree);
    std::string text;
    WriterJson::Write(tree, text);
    return text;
}

void readTolv(benchmark::State& state) {
    auto const text = connectText();
    for (auto _ : state) {
        Element tree;
        ReaderJson::Read(tree, text);
        benchmark::DoNotOptimize(Tolv::Msgs::Message::CreateFromMetaData(tree));
    }
}

void readNlohmann(benchmark::State& state) {
    auto const text = connectText();
    for (auto _ : state)
        benchmark::DoNotOptimize(nlohmann::json::parse(text).get<Peer::Message>());
}

/// Into a tree only: RapidJSON has no typed road.
void readRapid(benchmark::State& state) {
    auto const text = connectText();
    for (auto _ : state) {
        rapidjson::Document tree;
        tree.Parse<rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag>(
            text.data(), text.size());
        benchmark::DoNotOptimize(tree.IsObject());
    }
}

void writeTolv(benchmark::State& state) {
    std::string text;
    for (auto _ : state) {
        Element tree;
        connect.copyToMetaData(tree);
        WriterJson::Write(tree, text);
        benchmark::DoNotOptimize(text.data());
    }
}

void writeNlohmann(benchmark::State& state) {
    auto const message = nlohmann::json::parse(connectText()).get<Peer::Message>();
    for (auto _ : state)
        benchmark::DoNotOptimize(nlohmann::json(message).dump());
}

/// From a tree only, as above.
void writeRapid(benchmark::State& state) {
    rapidjson::Document tree;
    tree.Parse(connectText().c_str());
    rapidjson::StringBuffer text;
    for (auto _ : state) {
        text.Clear();
        rapidjson::Writer<rapidjson::StringBuffer> writer(text);
        tree.Accept(writer);
        benchmark::DoNotOptimize(text.GetString());
    }
}

BENCHMARK(readTolv)->Name("Connect text to message/tolv");
BENCHMARK(readNlohmann)->Name("Connect text to message/nlohmann typed");
BENCHMARK(readRapid)->Name("Connect text to message/RapidJSON tree only");
BENCHMARK(writeTolv)->Name("Connect message to text/tolv");
BENCHMARK(writeNlohmann)->Name("Connect message to text/nlohmann typed");
BENCHMARK(writeRapid)->Name("Connect message to text/RapidJSON tree only");

/// Prints the table, and behind it what each peer takes as a multiple of our time.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(std::vector<Run> const& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (auto const& run : runs)
            times_.emplace_back(run.benchmark_name(), run.GetAdjustedCPUTime());
    }

    void Finalize() override {
        std::map<std::string, double> ours;
        for (auto const& [name, time] : times_)
            if (name.ends_with("/tolv"))
                ours[name.substr(0, name.find('/'))] = time;
        GetOutputStream() << "\nRatios to tolv (above 1: tolv is faster)\n";
        for (auto const& [name, time] : times_) {
            auto const own = ours.find(name.substr(0, name.find('/')));
            if (own != ours.end() && !name.ends_with("/tolv"))
                GetOutputStream() << "  " << time / own->second << "  " << name << '\n';
        }
    }

private:
    std::vector<std::pair<std::string, double>> times_;
};

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
}
