// Messages to and from text directly give the same as through a tree.

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/msgs/message.h>
#include <tolv/fields/reflector_array.h>
#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/message_helpers.h>

#include "support/counters.h"
#include "support/messages.h"
#include "support/trees.h"

namespace Tolv::Msgs {
namespace {

using MetaData::Element;
using namespace MetaData;
using namespace Testing;

/// What `read` allocates.
template <class Read>
std::size_t allocationsOf(Read read) {
    Counted const counted;
    auto const result = read();
    return counted.allocations();
}

TEST(Text, ReadAtOnceAllocatesOnlyTheMessage) {
    App::ConnectMessage const connect({"client", "ui"}, {"instrument", "with a long name"});
    std::string text;
    connect.copyToText(text);
    auto const tree = parsed(text);
    EXPECT_EQ(allocationsOf([&] { return Message::CreateFromText(text); }),
              allocationsOf([&] { return Message::CreateFromMetaData(tree); }));
}

struct Samples : MirroredObject {
    ReflectorArray<double> samples{this, "Samples"_key, Required, true};
    Reflector<int> last{this, "Last"_key, Required, 1};
};

using SamplesMessage = PayloadMessageHelper<App::AppMessage, Samples, 4001>;

/// A message of which somebody takes parts of what it wrote.
struct Watched : SamplesMessage {
    mutable std::vector<Element> taken;

    void copyToMetaData(Element& element) const override {
        SamplesMessage::copyToMetaData(element);
        auto& text = element["Data"]["Samples"]["base64"];
        taken.push_back(text);
        Element moved;
        moved.swap(text);
        taken.push_back(std::move(moved));
        text = taken[0];
        taken.push_back(element);
        lookedAt = lookAt ? text.asString() : std::string();
    }

    bool lookAt = false;
    mutable std::string lookedAt;
};

// Large arrays are encoded into the output, not into the tree: the result must be the same.
TEST(Text, WrittenAtOnceIsWhatTheTreeGives) {
    struct {
        std::size_t count; ///< of samples, of 8 bytes
        char const* why;
    } const rows[] = {
        {0, "no text at all"},
        {511, "too small to be worth it"},
        {512, "the smallest"},
        {767, "a piece, less a sample"},
        {768, "two pieces to the byte"},
        {769, "a sample more"},
        {100'000, "many pieces, and more than a short output has room for"},
    };
    for (auto const& row : rows) {
        std::vector<double> values(row.count);
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = static_cast<double>(i) / 7;
        for (auto const compact : {true, false}) {
            SamplesMessage record;
            auto& samples = record.editPayload().samples;
            samples = values;
            Element tree;
            record.copyToMetaData(tree);
            std::string expected;
            WriterJson::Write(tree, expected, compact);
            std::string text = "left from before";
            record.copyToText(text, compact);
            EXPECT_EQ(text, expected) << row.why;
            samples = std::vector<double>();
            record.copyFromText(text);
            EXPECT_EQ(samples(), values) << row.why;
        }
    }
}

TEST(Text, WhatIsTakenOutOfTheTreeStays) {
    for (auto const lookAt : {false, true}) {
        std::vector<Element> taken;
        std::string expected;
        std::string text;
        {
            Watched record;
            record.lookAt = lookAt;
            auto& samples = record.editPayload().samples;
            samples = std::vector<double>(1000, 0.1);
            MetaData::Detail::encodeElements(samples(), expected);
            record.copyToText(text);
            taken = std::move(record.taken);
            EXPECT_EQ(record.lookedAt, lookAt ? expected : "");
        }
        ASSERT_EQ(taken.size(), 3U);
        EXPECT_EQ(taken[0].asStringView(), expected);
        EXPECT_EQ(taken[1].asStringView(), expected);
        EXPECT_EQ(taken[2], parsed(text));
    }
}

} // namespace
} // namespace Tolv::Msgs
