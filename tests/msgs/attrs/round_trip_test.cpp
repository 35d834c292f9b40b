#include <memory>
#include <typeinfo>

#include <gtest/gtest.h>

#include <tolv/msgs/attrs/messages.h>

#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::Msgs::Attrs {
namespace {

using Testing::parsed;
using Testing::textOf;

template <class M>
bool isA(Message const& message) {
    return typeid(message) == typeid(M);
}

/// The frame of a message of this family around the text of its payload.
std::string framed(unsigned short number, std::string const& data) {
    return "{\"MessageID\":" + std::to_string(Identifier::toValue(4, 0, 0, number)) +
           ",\"Sender\":[\"probe\"],\"Data\":" + data + "}";
}

#define NUMERIC R"("BroadcastUnits":["Hz","kHz"],"CurrentBroadcastUnit":"kHz","Precision":3)"
#define MEASURED NUMERIC R"(,"Average":1.5,"Minimum":1,"Maximum":2,"Percent":50)"

// Every payload, bare and with all that its metadata can hold. The tree comes back as it was.
struct {
    unsigned short number;
    bool (*hasClass)(Message const&);
    char const* data;
} const payloads[] = {
    {1, isA<LongMessage>, R"({"i":-9223372036854775808})"},
    {1, isA<LongMessage>,
     R"({"AttributeMetaData":{"Name":"n","ControlAttrID":["a","b"],)" NUMERIC
     R"(,"Minimum":-5,"Maximum":9223372036854775807,"Step":2,"StepDimensionless":true},"i":7})"},
    {2, isA<DoubleMessage>, R"({"d":0.1})"},
    {2, isA<DoubleMessage>, R"({"AttributeMetaData":{"Minimum":1.5},"d":2.5})"},
    {2, isA<DoubleMessage>, R"({"AttributeMetaData":{},"d":"NaN"})"},
    {2, isA<DoubleMessage>,
     R"({"AttributeMetaData":{"Name":"n","ControlAttrID":[],)" NUMERIC
     R"(,"Minimum":"-Infinity","Maximum":1.5,"Step":0.5,"StepDimensionless":false},"d":1.25})"},
    {3, isA<BoolMessage>, R"({"b":true})"},
    {3, isA<BoolMessage>, R"({"AttributeMetaData":{"Name":"","ControlAttrID":["a"]},"b":false})"},
    {4, isA<StringMessage>, R"({"s":""})"},
    {4, isA<StringMessage>,
     R"({"AttributeMetaData":{"Name":"n","MaxLength":0,"PasswordField":false,"ValidCharacters":""},"s":"é\u0000"})"},
    {6, isA<DoubleTraceMessage>, R"({"trace":{"type":3,"len":0}})"},
    {6, isA<DoubleTraceMessage>, R"({"trace":[1.5,"NaN",-0.0]})"},
    {6, isA<DoubleTraceMessage>,
     R"({"AttributeMetaData":{"Precision":1,"Step":2.5},"trace":{"type":3,"len":1,"base64":"AAAAAAAA+D8="}})"},
    {7, isA<ComplexTraceMessage>,
     R"({"AttributeMetaData":{"Minimum":[0.5,-1.5]},"trace":{"type":4,"len":1,"base64":"AAAAAAAA+D8AAAAAAAD4Pw=="}})"},
    {7, isA<ComplexTraceMessage>, R"({"trace":[[0.5,1.5]]})"},
    {8, isA<ComplexBoolTraceMessage>, R"({"trace":{"type":2,"len":3,"base64":"OQ=="}})"},
    {8, isA<ComplexBoolTraceMessage>,
     R"({"AttributeMetaData":{"Name":"n"},"trace":[[true,false]]})"},
    {9, isA<BoolTraceMessage>, R"({"trace":{"type":1,"len":9,"base64":"gAE="}})"},
    {9, isA<BoolTraceMessage>, R"({"AttributeMetaData":{"Name":"n"},"trace":[true,false]})"},
    {10, isA<EnumMessage>, R"({"value":{"Value":0,"Literal":""}})"},
    {10, isA<EnumMessage>,
     R"({"AttributeMetaData":{"Name":"n","DisabledList":{"type":1,"len":2,"base64":"Ag=="}},)"
     R"("value":{"Value":1,"Literal":"AC"},"enums":[{"Value":1,"Literal":"AC"},{"Value":2,"Literal":"DC"}]})"},
    {11, isA<DoubleSequenceMessage>, R"({"m":1.5})"},
    {11, isA<DoubleSequenceMessage>, R"({"AttributeMetaData":{)" NUMERIC R"(},"m":1.5})"},
    {12, isA<BoolSequenceMessage>, R"({"b":false})"},
    {13, isA<AttrInfoRequestMessage>, nullptr},
    {14, isA<AttrInfoMessage>, R"({"ScaName":"gain","ScaType":"double","Type":1125899906842626})"},
    {18, isA<AttrListRequestMessage>, nullptr},
    {19, isA<AttrRangeRequestMessage>, R"({"StartElementIndex":4294967295,"NumberOfElement":0})"},
    {23, isA<EnumStringsMessage>, R"({"value":""})"},
    {23, isA<EnumStringsMessage>, R"({"value":"a","enums":["a","b"]})"},
    {26, isA<RegisterMessage>, nullptr},
    {27, isA<RegisteredMessage>, R"({"OK":false})"},
    {28, isA<DeregisterMessage>, nullptr},
    {29, isA<DeregisteredMessage>, R"({"OK":true})"},
    {31, isA<EnumIntMessage>, R"({"value":0})"},
    // The encoded form of an optional list survives: it would vanish if it did not mark the field.
    {31, isA<EnumIntMessage>, R"({"value":2,"enums":{"type":9,"len":2,"base64":"AQAAAAIAAAA="}})"},
    {31, isA<EnumIntMessage>, R"({"value":2,"enums":{"type":9,"len":0}})"},
    {31, isA<EnumIntMessage>, R"({"value":2,"enums":[1,2]})"},
    {35, isA<SegmentedDoubleTraceMessage>,
     R"({"AttributeMetaData":{"Maximum":1.5},"trace":{"type":3,"len":0},"segments":[{"offset":0,"length":18446744073709551615}]})"},
    {36, isA<SegmentedComplexTraceMessage>,
     R"({"AttributeMetaData":{"Maximum":1.5},"trace":{"type":4,"len":0},"segments":[]})"},
    {37, isA<SegmentedComplexBoolTraceMessage>,
     R"({"AttributeMetaData":{"Maximum":1},"trace":{"type":2,"len":0},"segments":[]})"},
    {38, isA<SegmentedBoolTraceMessage>,
     R"({"AttributeMetaData":{"Maximum":1},"trace":{"type":1,"len":0},"segments":[]})"},
    {52, isA<MeasurementMessage>, R"({"m":1.5})"},
    {52, isA<MeasurementMessage>, R"({"AttributeMetaData":{"Name":"n",)" MEASURED R"(},"m":1.5})"},
    {53, isA<MeasurementWithStatusMessage>, R"({"m":1.5})"},
    {53, isA<MeasurementWithStatusMessage>,
     R"({"AttributeMetaData":{"Name":"n",)" MEASURED R"(,"LimitStatus":-1},"m":1.5})"},
    {54, isA<ComplexMessage>, R"({"dc":[0,0]})"},
    {54, isA<ComplexMessage>,
     R"({"AttributeMetaData":{"Minimum":[1,2],"Maximum":[3,4],"Step":[0.5,0]},"dc":[-1.5,2]})"},
    {56, isA<IntVectorMessage>, R"({"iv":[]})"},
    {56, isA<IntVectorMessage>,
     R"({"AttributeMetaData":{"MaxLength":4294967295},"iv":[-2147483648,5]})"},
};

TEST(AttrMessages, TravelThroughTextAndBack) {
    for (auto const& row : payloads) {
        auto text = framed(row.number, row.data != nullptr ? row.data : "");
        if (row.data == nullptr)
            text = text.substr(0, text.find(",\"Data\"")) + ",\"Destination\":[\"gain\"]}";
        SCOPED_TRACE(text);
        auto const message = Message::CreateFromMetaData(parsed(text));
        ASSERT_NE(message, nullptr);
        EXPECT_TRUE(row.hasClass(*message));
        MetaData::Element again;
        message->copyToMetaData(again);
        EXPECT_EQ(parsed(textOf(again)), parsed(text)) << textOf(again);
    }
}

template <class Payload>
void copies(unsigned short number) {
    for (auto const& row : payloads) {
        if (row.number != number)
            continue;
        Payload read;
        Testing::readInto(read, row.data);
        EXPECT_EQ(Testing::written(Payload(read)), Testing::written(read));
        Payload assigned;
        assigned = read;
        EXPECT_EQ(Testing::written(assigned), Testing::written(read));
    }
}

TEST(AttrPayloads, CopiesKeepWhatIsSet) {
    copies<AttrWithMetaData<long long, RangedMetaData<long long>>>(1);
    copies<AttrWithMetaData<double, RangedMetaData<double>>>(2);
    copies<BoolData>(3);
    copies<AttrWithMetaData<std::string, StringMetaData>>(4);
    copies<TracePayload<double, RangedMetaData<double>>>(6);
    copies<EnumData>(10);
    copies<AttrInfoData>(14);
    copies<EnumStringsData>(23);
    copies<RegistrationData>(27);
    copies<EnumIntData>(31);
    copies<TraceWithSegmentsPayload<double, RangedMetaData<double>>>(35);
    copies<AttrWithMetaData<double, NumericMeasMetaDataWithStatus>>(53);
}

TEST(AttrPayloads, StartWithTheirDefaults) {
    // A required value is there from the start; metadata and lists are not.
    EXPECT_EQ(Testing::written(BoolData()), R"({"b":true})");
    EXPECT_EQ(Testing::written(AttrWithMetaData<bool, AttrMetaDataBase>()), R"({"b":true})");
    EXPECT_EQ(Testing::written(AttrWithMetaData<double, RangedMetaData<double>>(2.5)),
              R"({"d":2.5})");
    EXPECT_EQ(Testing::written(
                  AttrWithMetaData<std::complex<double>, RangedMetaData<std::complex<double>>>()),
              R"({"dc":[0.0,0.0]})");
    EXPECT_EQ(Testing::written(AttrWithMetaData<int, EnumMetaData>()), R"({"value":0})");
    EXPECT_EQ(Testing::written(EnumData()), R"({"value":{"Value":0,"Literal":""}})");
    EXPECT_EQ(Testing::written(TraceWithSegmentsPayload<bool, RangedMetaData<long long>>()),
              R"({"trace":{"type":1,"len":0},"segments":[]})");
    EXPECT_EQ(Testing::written(RegistrationData(false)), R"({"OK":false})");
    // Metadata that were set to nothing are there; of an enumeration they hold the required list.
    EnumData enumerated;
    enumerated.editMetaData();
    EXPECT_EQ(
        Testing::written(enumerated),
        R"({"AttributeMetaData":{"DisabledList":{"type":1,"len":0}},"value":{"Value":0,"Literal":""}})");
    EXPECT_THROW((void)BoolData().metaData(), Exception::InvalidOperation);
}

TEST(AttrPayloads, ValueKeys) {
    EXPECT_EQ((AttrWithMetaData<bool, AttrMetaDataBase>::valMirrorName), "b");
    EXPECT_EQ((AttrWithMetaData<double, RangedMetaData<double>>::valMirrorName), "d");
    EXPECT_EQ((AttrWithMetaData<double, NumericMeasMetaData>::valMirrorName), "m");
    EXPECT_EQ((AttrWithMetaData<EnumVal, EnumMetaData>::valMirrorName), "value");
}

TEST(AttrPayloads, WhatDoesNotReadIsUnsetAndStaysSoInACopy) {
    BoolData read;
    Testing::readInto(read, R"({"b":1,"AttributeMetaData":3})");
    EXPECT_FALSE(read.value.initialized());
    EXPECT_EQ(Testing::written(BoolData(read)), "{}");
    // Assigning a record makes its required fields present, with zero.
    BoolData assigned;
    assigned = read;
    EXPECT_EQ(Testing::written(assigned), R"({"b":false})");
}

TEST(AttrMessages, SharedPayloadsAndIds) {
    EXPECT_NE(typeid(BoolMessage), typeid(BoolSequenceMessage));
    EXPECT_NE(typeid(RegisteredMessage), typeid(DeregisteredMessage));
    EXPECT_EQ(AttrInfoRequestMessage::MsgID(), Identifier::toValue(4, 0, 0, 13));
    EXPECT_TRUE(AttrInfoRequestMessage().destination.isRequired());
    EXPECT_EQ(BoolMessage(false).payload().value(), false);
}

TEST(AttrMessages, AbsentMetaDataCostNoThrow) {
    auto const tree = parsed(framed(2, R"({"d":1.5})"));
    Testing::Counted const counted;
    auto const message = Message::CreateFromMetaData(tree);
    EXPECT_EQ(counted.exceptions(), 0U);
    EXPECT_EQ(dynamic_cast<DoubleMessage&>(*message).payload().value(), 1.5);
}

} // namespace
} // namespace Tolv::Msgs::Attrs
