#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/attrs/structs_messages.h>
#include <tolv/msgs/structs/inventory.h>
#include <tolv/msgs/structs/selftest.h>
#include <tolv/msgs/structs/services.h>
#include <tolv/msgs/structs/triggers.h>

#include "support/trees.h"

namespace Tolv::Msgs::Structs {
namespace {

using namespace Tolv::Testing;
using Exception::InvalidEnumValue;
using Exception::InvalidOperation;

template <class Record>
Record readFrom(std::string_view json) {
    Record record;
    readInto(record, json);
    return record;
}

TEST(Records, Constructors) {
    EXPECT_EQ(written(FanBankData(3, 50)), R"({"bank":3,"speed":50})");
    EXPECT_EQ(written(VersionData("a", "b")), R"({"name":"a","version":"b"})");
    EXPECT_EQ(written(MdnsResult("a", "b")), R"({"serialNumber":"a","ipAddress":"b"})");
    EXPECT_EQ(written(GPS(1, 2, 3, 4, 5, GPS::differentialFix)),
              R"({"Latitude":1.0,"Longitude":2.0,"Altitude":3.0,"Time":4,"Satellites":5,)"
              R"("Status":2})");
    // The record has state and result in reverse order.
    EXPECT_EQ(written(SelftestData(1, "fans", false, Selftest::passed, "stuck")),
              R"({"id":1,"name":"fans","enable":false,"result":"stuck","state":0})");
}

// The only record that no message contains.
TEST(Records, MdnsResult) {
    constexpr auto full = R"({"serialNumber":"a","ipAddress":"b"})";
    MdnsResult result;
    EXPECT_EQ(written(result), R"({"serialNumber":"","ipAddress":""})");
    readInto(result, full);
    EXPECT_EQ(written(MdnsResult(result)), full);
    EXPECT_TRUE(result == MdnsResult("a", "b"));
    EXPECT_TRUE(result != MdnsResult("a", "c"));
    EXPECT_TRUE(result != MdnsResult("c", "b"));
}

TEST(Records, ComparisonStopsAtTheFirstDifference) {
    auto const broken = R"({"bank":1})"; // the speed does not parse
    EXPECT_FALSE(readFrom<FanBankData>(broken) == FanBankData(2, 0));
    EXPECT_EQ(thrownBy<InvalidOperation>(
                  [&] { (void)(readFrom<FanBankData>(broken) == FanBankData(1, 0)); }),
              "Tolv::MetaData::Reflector::operator()(): speed is not initialized in "
              "Structs::FanBankData");
}

TEST(Triggers, AccessorsTranslate) {
    TriggerRoute route;
    EXPECT_EQ(route.getOutput(), TriggerOutputs::unknown);
    EXPECT_EQ(route.getSource(), TriggerSources::none);
    route.setOutput(TriggerOutputs::exttrig);
    route.setSource(TriggerSources::exttrig);
    EXPECT_EQ(written(route), R"({"output":"exttrig","source":"exttrig"})");
    EXPECT_EQ(static_cast<int>(route.getOutput()), 18);
    EXPECT_EQ(static_cast<int>(route.getSource()), 23);
    for (int const number : {0, 19}) {
        route.setOutput(static_cast<TriggerOutputs>(number));
        EXPECT_EQ(route.output(), "unknown") << number;
    }

    auto const foreign = R"({"output":"laser","source":"Trig1"})";
    route = readFrom<TriggerRoute>(foreign);
    EXPECT_EQ(written(route), foreign);
    EXPECT_EQ(route.getSource(), TriggerSources::none);
    EXPECT_EQ(route.getOutput(), TriggerOutputs::unknown);
}

TEST(Triggers, TimesAreMilliseconds) {
    using namespace std::chrono_literals;
    TriggerPulseOffset offset;
    offset.setSource(TriggerSources::gps1pps);
    offset.setOffset(1500us);
    EXPECT_EQ(written(offset), R"({"source":"gps1pps","offset":1.5})");
    offset.setOffset(-2s);
    EXPECT_EQ(offset.offset(), -2000.0);
    EXPECT_EQ(offset.getOffset(), -2s);

    TriggerPulseWidth width;
    width.setWidth(1ns);
    EXPECT_EQ(width.width(), 1e-6);
    EXPECT_EQ(std::chrono::duration_cast<std::chrono::nanoseconds>(width.getWidth()), 1ns);
}

TEST(Triggers, GettersNeedTheirField) {
    auto const route = readFrom<TriggerRoute>(R"({"output":1,"source":"none"})");
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { (void)route.getOutput(); }),
              "Tolv::MetaData::Reflector::operator()(): output is not initialized in "
              "Structs::TriggerRoute");
    EXPECT_EQ(route.getSource(), TriggerSources::none);
    EXPECT_THROW((void)readFrom<TriggerPulseOffset>("{}").getOffset(), InvalidOperation);
    EXPECT_THROW((void)readFrom<TriggerPulseOffset>("{}").getSource(), InvalidOperation);
    EXPECT_THROW((void)readFrom<TriggerPulseWidth>("{}").getWidth(), InvalidOperation);

    // A setter sets the field again.
    auto offset = readFrom<TriggerPulseOffset>("{}");
    offset.setOffset(TriggerDuration(2));
    EXPECT_EQ(written(offset), R"({"offset":2.0})");
}

TEST(Selftest, StateFromCode) {
    SelftestData data;
    SelftestTestState report;
    for (int const number : {0, 1, 2, 3}) {
        data.state = number;
        report.testState = number;
        EXPECT_EQ(data.state(), number);
        EXPECT_EQ(report.testState(), number);
    }
    for (int const number : {-1, 4, 2147483647, -2147483647 - 1}) {
        auto const text = std::to_string(number);
        EXPECT_EQ(thrownBy<InvalidEnumValue>([&] { data.state = number; }),
                  "SelftestData::state = " + text);
        EXPECT_EQ(thrownBy<InvalidEnumValue>([&] { report.testState.assign(number); }),
                  "SelftestTestState::testState = " + text);
    }
    EXPECT_EQ(data.state(), Selftest::notRun);
    EXPECT_EQ(report.testState(), Selftest::notRun);
}

TEST(Selftest, StateFromTree) {
    for (auto const* const state : {"4", "-1", "\"2\"", "1e10", "null", "2.5", "[2]"}) {
        SelftestTestState report;
        report.testState = Selftest::failed;
        readInto(report, R"({"testState":)" + std::string(state) + R"(,"testStateId":7})");
        EXPECT_EQ(written(report), R"({"testStateId":7,"testState":1})") << state;
    }
    SelftestData data;
    readInto(data, R"({"id":5,"result":"good"})");
    EXPECT_EQ(written(data), R"({"id":5,"result":"good","state":3})")
        << "a missing state stays, other fields are left out";
}

TEST(Selftest, StateOfConstructorIsNotChecked) {
    SelftestData const data(1, "a", true, static_cast<Selftest::TestState>(9), "b");
    EXPECT_EQ(written(data), R"({"id":1,"name":"a","enable":true,"result":"b","state":9})");
    // A copy is made by assignment, which checks.
    EXPECT_EQ(thrownBy<InvalidEnumValue>([&] { SelftestData const copy(data); }),
              "SelftestData::state = 9");
    EXPECT_THROW(Attrs::SelftestMessage{data}, Exception::InvalidEnumValue);
}

} // namespace
} // namespace Tolv::Msgs::Structs
