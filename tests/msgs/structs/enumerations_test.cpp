#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/structs/places.h>
#include <tolv/msgs/structs/services.h>
#include <tolv/msgs/structs/triggers.h>

#include "support/trees.h"

namespace Tolv::Msgs::Structs {
namespace {

using namespace Tolv::Testing;
using Exception::InvalidEnumLiteral;
using Exception::InvalidEnumValue;
using Exception::InvalidParameter;

template <class E>
std::string printed(E value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

/// The whole content of a table, both ways.
template <class E>
void expectTable(EnumStringsThrow<E> const& table,
                 std::initializer_list<std::pair<char const*, int>> rows) {
    EXPECT_EQ(table.size(), rows.size());
    for (auto const& [literal, number] : rows) {
        auto const value = static_cast<E>(number);
        EXPECT_EQ(table.literal(value), literal);
        EXPECT_EQ(static_cast<int>(table.value(literal)), number) << literal;
        EXPECT_EQ(printed(value), literal);
    }
    auto const outside = static_cast<E>(300);
    EXPECT_EQ(thrownBy<InvalidEnumValue>([&] { (void)table.literal(outside); }), "300");
    EXPECT_EQ(printed(outside), "300");
}

TEST(Enumerations, AllTables) {
    expectTable(SlotEnums, {{"esm", 0},
                            {"slot1", 1},
                            {"slot2", 2},
                            {"slot3", 3},
                            {"slot4", 4},
                            {"slot5", 5},
                            {"pem", 14},
                            {"backplane", 15},
                            {"ipass", 254}});
    expectTable(LunEnums, {{"lun0", 0}, {"lun1", 1}, {"lun2", 2}, {"lun3", 3}});
    expectTable(PortsEnums, {{"ports_1", 0}, {"ports_1_2", 1}, {"ports_1_2_3_4", 2}});
    expectTable(RootComplexEnums, {{"auto", 0},
                                   {"esm", 1},
                                   {"slot1", 2},
                                   {"slot2", 3},
                                   {"slot3", 4},
                                   {"slot4", 5},
                                   {"slot5", 6},
                                   {"ipass", 7}});
    expectTable(PowerActionEnums, {{"shutdown", 0}, {"cycle", 1}});
    expectTable(DeviceTypeEnums, {{"fru", 0}, {"fanBank", 1}, {"usb", 2}, {"wifi", 3}});
    expectTable(SensorTypeEnums, {{"temperature", 0},
                                  {"fan", 1},
                                  {"voltage", 2},
                                  {"current", 3},
                                  {"lock_detect", 4},
                                  {"unknown", 5}});
    expectTable(PcieDomainConfigModeEnums, {{"singleDomain", 0}, {"multiDomain", 1}});
    expectTable(NetworkModeStrings, {{"dhcp", 0}, {"static", 1}});
    expectTable(UpdateModeEnums, {{"usb", 0}, {"ipAddress", 1}, {"filePath", 2}});
    expectTable(FileModeEnums, {{"input", 0},
                                {"output", 1},
                                {"append", 2},
                                {"inputBinary", 3},
                                {"outputBinary", 4},
                                {"appendBinary", 5}});
    expectTable(SeekTypeEnums, {{"input", 0}, {"output", 1}});
    expectTable(FileTypeEnums, {{"notFound", 0}, {"regular", 1}, {"directory", 2}, {"unknown", 3}});
    expectTable(PtpUdpVersionEnums, {{"udp4", 0}, {"udp6", 1}});
}

TEST(Enumerations, NoOtherWordIsKnown) {
    struct {
        char const* word;
        char const* why;
    } const rows[] = {
        {"", "nothing"},         {"ESM", "capitals"},         {"esm ", "not trimmed"},
        {"0", "a number"},       {"slot6", "no such slot"},   {"auto", "of another table"},
        {"slot", "a beginning"}, {"slot11", "a longer word"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(thrownBy<InvalidEnumLiteral>([&] { (void)SlotEnums.value(row.word); }), row.word)
            << row.why;
    EXPECT_EQ(thrownBy<InvalidEnumLiteral>([] { (void)LunEnums.value("lun4"); }), "lun4");
    for (int number = 6; number <= 13; ++number)
        EXPECT_EQ(SlotEnums.tryLiteral(static_cast<Slot>(number)), nullptr) << number;
    EXPECT_EQ(thrownBy<InvalidEnumValue>([] { (void)SlotEnums.literal(static_cast<Slot>(-1)); }),
              "-1");
    EXPECT_EQ(*SlotEnums.tryValue(std::string_view("slot1 to slot5", 5)), Slot::slot1);
}

TEST(Enumerations, TravelAsWords) {
    MetaData::Element element;
    MetaData::SetAs<Slot>(Slot::ipass, element);
    EXPECT_EQ(textOf(element), R"("ipass")");
    EXPECT_EQ(MetaData::GetAs<Slot>(element), Slot::ipass);
    EXPECT_EQ(thrownBy<InvalidEnumLiteral>([&] { (void)MetaData::GetAs<Lun>(element); }), "ipass");
    EXPECT_EQ(MetaData::GetAs<SensorType>(parsed(R"("lock_detect")")), SensorType::lockDetect);
    EXPECT_THROW((void)MetaData::GetAs<DeviceType>(parsed("0")), InvalidParameter);
    EXPECT_EQ(
        thrownBy<InvalidEnumValue>([&] { MetaData::SetAs<Ports>(static_cast<Ports>(3), element); }),
        "3");
    EXPECT_EQ(textOf(element), R"("ipass")") << "a refused value leaves the element";
}

/// The words of a trigger enumeration from `first` on, both ways.
template <class E>
void expectWords(int first, std::initializer_list<char const*> words, auto const& map) {
    auto number = first;
    for (auto const* const word : words) {
        EXPECT_EQ(map(static_cast<E>(number)), std::string(word)) << number;
        EXPECT_EQ(static_cast<int>(map(std::string(word))), number) << word;
        EXPECT_EQ(printed(static_cast<E>(number)), word);
        ++number;
    }
    EXPECT_EQ(printed(static_cast<E>(number)), std::to_string(number));
    EXPECT_EQ(printed(static_cast<E>(first - 1)), std::to_string(first - 1));
}

TEST(TriggerWords, AllTables) {
    expectWords<TriggerSources>(0, {"none",   "logicHigh", "logicLow", "trig0",   "trig1",
                                    "trig2",  "trig3",     "trig4",    "trig5",   "trig6",
                                    "trig7",  "trig8",     "trig9",    "trig10",  "trig11",
                                    "strig1", "strig2",    "strig3",   "strig4",  "strig5",
                                    "tstrig", "swtrig1",   "swtrig2",  "exttrig", "gps1pps"},
                                [](auto const& of) { return mapTriggerSource(of); });
    expectWords<TriggerOutputs>(1,
                                {"trig0", "trig1", "trig2", "trig3", "trig4", "trig5", "trig6",
                                 "trig7", "trig8", "trig9", "trig10", "trig11", "strig1", "strig2",
                                 "strig3", "strig4", "strig5", "exttrig"},
                                [](auto const& of) { return mapTriggerOutput(of); });
    expectWords<SyncMuxInput>(0, {"msosync", "msisync", "refclock", "synctrigin", "ground"},
                              [](auto const& of) { return mapSyncMuxInput(of); });
    expectWords<RefClockDivider>(0, {"/10", "/100", "/1000", "/100_000_000"},
                                 [](auto const& of) { return mapRefClockDivider(of); });
    expectWords<PolaritySelect>(0, {"normal", "invert"},
                                [](auto const& of) { return mapPolaritySelect(of); });

    EXPECT_EQ(mapTriggerSource("strig5"), TriggerSources::strig5);
    EXPECT_EQ(mapTriggerSource("trig11"), TriggerSources::trig11);
    EXPECT_EQ(mapTriggerOutput("trig11"), TriggerOutputs::trig11);
    EXPECT_EQ(mapRefClockDivider("/100_000_000"), RefClockDivider::by100000000);
}

TEST(TriggerWords, FallBack) {
    for (auto const* const word : {"", "trig12", "Trig0", " trig0", "unknown", "strig0"}) {
        EXPECT_EQ(mapTriggerSource(word), TriggerSources::none) << word;
        EXPECT_EQ(mapTriggerOutput(word), TriggerOutputs::unknown) << word;
    }
    for (auto const* const word :
         {"none", "logicHigh", "logicLow", "tstrig", "swtrig1", "swtrig2", "gps1pps"})
        EXPECT_EQ(mapTriggerOutput(word), TriggerOutputs::unknown) << word;
    for (int const number : {-1, 25, 1000})
        EXPECT_EQ(mapTriggerSource(static_cast<TriggerSources>(number)), "none") << number;
    for (int const number : {-1, 0, 19, 1000})
        EXPECT_EQ(mapTriggerOutput(static_cast<TriggerOutputs>(number)), "unknown") << number;
}

TEST(TriggerWords, SelectorsRefuse) {
    for (int const number : {-1, 5, 1000}) {
        EXPECT_EQ(thrownBy<InvalidParameter>(
                      [&] { (void)mapSyncMuxInput(static_cast<SyncMuxInput>(number)); }),
                  "invalid sync mux input");
        EXPECT_EQ(thrownBy<InvalidParameter>(
                      [&] { (void)mapRefClockDivider(static_cast<RefClockDivider>(number)); }),
                  "invalid ref clock divider");
        EXPECT_EQ(thrownBy<InvalidParameter>(
                      [&] { (void)mapPolaritySelect(static_cast<PolaritySelect>(number)); }),
                  "invalid polarity select");
    }
    for (std::string const word : {"", "Ground", "/100000000", "normal "}) {
        EXPECT_EQ(thrownBy<InvalidParameter>([&] { (void)mapSyncMuxInput(word); }),
                  "invalid sync mux input: " + word);
        EXPECT_EQ(thrownBy<InvalidParameter>([&] { (void)mapRefClockDivider(word); }),
                  "invalid ref clock divider: " + word);
        EXPECT_EQ(thrownBy<InvalidParameter>([&] { (void)mapPolaritySelect(word); }),
                  "invalid polarity select: " + word);
    }
}

} // namespace
} // namespace Tolv::Msgs::Structs
