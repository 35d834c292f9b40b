#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/structs/inventory.h>
#include <tolv/msgs/structs/keying.h>
#include <tolv/msgs/structs/pcie.h>
#include <tolv/msgs/structs/selftest.h>
#include <tolv/msgs/structs/services.h>
#include <tolv/msgs/structs/triggers.h>

#include "support/captured_output.h"
#include "support/records.h"
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

TEST(Records, DefaultsAndRoundTrips) {
    expectTexts<FruData>(
        R"({"isPlaceholder":true,"name":"","description":"","manufacturer":"","serialNumber":"",)"
        R"("slot":"esm","lun":"lun0","deviceId":0,"isAssignable":true,"deviceType":"fru",)"
        R"("state":"","version":"","ipAddress":""})",
        R"({"isPlaceholder":false,"name":"a","description":"b","manufacturer":"c",)"
        R"("serialNumber":"d","slot":"pem","lun":"lun3","deviceId":255,"isAssignable":false,)"
        R"("deviceType":"wifi","state":"e","version":"f","ipAddress":"g"})");
    expectTexts<SensorData>(
        R"({"slot":"esm","lun":"lun0","deviceId":0,"number":0,"name":"","bank":-1,)"
        R"("type":"unknown","reading":""})",
        R"({"slot":"slot5","lun":"lun1","deviceId":1,"number":-2147483648,"name":"a","bank":3,)"
        R"("type":"temperature","reading":"41.5 C"})");
    expectTexts<FanBankData>(R"({"bank":-1,"speed":-1})", R"({"bank":2147483647,"speed":-50})");
    expectTexts<EKeyingEndpoint>(
        R"({"slot":"esm","lun":"lun0","deviceId":0,"channel":0,"group":0})",
        R"({"slot":"backplane","lun":"lun2","deviceId":9,"channel":-1,"group":4})");
    expectTexts<EKeyingLink>(R"({"extension":0,"type":0,"iface":0})",
                             R"({"extension":1,"type":2,"iface":3})");
    expectTexts<EKeyingData>(
        R"({"enabled":false,)"
        R"("source":{"slot":"esm","lun":"lun0","deviceId":0,"channel":0,"group":0},)"
        R"("destination":{"slot":"esm","lun":"lun0","deviceId":0,"channel":0,"group":0},)"
        R"("link":{"extension":0,"type":0,"iface":0},"group":0,"ports":"ports_1"})",
        R"({"enabled":true,)"
        R"("source":{"slot":"slot1","lun":"lun1","deviceId":1,"channel":2,"group":3},)"
        R"("destination":{"slot":"slot2","lun":"lun2","deviceId":4,"channel":5,"group":6},)"
        R"("link":{"extension":7,"type":8,"iface":9},"group":10,"ports":"ports_1_2_3_4"})");
    expectTexts<PcieDevice>(R"({"slot":"esm","deviceId":1,"isRoot":false})",
                            R"({"slot":"ipass","deviceId":0,"isRoot":true})");
    expectTexts<PcieDomain>(R"({"endpoints":[]})",
                            R"({"root":{"slot":"esm","deviceId":2,"isRoot":true},"endpoints":[)"
                            R"({"slot":"slot1","deviceId":3,"isRoot":false},)"
                            R"({"slot":"slot2","deviceId":4,"isRoot":false}]})");
    expectTexts<TriggerRoute>(R"({"output":"unknown","source":"none"})",
                              R"({"output":"trig0","source":"trig1"})");
    expectTexts<TriggerPulseOffset>(R"({"source":"none","offset":0.0})",
                                    R"({"source":"tstrig","offset":-1.5})");
    expectTexts<TriggerPulseWidth>(R"({"source":"none","width":0.0})",
                                   R"({"source":"swtrig2","width":0.001})");
    expectTexts<SelftestData>(R"({"id":0,"name":"","enable":true,"result":"","state":3})",
                              R"({"id":4,"name":"a","enable":false,"result":"b","state":0})",
                              "state");
    expectTexts<SelftestTestEnable>(R"({"testEnableId":0,"testEnable":0})",
                                    R"({"testEnableId":1,"testEnable":-1})");
    expectTexts<SelftestTestResult>(R"({"testResultId":0,"testResultName":"","testResult":""})",
                                    R"({"testResultId":1,"testResultName":"a","testResult":"b"})");
    expectTexts<SelftestTestState>(R"({"testStateId":0,"testState":3})",
                                   R"({"testStateId":1,"testState":2})", "testState");
    expectTexts<VersionData>(R"({"name":"","version":""})", R"({"name":"a","version":"b"})");
    expectTexts<MdnsResult>(R"({"serialNumber":"","ipAddress":""})",
                            R"({"serialNumber":"a","ipAddress":"b"})");
    expectTexts<FilesystemSpace>(R"({"capacity":"","free":"","available":""})",
                                 R"({"capacity":"3","free":"2","available":"much"})");
    expectTexts<GPS>(
        R"({"Latitude":0.0,"Longitude":0.0,"Altitude":0.0,"Time":0,"Satellites":0,"Status":0})",
        R"({"Latitude":-47.5,"Longitude":8.25,"Altitude":1e-07,"Time":18446744073709551615,)"
        R"("Satellites":-1,"Status":99})");
    expectTexts<WaveformSeqItem>(
        R"({"filePath":"","fileSize":0,"sampleRate":0.0,"iterations":0,"centerFreq":0.0,)"
        R"("outputPower":0.0,"startTime":0.0})",
        R"({"filePath":"a","fileSize":18446744073709551615,"sampleRate":1.5,"iterations":2,)"
        R"("centerFreq":2.5,"outputPower":-3.5,"startTime":4.5})");
}

TEST(Records, Constructors) {
    EXPECT_EQ(written(FanBankData(3, 50)), R"({"bank":3,"speed":50})");
    EXPECT_EQ(written(VersionData("a", "b")), R"({"name":"a","version":"b"})");
    EXPECT_EQ(written(MdnsResult("a", "b")), R"({"serialNumber":"a","ipAddress":"b"})");
    EXPECT_EQ(written(GPS(1, 2, 3, 4, 5, GPS::differentialFix)),
              R"({"Latitude":1.0,"Longitude":2.0,"Altitude":3.0,"Time":4,"Satellites":5,)"
              R"("Status":2})");
    // State and result stand the other way round in the record.
    EXPECT_EQ(written(SelftestData(1, "fans", false, Selftest::passed, "stuck")),
              R"({"id":1,"name":"fans","enable":false,"result":"stuck","state":0})");
}

/// Changing any field alone makes a record unequal to a fresh one.
template <class Record>
void expectAllFieldsCount(std::vector<char const*> const& changes) {
    Record const fresh;
    EXPECT_TRUE(fresh == Record());
    EXPECT_EQ(fresh.members().size(), changes.size());
    auto tree = parsed(written(fresh));
    for (auto const* const text : changes) {
        auto const change = parsed(text);
        auto const& member = *static_cast<MetaData::Object const&>(change).begin();
        auto changed = tree;
        changed[std::string(member.key())] = member.value;
        Record record;
        record.copyFromMetaData(changed);
        EXPECT_FALSE(record == fresh) << text;
        EXPECT_TRUE(record != fresh) << text;
        EXPECT_TRUE(record == Record(record)) << text;
    }
}

TEST(Records, EveryFieldCountsInComparison) {
    expectAllFieldsCount<FruData>(
        {R"({"isPlaceholder":false})", R"({"name":"a"})", R"({"description":"a"})",
         R"({"manufacturer":"a"})", R"({"serialNumber":"a"})", R"({"slot":"slot1"})",
         R"({"lun":"lun1"})", R"({"deviceId":1})", R"({"isAssignable":false})",
         R"({"deviceType":"usb"})", R"({"state":"a"})", R"({"version":"a"})",
         R"({"ipAddress":"a"})"});
    expectAllFieldsCount<SensorData>({R"({"slot":"slot1"})", R"({"lun":"lun1"})",
                                      R"({"deviceId":1})", R"({"number":1})", R"({"name":"a"})",
                                      R"({"bank":0})", R"({"type":"fan"})", R"({"reading":"a"})"});
    expectAllFieldsCount<FanBankData>({R"({"bank":0})", R"({"speed":0})"});
    expectAllFieldsCount<EKeyingEndpoint>({R"({"slot":"slot1"})", R"({"lun":"lun1"})",
                                           R"({"deviceId":1})", R"({"channel":1})",
                                           R"({"group":1})"});
    expectAllFieldsCount<EKeyingLink>({R"({"extension":1})", R"({"type":1})", R"({"iface":1})"});
    expectAllFieldsCount<EKeyingData>(
        {R"({"enabled":true})",
         R"({"source":{"slot":"esm","lun":"lun0","deviceId":0,"channel":1,"group":0}})",
         R"({"destination":{"slot":"esm","lun":"lun0","deviceId":0,"channel":0,"group":1}})",
         R"({"link":{"extension":0,"type":0,"iface":1}})", R"({"group":1})",
         R"({"ports":"ports_1_2"})"});
    expectAllFieldsCount<VersionData>({R"({"name":"a"})", R"({"version":"a"})"});
    expectAllFieldsCount<MdnsResult>({R"({"serialNumber":"a"})", R"({"ipAddress":"a"})"});
}

TEST(Records, ComparisonStopsAtTheFirstDifference) {
    auto const broken = R"({"bank":1})"; // the speed does not read
    EXPECT_FALSE(readFrom<FanBankData>(broken) == FanBankData(2, 0));
    EXPECT_EQ(thrownBy<InvalidOperation>(
                  [&] { (void)(readFrom<FanBankData>(broken) == FanBankData(1, 0)); }),
              "Tolv::MetaData::Reflector::operator()(): speed is not initialized");
}

/// What of `json` a record takes.
template <class Record>
std::string taken(std::string_view json) {
    Record record;
    readInto(record, json);
    return written(record);
}

TEST(Records, BadInputLeavesFieldsOut) {
    auto const sensor = [](std::string const& slot, std::string const& deviceId) {
        return taken<SensorData>(R"({"slot":)" + slot + R"(,"deviceId":)" + deviceId + "}");
    };
    EXPECT_EQ(sensor(R"("pem")", "255"), R"({"slot":"pem","deviceId":255})");
    struct {
        char const* slot;
        char const* deviceId;
        char const* why;
    } const rows[] = {
        {R"("slot9")", "256", "an unknown word; one more than 8 bits hold"},
        {R"("ESM")", "-1", "another case; a negative number"},
        {"1", "0.5", "a number where a word belongs; no integer"},
        {R"("1")", R"("1")", "a number in a word's clothes; a word where a number belongs"},
        {"null", "null", "nothing"},
        {R"(["esm"])", "true", "an array; a boolean"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(sensor(row.slot, row.deviceId), "{}") << row.why;

    EXPECT_EQ(taken<FruData>(R"({"isPlaceholder":0,"isAssignable":"true"})"), "{}");
    EXPECT_EQ(taken<SelftestTestEnable>(R"({"testEnableId":1,"testEnable":true})"),
              R"({"testEnableId":1})");
    EXPECT_EQ(taken<FilesystemSpace>(R"({"capacity":5,"free":"much"})"), R"({"free":"much"})");
    EXPECT_EQ(taken<GPS>(R"({"latitude":1.0,"Longitude":"east","Time":-1,"Status":2147483648})"),
              "{}");
    EXPECT_EQ(taken<FruData>("[]"), "{}");
}

TEST(Records, FailedReadForgetsTheInitialValue) {
    SensorData sensor;
    readInto(sensor, "{}");
    EXPECT_FALSE(sensor.bank.initialized());
    EXPECT_THROW((void)sensor.bank(), InvalidOperation);
    SensorData const copy(sensor);
    EXPECT_EQ(copy.bank(), 0) << "the type's zero, not -1";
    EXPECT_EQ(copy.type(), SensorType::temperature) << "the enumeration's zero, not unknown";
}

TEST(Records, ValueWithoutWordIsNotWritten) {
    FruData fru;
    for (int const number : {6, 13, 253, -1}) {
        fru.slot = static_cast<Slot>(number);
        MetaData::Element element;
        EXPECT_EQ(thrownBy<InvalidEnumValue>([&] { fru.copyToMetaData(element); }),
                  std::to_string(number));
    }
}

TEST(EKeyingData, NestedFieldThatDoesNotRead) {
    auto text = written(EKeyingData());
    text.replace(text.find("esm"), 3, "ESM"); // in the source
    auto const data = readFrom<EKeyingData>(text);
    EXPECT_FALSE(data.source().slot.initialized());
    EXPECT_TRUE(data.source().lun.initialized());
    EXPECT_TRUE(data.destination().slot.initialized());
    EXPECT_THROW((void)(data == data), InvalidOperation);
}

TEST(PcieDomain, RootIsOptional) {
    auto domain = readFrom<PcieDomain>(R"({"endpoints":[]})");
    EXPECT_FALSE(domain.root.initialized());
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { (void)domain.root(); }),
              "Tolv::MetaData::Reflector::operator()(): root is not initialized");
    EXPECT_FALSE(PcieDomain(domain).root.initialized());

    domain.root = PcieDevice();
    EXPECT_EQ(written(domain),
              R"({"root":{"slot":"esm","deviceId":1,"isRoot":false},"endpoints":[]})");
    readInto(domain, "{}");
    EXPECT_EQ(written(domain), "{}") << "a read forgets what the tree doesn't hold";
}

TEST(PcieDomain, EntryThatDoesNotReadIsCopiedAsZero) {
    CapturedOutput const output;
    auto const domain = readFrom<PcieDomain>(R"({"endpoints":[{"slot":"slot3"},{}]})");
    EXPECT_EQ(written(domain), R"({"endpoints":[{"slot":"slot3","deviceId":0,"isRoot":false},)"
                               R"({"slot":"esm","deviceId":0,"isRoot":false}]})");
    EXPECT_EQ(output.text(), "");
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
    EXPECT_EQ(taken<TriggerRoute>(foreign), foreign);
    EXPECT_EQ(readFrom<TriggerRoute>(foreign).getSource(), TriggerSources::none);
    EXPECT_EQ(readFrom<TriggerRoute>(foreign).getOutput(), TriggerOutputs::unknown);
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
              "Tolv::MetaData::Reflector::operator()(): output is not initialized");
    EXPECT_EQ(route.getSource(), TriggerSources::none);
    EXPECT_THROW((void)readFrom<TriggerPulseOffset>("{}").getOffset(), InvalidOperation);
    EXPECT_THROW((void)readFrom<TriggerPulseOffset>("{}").getSource(), InvalidOperation);
    EXPECT_THROW((void)readFrom<TriggerPulseWidth>("{}").getWidth(), InvalidOperation);

    // A setter brings a field back.
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
}

} // namespace
} // namespace Tolv::Msgs::Structs
