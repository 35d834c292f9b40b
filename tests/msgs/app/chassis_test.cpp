#include <tolv/msgs/app/chassis.h>

#include <string>

#include <gtest/gtest.h>

#include <tolv/msgs/app/messages.h>

#include "support/messages.h"
#include "support/records.h"

namespace Tolv::Msgs::App {
namespace {

using namespace Tolv::Testing;
using Type = HardwareComponent::HardwareComponentType;

constexpr auto fullModule =
    R"({"Make":"c","Model":"d","Configuration":{"Divisions":4,"ComponentList":[)"
    R"({"Type":-1,"Position":2147483647,"Width":-3,"ResourceID":""}]}})";

TEST(Chassis, Texts) {
    expectTexts<SystemInfoResponseData>(
        R"({"Name":"","UUID":"","Description":"","SerialNumber":""})",
        R"({"Name":"a","UUID":"b","Description":"c","SerialNumber":"d"})");
    // "Position" is a text here and a number in a component.
    expectTexts<ResourceData>(R"({"Name":"","ID":"","Type":"","Position":"","InUseBy":""})",
                              R"({"Name":"a","ID":"b","Type":"c","Position":"d","InUseBy":"e"})");
    expectTexts<Resources>(
        R"({"Resources":[]})",
        R"({"Resources":[{"Name":"a","ID":"b","Type":"c","Position":"d","InUseBy":""}]})");
    expectTexts<HardwareComponent>(R"({"Type":1,"Position":0,"Width":0})",
                                   R"({"Type":99,"Position":1,"Width":2,"ResourceID":"a"})");
    expectTexts<HardwareConfiguration>(
        R"({"Divisions":0,"ComponentList":[]})",
        R"({"Divisions":2,"ComponentList":[{"Type":0,"Position":1,"Width":2},)"
        R"({"Type":3,"Position":4,"Width":5,"ResourceID":"a"}]})");
    expectTexts<HardwareModule>(R"({"Make":"","Model":""})", fullModule);
    expectTexts<ChassisInformation>(
        R"({"Make":"","Model":""})",
        R"({"Make":"a","Model":"b","ModuleList":[{"Make":"","Model":""},)" +
            std::string(fullModule) + "]}");
}

TEST(Chassis, Constructors) {
    EXPECT_EQ(written(ResourceData("a", "b", "c", "d", "e")),
              R"({"Name":"a","ID":"b","Type":"c","Position":"d","InUseBy":"e"})");
    EXPECT_EQ(written(HardwareComponent(Type{7}, 2, 3)), R"({"Type":7,"Position":2,"Width":3})");
    EXPECT_EQ(written(HardwareComponent(Type{}, 2, 3, "")),
              R"({"Type":0,"Position":2,"Width":3,"ResourceID":""})");
    EXPECT_EQ(written(HardwareConfiguration(6)), R"({"Divisions":6,"ComponentList":[]})");
    EXPECT_EQ(written(HardwareModule("a", "b")), R"({"Make":"a","Model":"b"})");
    EXPECT_EQ(written(ChassisInformation("a", "b")), R"({"Make":"a","Model":"b"})");
    SystemInfoResponseData info;
    info.setName("a");
    info.setUuid("b");
    info.setDescription("c");
    info.setSerialNumber("d");
    EXPECT_EQ(info.name() + info.uuid() + info.description() + info.serialNumber(), "abcd");
}

TEST(Chassis, ComponentThatDidNotReadHasTypeZeroInACopy) {
    HardwareComponent component;
    readInto(component, "{}");
    EXPECT_EQ(written(component), "{}");
    EXPECT_EQ(written(HardwareComponent(component)), R"({"Type":0,"Position":0,"Width":0})");
}

// A module in a list that lost its configuration has none, and not an empty one.
TEST(Chassis, OptionalPartsStayAway) {
    constexpr auto text = R"({"Make":"a","Model":"b","ModuleList":[{"Make":"c","Model":"d"}]})";
    ChassisInformation chassis;
    readInto(chassis, text);
    EXPECT_FALSE(chassis.moduleList().front().configuration.initialized());
    EXPECT_EQ(written(chassis), text);
    readInto(chassis, R"({"Make":"a","Model":"b"})");
    EXPECT_FALSE(chassis.moduleList.initialized());
}

TEST(Chassis, SystemInformationIsWholeOrNot) {
    auto const whole = parsed(R"({"Name":"a","UUID":"b","Description":"c","SerialNumber":"d"})");
    auto const one = parsed("1");
    for (auto const* const key : {"Name", "UUID", "Description", "SerialNumber"}) {
        for (auto const* const value : {static_cast<MetaData::Element const*>(nullptr), &one}) {
            auto const text = messageText(SystemInfoResponseMessage::MsgID(),
                                          textOf(withChild(whole, key, value)));
            auto const message = received<SystemInfoResponseMessage>(text);
            ASSERT_NE(message, nullptr);
            EXPECT_FALSE(message->Data.initialized());
            // Also what had been read before the failure is gone.
            EXPECT_EQ(message->editPayload().name(), "");
            EXPECT_EQ(written(message->payload()),
                      R"({"Name":"","UUID":"","Description":"","SerialNumber":""})");
        }
    }
}

} // namespace
} // namespace Tolv::Msgs::App
