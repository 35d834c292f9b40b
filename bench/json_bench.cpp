// Text to tree and tree to text, beside two other libraries that do the same work: every number
// exact, UTF-8 checked, nothing accepted that JSON has not.

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <tolv/core/metadata/json.h>

namespace {

// ---- Texts -----------------------------------------------------------------------------------

/// The first message of a connection.
std::string handshake() {
    return R"({"MessageID":844424930131969,"Sender":["client","ui"],)"
           R"("Destination":["instrument","service"],)"
           R"("Data":{"MaxVersion":1,"MinVersion":1,"BinaryTransmission":true}})";
}

/// About 6 KB, as a description of an instrument looks: objects of a few members, three deep.
std::string nestedObjects() {
    std::string text = R"({"MessageID":844424930131970,"Data":{"ComponentList":[)";
    for (int i = 0; i < 24; ++i) {
        auto const number = std::to_string(i);
        text += (i == 0 ? "" : ",");
        text += R"({"Name":"component )" + number + R"(","Type":"Detector","Index":)" + number +
                R"(,"Enabled":true,"Position":{"X":)" + std::to_string(i * 0.37) + R"(,"Y":)" +
                std::to_string(i * -12.125) + R"(,"Unit":"millimetre"},"Channels":[1,2,3,4],)" +
                R"("Calibration":{"Gain":1.0009765625,"Offset":-3,"Valid":true}})";
    }
    return text + "]}}";
}

/// 1,000,000 doubles in the binary form of arrays: one string.
std::string base64String() {
    constexpr char digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::mt19937_64 random(1);
    std::string text = R"({"Data":{"Values":")";
    for (std::size_t i = 0; i < 10'666'668; ++i)
        text += digits[random() % 64];
    return text + "\"}}";
}

std::string plainArray() {
    std::mt19937_64 random(2);
    std::normal_distribution<double> values(0, 100);
    Tolv::MetaData::Element element;
    Tolv::MetaData::Array& array = element;
    for (int i = 0; i < 1'000'000; ++i) {
        Tolv::MetaData::Element value;
        value.setFloating(values(random));
        array.push_back(std::move(value));
    }
    std::string text;
    Tolv::MetaData::WriterJson::Write(element, text);
    return text;
}

std::string const& textOf(std::int64_t which) {
    static std::vector<std::string> const texts = {handshake(), nestedObjects(), base64String(),
                                                   plainArray()};
    return texts[static_cast<std::size_t>(which)];
}

// ---- Libraries -------------------------------------------------------------------------------

struct Tolvs {
    using Tree = Tolv::MetaData::Element;
    static Tree read(std::string const& text) {
        Tree tree;
        Tolv::MetaData::ReaderJson::Read(tree, text);
        return tree;
    }
    struct Writer {
        std::string text;
        std::size_t write(Tree const& tree) {
            Tolv::MetaData::WriterJson::Write(tree, text);
            return text.size();
        }
    };
};

struct Nlohmann {
    using Tree = nlohmann::json;
    static Tree read(std::string const& text) { return Tree::parse(text); }
    struct Writer {
        std::string text;
        std::size_t write(Tree const& tree) {
            text = tree.dump();
            return text.size();
        }
    };
};

struct Rapid {
    using Tree = rapidjson::Document;
    static constexpr unsigned int readFlags = rapidjson::kParseFullPrecisionFlag |
                                              rapidjson::kParseValidateEncodingFlag |
                                              rapidjson::kParseIterativeFlag;
    static Tree read(std::string const& text) {
        Tree tree;
        tree.Parse<readFlags>(text.data(), text.size());
        if (tree.HasParseError())
            throw std::runtime_error(rapidjson::GetParseError_En(tree.GetParseError()));
        return tree;
    }
    struct Writer {
        rapidjson::StringBuffer buffer;
        std::size_t write(Tree const& tree) {
            buffer.Clear();
            rapidjson::Writer<rapidjson::StringBuffer, rapidjson::UTF8<>, rapidjson::UTF8<>,
                              rapidjson::CrtAllocator, rapidjson::kWriteValidateEncodingFlag>
                writer(buffer);
            tree.Accept(writer);
            return buffer.GetSize();
        }
    };
};

// ---- Measurements ----------------------------------------------------------------------------

/// Includes the end of the tree: who reads a message drops it again.
template <class Library>
void textToTree(benchmark::State& state) {
    auto const& text = textOf(state.range(0));
    for (auto const _ : state) {
        auto const tree = Library::read(text);
        benchmark::DoNotOptimize(&tree);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

/// Into memory that is used again, where the library allows it.
template <class Library>
void treeToText(benchmark::State& state) {
    auto const& text = textOf(state.range(0));
    auto const tree = Library::read(text);
    typename Library::Writer writer;
    for (auto const _ : state)
        benchmark::DoNotOptimize(writer.write(tree));
    state.SetBytesProcessed(static_cast<std::int64_t>(text.size()) * state.iterations());
}

/// 0: handshake, 1: nested objects of 6 KB, 2: base64 string of 10.7 MB, 3: array of 1,000,000
/// doubles.
void texts(benchmark::internal::Benchmark* benchmark) {
    benchmark->ArgName("text")->DenseRange(0, 3);
}

BENCHMARK(textToTree<Tolvs>)->Apply(texts);
BENCHMARK(textToTree<Nlohmann>)->Apply(texts);
BENCHMARK(textToTree<Rapid>)->Apply(texts);
BENCHMARK(treeToText<Tolvs>)->Apply(texts);
BENCHMARK(treeToText<Nlohmann>)->Apply(texts);
BENCHMARK(treeToText<Rapid>)->Apply(texts);

} // namespace
