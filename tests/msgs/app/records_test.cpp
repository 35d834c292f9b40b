#include <initializer_list>
#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <tolv/msgs/app/messages.h>

#include "support/messages.h"

// What the records of applications do beyond the rules that catalogue_test.cpp and fields_test.cpp
// check for all classes.
namespace Tolv::Msgs::App {
namespace {

using namespace Tolv::Testing;
using Type = HardwareComponent::HardwareComponentType;

TEST(AppRecords, ArgumentsReachTheirKeys) {
    PingData ping;
    ping.setMaxVersion(4);
    ping.setMinVersion(2);
    ping.setMessageType(4294967295U);
    ping.setSupportsBinary(true);
    SystemInfoResponseData info;
    info.setName("a");
    info.setUuid("b");
    info.setDescription("c");
    info.setSerialNumber("d");
    EXPECT_EQ(info.name() + info.uuid() + info.description() + info.serialNumber(), "abcd");
    AppLocationData location;
    location.setLocation("a");
    EXPECT_EQ(location.location(), "a");
    for (auto const& [found, expected] : std::initializer_list<std::pair<std::string, char const*>>{
             {written(Connect(4, -2, false)),
              R"({"MaxVersion":4,"MinVersion":-2,"BinaryTransmission":false})"},
             {written(Connected(4, 2, 3, false)),
              R"({"MaxVersion":4,"MinVersion":2,"VersionToUse":3,"BinaryTransmission":false})"},
             {written(ping),
              R"({"MaxVersion":4,"MinVersion":2,"MessageType":4294967295,"SupportsBinary":true})"},
             {written(info), R"({"Name":"a","UUID":"b","Description":"c","SerialNumber":"d"})"},
             {written(InstalledAppData("a", "b")), R"({"Name":"a","ID":"b"})"},
             {written(InstantiateAppCommandData("a", "b")), R"({"Name":"a","ID":"b"})"},
             {written(ConnectToAppCommandData("a")), R"({"UUID":"a"})"},
             {written(ConnectToAppResultData(false, 7)), R"({"Port":7,"Result":false,"UUID":""})"},
             {written(ConnectToAppResultData(true)), R"({"Port":0,"Result":true,"UUID":""})"},
             {written(ConnectToAppResultData(false)), R"({"Port":0,"Result":false,"UUID":""})"},
             // A port alone is a success, 0 too.
             {written(ConnectToAppResultData(5025)), R"({"Port":5025,"Result":true,"UUID":""})"},
             {written(ConnectToAppResultData(0)), R"({"Port":0,"Result":true,"UUID":""})"},
             {written(AppPropertiesResponseData::IconData("a", "b")),
              R"({"Type":"a","Image":"b"})"},
             {written(QmlFileRequestData("a", "b")), R"({"ApplicationType":"a","FileName":"b"})"},
             {written(QmlFileResponseData("a", 4294967297, 4294967298, "b")),
              R"({"FileName":"a","FileOffset":4294967297,"FileSize":4294967298,"Content":"b"})"},
             {written(ResourceData("a", "b", "c", "d", "e")),
              R"({"Name":"a","ID":"b","Type":"c","Position":"d","InUseBy":"e"})"},
             {written(HardwareComponent(Type{7}, 2, 3)), R"({"Type":7,"Position":2,"Width":3})"},
             {written(HardwareComponent(Type{}, 2, 3, "")),
              R"({"Type":0,"Position":2,"Width":3,"ResourceID":""})"},
             {written(HardwareConfiguration(6)), R"({"Divisions":6,"ComponentList":[]})"},
             {written(HardwareModule("a", "b")), R"({"Make":"a","Model":"b"})"},
             {written(ChassisInformation("a", "b")), R"({"Make":"a","Model":"b"})"},
         })
        EXPECT_EQ(found, expected);
}

// What was read before the failure is reset too.
TEST(AppRecords, WrittenByHandAreWholeOrNew) {
    auto const ping = received<PingAnswerMessage>(
        messageText(PingAnswerMessage::MsgID(),
                    R"({"MaxVersion":3,"MinVersion":2,"MessageType":1,"SupportsBinary":1})"));
    auto const info = received<SystemInfoResponseMessage>(
        messageText(SystemInfoResponseMessage::MsgID(),
                    R"({"Name":"a","UUID":"b","Description":"c","SerialNumber":1})"));
    EXPECT_FALSE(ping->Data.initialized());
    EXPECT_FALSE(info->Data.initialized());
    EXPECT_EQ(written(ping->editPayload()), written(PingData()));
    EXPECT_EQ(written(info->editPayload()), written(SystemInfoResponseData()));
}

TEST(AppRecords, FailureCarriesAWholeErrorMessage) {
    ResultData failed;
    failed.setError({Errs::GenericErrorData::ErrorLevel::error,
                     Errs::GenericErrorData::ErrorCategory::application, 12, "no such version",
                     "2026-01-01T00:00:00Z"});
    auto const read = sent(InstantiateAppResultMessage(failed, {"service"}, {"client"}));
    ASSERT_NE(read, nullptr);
    EXPECT_FALSE(read->payload().result());
    auto const error =
        std::dynamic_pointer_cast<Errs::GenericErrorMessage>(read->payload().error.pointer());
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->payload().errorDescription(), "no such version");
}

// A module in a list whose configuration was reset has none, not an empty one.
TEST(AppRecords, OptionalPartsOfAnEntryStayAway) {
    constexpr auto text = R"({"Make":"a","Model":"b","ModuleList":[{"Make":"c","Model":"d"}]})";
    ChassisInformation chassis;
    readInto(chassis, text);
    EXPECT_FALSE(chassis.moduleList().front().configuration.initialized());
    EXPECT_EQ(written(chassis), text);
}

} // namespace
} // namespace Tolv::Msgs::App
