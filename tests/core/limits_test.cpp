#include <tolv/core/limits.h>

#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/mirrored_object.h>

#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::MetaData {
namespace {

using Testing::thrownBy;

std::string times(std::size_t count, std::string const& part) {
    std::string text;
    text.reserve(count * part.size());
    for (std::size_t i = 0; i < count; ++i)
        text += part;
    return text;
}

std::string listOf(std::size_t count, std::string const& entry) {
    return '[' + times(count - 1, entry + ',') + entry + ']';
}

TEST(Limits, AReaderTakesOthersWithEachCall) {
    Limits const tiny{.depth = 2, .textBytes = 40, .elements = 3, .keyBytes = 4};
    struct {
        std::string text;
        char const* refusal; ///< null: accepted
        char const* why;
    } const rows[] = {
        {"[[]]", nullptr, "as deep as can be"},
        {"[[[]]]", "more than 2 nested arrays and objects at byte 2", "a level deeper"},
        {'"' + std::string(38, 'x') + '"', nullptr, "as long as can be"},
        {'"' + std::string(39, 'x') + '"', "text of more than 40 bytes at byte 40", "longer"},
        {"1" + std::string(40, ' '), "text of more than 40 bytes at byte 40", "white space counts"},
        {"[1,2,3]", nullptr, "as many as can be"},
        {"[1,2,3,4]", "more than 3 elements at byte 6", "one more"},
        {R"({"a":1,"b":2,"c":3})", nullptr, "as many as can be"},
        {R"({"a":1,"b":2,"c":3,"d":4})", "more than 3 elements at byte 18", "one more"},
        {"[[1,2],[3,4],[5,6]]", nullptr, "each container by itself"},
        {R"({"abcd":1})", nullptr, "as long as can be"},
        {R"({"\u0061bcd":1})", nullptr, "the key counts, not its text"},
        {R"({"abcde":1})", "key of more than 4 bytes at byte 1", "a byte longer"},
        {R"({"\u00e4\u00e4a":1})", "key of more than 4 bytes at byte 1", "bytes, not characters"},
        {R"(["abcdefgh"])", nullptr, "no key"},
    };
    for (auto const& row : rows) {
        auto const expected = row.refusal == nullptr
                                  ? "nothing thrown"
                                  : std::string("JSON text refused: ") + row.refusal;
        auto const refusalWith = [&](auto&&... limits) {
            return thrownBy<Exception::InvalidParameter>([&] {
                Element element;
                ReaderJson::Read(element, std::string_view(row.text), limits...);
            });
        };
        EXPECT_EQ(refusalWith(tiny), expected) << row.text << ": " << row.why;
        EXPECT_EQ(refusalWith(), "nothing thrown") << row.text << ": the default holds again";
        std::istringstream stream(row.text);
        EXPECT_EQ(thrownBy<Exception::InvalidParameter>([&] {
                      Element element;
                      ReaderJson::Read(element, stream, tiny);
                  }),
                  expected)
            << row.text;
    }
}

/// Endless digits.
class Endless : public std::streambuf {
    int_type underflow() override {
        setg(block_, block_, block_ + sizeof block_);
        return '1';
    }

    char block_[1024] = {'1'};
};

TEST(Limits, AStreamWithoutEndIsLeft) {
    Endless buffer;
    std::istream stream(&buffer);
    Testing::Counted const counted;
    EXPECT_EQ(thrownBy<Exception::InvalidParameter>([&] {
                  Element element;
                  ReaderJson::Read(element, stream, {.textBytes = 1'000'000});
              }),
              "JSON text refused: text of more than 1000000 bytes at byte 1000000");
    EXPECT_LT(counted.peakBytes(), 4'000'000);
}

/// Reads nothing of its tree.
class Unmoved : public MirroredObject {
public:
    void copyToMetaData(Element&) const override {}
    void copyFromMetaData(Element const&) override {}
};

// Bytes of memory per byte of text, for the texts that need most: of a permanent tree and of a
// temporary one.
TEST(Limits, MemoryOfATree) {
    constexpr auto depth = Limits{}.depth - 1;
    std::string keys;
    for (int i = 0; i < 100'000; ++i)
        keys += (i == 0 ? "\"" : ",\"") + std::to_string(i) + "\":0";
    struct {
        std::string text;
        char const* why;
    } const rows[] = {
        {listOf(200'000, "0"), "numbers of one digit"},
        {listOf(200'000, "[]"), "empty arrays"},
        {listOf(200'000, "{}"), "empty objects"},
        {listOf(100'000, "[0]"), "arrays of one number"},
        {listOf(100'000, R"({"":0})"), "objects of one key"},
        {listOf(2'000, times(depth, "[") + times(depth, "]")), "arrays of one array"},
        {listOf(500, times(depth, R"({"":)") + '0' + times(depth, "}")), "objects of one object"},
        {listOf(20'000, R"({"":{"a":0,"b":0}})"), "objects of few keys"},
        {listOf(50'000, R"("123456789012345")"), "the shortest texts with a block of their own"},
        {listOf(20'000, R"({"123456789012345":0})"), "keys with a block of their own"},
        {'{' + keys + '}', "an object with an index"},
        {'"' + times(50'000, R"(\\)") + '"', "escapes"},
    };
    double mostKept = 0;
    double mostTaken = 0;
    double mostPassing = 0;
    for (auto const& row : rows) {
        auto const perByte = [&](std::ptrdiff_t bytes) {
            return static_cast<double>(bytes) / static_cast<double>(row.text.size());
        };
        auto const mind = [&](double& most, double bytes) {
            EXPECT_LE(bytes, 30) << row.why;
            most = std::max(most, bytes);
        };
        {
            Testing::Counted const counted;
            Element element;
            ReaderJson::Read(element, row.text);
            mind(mostKept, perByte(counted.bytes()));
            mind(mostTaken, perByte(counted.peakBytes()));
        }
        Testing::Counted const counted;
        Unmoved().copyFromText(row.text);
        mind(mostPassing, perByte(counted.peakBytes()));
    }
    std::cout << "bytes of memory for a byte of text: " << mostKept << ", while reading "
              << mostTaken << ", of a tree that passes " << mostPassing << '\n';
}

} // namespace
} // namespace Tolv::MetaData
