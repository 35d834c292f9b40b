#include <string>

#include <gtest/gtest.h>

#include <tolv/msgs/attrs/messages.h>

#include "support/counters.h"
#include "support/messages.h"

namespace Tolv::Msgs::Attrs {
namespace {

using namespace Tolv::Testing;

// Forms of payloads that are neither those of a new message nor those of the golden files.
TEST(AttrMessages, TravelThroughTextAndBack) {
    struct {
        unsigned short number;
        char const* data;
        char const* why;
    } const rows[] = {
        {2, R"({"AttributeMetaData":{},"d":"NaN"})", "metadata that hold nothing"},
        {2, R"({"AttributeMetaData":{"Minimum":"-Infinity","Maximum":1.5},"d":1.25})", "no limit"},
        {3, R"({"AttributeMetaData":{"Name":"","ControlAttrID":[]},"b":false})", "set and empty"},
        {4, R"({"AttributeMetaData":{"MaxLength":0,"ValidCharacters":""},"s":"\u00E9\u0000"})",
         "set and zero"},
        {6, R"({"trace":[1.5,"NaN",-0.0]})", "plain traces"},
        {7, R"({"trace":[[0.5,1.5]]})", "plain traces"},
        {8, R"({"trace":[[true,false]]})", "plain traces"},
        {9, R"({"trace":[true,false]})", "plain traces"},
        {31, R"({"value":2,"enums":{"type":9,"len":0}})", "an optional list, encoded and empty"},
        {31, R"({"value":2,"enums":[1,2]})", "an optional list, plain"},
        {35,
         R"({"trace":{"type":3,"len":0},"segments":[{"offset":0,"length":18446744073709551615}]})",
         "segments without samples"},
    };
    for (auto const& row : rows) {
        auto const text = messageText(Identifier::toValue(4, 0, 0, row.number), row.data);
        auto const message = received(text);
        ASSERT_NE(message, nullptr) << text;
        EXPECT_EQ(parsed(written(*message)), parsed(text)) << row.why;
    }
}

TEST(AttrPayloads, StartWithWhatIsGiven) {
    EXPECT_EQ(written(AttrWithMetaData<double, RangedMetaData<double>>(2.5)), R"({"d":2.5})");
    EXPECT_EQ(written(RegistrationData(false)), R"({"OK":false})");
    EXPECT_EQ((AttrWithMetaData<double, NumericMetaData>::valMirrorName), "m");
    EXPECT_EQ(BoolMessage(false).payload().value(), false);
    // Metadata that were set but left empty are present; those of an enumeration hold the required
    // list.
    EnumData enumerated;
    enumerated.editMetaData();
    EXPECT_EQ(
        written(enumerated),
        R"({"AttributeMetaData":{"DisabledList":{"type":1,"len":0}},"value":{"Value":0,"Literal":""}})");
    EXPECT_THROW((void)BoolData().metaData(), Exception::InvalidOperation);
}

TEST(AttrPayloads, WhatDoesNotReadIsUnsetAndStaysSoInACopy) {
    BoolData read;
    readInto(read, R"({"b":1,"AttributeMetaData":3})");
    EXPECT_FALSE(read.value.initialized());
    EXPECT_EQ(written(BoolData(read)), "{}");
    // Assigning a record makes its required fields present, with zero.
    BoolData assigned;
    assigned = read;
    EXPECT_EQ(written(assigned), R"({"b":false})");
}

TEST(AttrMessages, AbsentMetaDataCostNoThrow) {
    auto const tree = parsed(messageText(DoubleMessage::MsgID(), R"({"d":1.5})"));
    Counted const counted;
    auto const message = Message::CreateFromMetaData(tree);
    EXPECT_EQ(counted.exceptions(), 0U);
    EXPECT_EQ(dynamic_cast<DoubleMessage&>(*message).payload().value(), 1.5);
}

} // namespace
} // namespace Tolv::Msgs::Attrs
