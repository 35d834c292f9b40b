// Writes messages as lines of JSON, and reads and writes them again: two machines must produce the
// same bytes from the same line.
//
//     wire new GOLDEN_DIR    new messages of all classes, golden files, traces, all kinds of values
//     wire again             reads messages from standard input and writes them again

#include <algorithm>
#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <tolv/messages.h>
#include <tolv/msgs/catalogue.h>

#include "support/trees.h"

namespace Tolv {
namespace {

using MetaData::Element;

/// The same numbers on every machine, unlike the distributions of the standard library.
std::uint64_t bits() {
    static std::mt19937_64 generator(20240229);
    return generator();
}

/// Arbitrary bits, including subnormal numbers, both zeros, infinities and NaN.
double number() {
    switch (bits() % 8) {
    case 0:
        return std::bit_cast<double>(bits() & 0x800FFFFFFFFFFFFFULL);
    case 1:
        return std::bit_cast<double>(bits() | 0x7FF0000000000000ULL);
    case 2:
        return static_cast<double>(static_cast<std::int64_t>(bits()));
    case 3:
        return bits() % 2 == 0 ? 0.0 : -0.0;
    default:
        return std::bit_cast<double>(bits());
    }
}

template <class T>
T sample() {
    if constexpr (std::is_same_v<T, double>)
        return number();
    else if constexpr (std::is_same_v<T, bool>)
        return bits() % 2 == 0;
    else if constexpr (std::is_same_v<T, int>)
        return static_cast<int>(static_cast<std::uint32_t>(bits()));
    else {
        auto const real = sample<typename T::value_type>();
        return T(real, sample<typename T::value_type>());
    }
}

template <class T>
std::vector<T> samples(std::size_t count) {
    std::vector<T> all;
    while (all.size() < count)
        all.push_back(sample<T>());
    return all;
}

void put(std::string const& line) { std::cout << line << '\n'; }

template <class M, class T>
void putTraces() {
    for (auto const count : {0U, 1U, 2U, 3U, 4U, 5U, 7U, 8U, 9U, 31U, 32U, 33U, 1000U}) {
        M message({"here"}, {"there", std::to_string(count)});
        message.editPayload().trace = samples<T>(count);
        put(Testing::written(message));
    }
}

void putIntegers() {
    Msgs::Attrs::IntVectorMessage message;
    auto values = samples<int>(100);
    values.push_back(std::numeric_limits<int>::min());
    values.push_back(std::numeric_limits<int>::max());
    message.editPayload().value = values;
    put(Testing::written(message));
}

/// Trees that are not messages.
void putValues() {
    Element tree;
    auto& numbers = static_cast<MetaData::Array&>(tree["numbers"]);
    auto const add = [&numbers](auto value) { MetaData::SetAs(value, numbers[numbers.size()]); };
    for (int i = 0; i < 64; ++i) {
        add(1ULL << i);
        add((1ULL << i) - 1);
        add(static_cast<long long>(~(1ULL << i)));
        add(std::ldexp(1.0, i * 16 - 500));
        add(std::ldexp(-1.0, i) + 0.5);
    }
    add(std::numeric_limits<unsigned long long>::max());
    add(std::numeric_limits<long long>::min());
    for (int i = 0; i < 2000; ++i)
        add(number());
    auto& strings = static_cast<MetaData::Array&>(tree["strings"]);
    for (unsigned int length = 0; length < 40; ++length)
        for (auto const* const text : {"a", "\u00e9", "\U0001F600", "\x01", "\"\\/", "\x7f"}) {
            std::string whole;
            for (unsigned int i = 0; i < length; ++i)
                whole += text;
            MetaData::SetAs(whole, strings[strings.size()]);
        }
    MetaData::SetAs(true, tree["truth"]["yes"]);
    MetaData::SetAs(false, tree["truth"]["no"]);
    tree["nothing"] = Element();
    put(Testing::textOf(tree));
}

std::string fileText(std::filesystem::path const& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

void putNew(std::filesystem::path const& golden) {
    using namespace Msgs::Attrs;
    for (auto const& row : Msgs::catalogue())
        put(Testing::written(*row.make()));

    std::vector<std::filesystem::path> files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(golden))
        if (entry.path().extension() == ".json")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    for (auto const& file : files)
        put(Testing::written(*Msgs::Message::CreateFromMetaData(Testing::parsed(fileText(file)))));

    putTraces<DoubleTraceMessage, double>();
    putTraces<ComplexTraceMessage, std::complex<double>>();
    putTraces<BoolTraceMessage, bool>();
    putTraces<ComplexBoolTraceMessage, std::complex<bool>>();
    putTraces<SegmentedComplexTraceMessage, std::complex<double>>();
    putIntegers();
    putValues();
}

/// Through the typed message, or through the tree if the line is not a message.
std::string again(std::string const& line) {
    auto const tree = Testing::parsed(line);
    if (tree.find("MessageID") == nullptr)
        return Testing::textOf(tree);
    auto const message = Msgs::Message::CreateFromMetaData(tree);
    return message ? Testing::written(*message) : "no message: " + line;
}

int run(std::vector<std::string> const& arguments) {
    std::ios::sync_with_stdio(false);
    if (arguments.size() == 2 && arguments[0] == "new") {
        putNew(arguments[1]);
    } else if (arguments.size() == 1 && arguments[0] == "again") {
        for (std::string line; std::getline(std::cin, line);)
            put(again(line));
    } else {
        std::cerr << "usage: wire new GOLDEN_DIR | again\n";
        return 2;
    }
    return std::cout.flush() ? 0 : 1;
}

} // namespace
} // namespace Tolv

int main(int count, char** arguments) {
    try {
        return Tolv::run({arguments + 1, arguments + count});
    } catch (std::exception const& exception) {
        std::cerr << "wire: " << exception.what() << '\n';
        return 1;
    }
}
