#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/structs/places.h>
#include <tolv/msgs/structs/services.h>
#include <tolv/msgs/structs/triggers.h>

#include "support/trees.h"

namespace Tolv::Msgs::Structs {
namespace {

using namespace Tolv::Testing;
using Exception::InvalidEnumValue;
using Exception::InvalidParameter;

template <class E>
std::string printed(E value) {
    std::ostringstream stream;
    stream << value;
    return stream.str();
}

/// The literals in a text, with the values 0, 1, ...; `=number` sets the next value.
std::vector<std::pair<std::string, int>> listed(std::string const& text) {
    std::vector<std::pair<std::string, int>> words;
    std::istringstream stream(text);
    int next = 0;
    for (std::string word; stream >> word; ++next) {
        if (auto const number = word.find('='); number != word.npos) {
            next = std::stoi(word.substr(number + 1));
            word.resize(number);
        }
        words.emplace_back(word, next);
    }
    return words;
}

/// The whole content of a table, both ways.
template <class E>
void expectTable(EnumStringsThrow<E> const& table, std::string const& words) {
    auto const rows = listed(words);
    EXPECT_EQ(table.size(), rows.size()) << words;
    for (auto const& [word, number] : rows) {
        auto const value = static_cast<E>(number);
        EXPECT_EQ(table.literal(value), word);
        EXPECT_EQ(static_cast<int>(table.value(word)), number) << word;
        EXPECT_EQ(printed(value), word);
    }
    auto const outside = static_cast<E>(300);
    EXPECT_EQ(thrownBy<InvalidEnumValue>([&] { (void)table.literal(outside); }), "300");
    EXPECT_EQ(printed(outside), "300");
}

TEST(Enumerations, AllTables) {
    expectTable(SlotEnums, "esm slot1 slot2 slot3 slot4 slot5 pem=14 backplane ipass=254");
    expectTable(LunEnums, "lun0 lun1 lun2 lun3");
    expectTable(PortsEnums, "ports_1 ports_1_2 ports_1_2_3_4");
    expectTable(RootComplexEnums, "auto esm slot1 slot2 slot3 slot4 slot5 ipass");
    expectTable(PowerActionEnums, "shutdown cycle");
    expectTable(DeviceTypeEnums, "fru fanBank usb wifi");
    expectTable(SensorTypeEnums, "temperature fan voltage current lock_detect unknown");
    expectTable(PcieDomainConfigModeEnums, "singleDomain multiDomain");
    expectTable(NetworkModeStrings, "dhcp static");
    expectTable(UpdateModeEnums, "usb ipAddress filePath");
    expectTable(FileModeEnums, "input output append inputBinary outputBinary appendBinary");
    expectTable(SeekTypeEnums, "input output");
    expectTable(FileTypeEnums, "notFound regular directory unknown");
    expectTable(PtpUdpVersionEnums, "udp4 udp6");
}

/// Checks the literals of a trigger enumeration in both directions, and that there are no others.
template <class E>
void expectWords(std::string const& text, auto const& map) {
    auto const words = listed(text);
    for (auto const& [word, number] : words) {
        EXPECT_EQ(map(static_cast<E>(number)), word) << number;
        EXPECT_EQ(static_cast<int>(map(word)), number) << word;
        EXPECT_EQ(printed(static_cast<E>(number)), word);
    }
    for (int const outside : {words.front().second - 1, words.back().second + 1})
        EXPECT_EQ(printed(static_cast<E>(outside)), std::to_string(outside));
}

TEST(TriggerWords, AllTables) {
    expectWords<TriggerSources>(
        "none logicHigh logicLow trig0 trig1 trig2 trig3 trig4 trig5 trig6 trig7 trig8 trig9 "
        "trig10 trig11 strig1 strig2 strig3 strig4 strig5 tstrig swtrig1 swtrig2 exttrig gps1pps",
        [](auto const& of) { return mapTriggerSource(of); });
    expectWords<TriggerOutputs>(
        "trig0=1 trig1 trig2 trig3 trig4 trig5 trig6 trig7 trig8 trig9 trig10 trig11 strig1 "
        "strig2 strig3 strig4 strig5 exttrig",
        [](auto const& of) { return mapTriggerOutput(of); });
    expectWords<SyncMuxInput>("msosync msisync refclock synctrigin ground",
                              [](auto const& of) { return mapSyncMuxInput(of); });
    expectWords<RefClockDivider>("/10 /100 /1000 /100_000_000",
                                 [](auto const& of) { return mapRefClockDivider(of); });
    expectWords<PolaritySelect>("normal invert",
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
