#include <tolv/msgs/app/connection.h>

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/catalogue.h>
#include "support/trees.h"

namespace Tolv::Msgs::App {
namespace {

using Testing::parsed;
using Testing::readInto;
using Testing::thrownBy;
using Testing::written;

std::string messageText(unsigned long long number, std::string const& rest = "") {
    return "{\"MessageID\":" + std::to_string(0x0003000000000000 + number) + rest + '}';
}

std::shared_ptr<Message> created(unsigned long long number, std::string const& rest = "") {
    return Message::CreateFromMetaData(parsed(messageText(number, rest)));
}

TEST(Connection, DefaultsAsText) {
    EXPECT_EQ(written(Connect()), R"({"MaxVersion":1,"MinVersion":1,"BinaryTransmission":true})");
    EXPECT_EQ(written(Connected()),
              R"({"MaxVersion":1,"MinVersion":1,"VersionToUse":1,"BinaryTransmission":true})");
    EXPECT_EQ(written(PingData()),
              R"({"MaxVersion":0,"MinVersion":0,"MessageType":0,"SupportsBinary":false})");
}

TEST(Connection, ArgumentsReachTheirKeys) {
    EXPECT_EQ(written(Connect(4, -2, false)),
              R"({"MaxVersion":4,"MinVersion":-2,"BinaryTransmission":false})");
    EXPECT_EQ(written(Connected(4, 2, 3, false)),
              R"({"MaxVersion":4,"MinVersion":2,"VersionToUse":3,"BinaryTransmission":false})");
    PingData ping;
    ping.setMaxVersion(4);
    ping.setMinVersion(2);
    ping.setMessageType(4294967295U);
    ping.setSupportsBinary(true);
    EXPECT_EQ(written(ping),
              R"({"MaxVersion":4,"MinVersion":2,"MessageType":4294967295,"SupportsBinary":true})");
    PingData read;
    readInto(read, written(ping));
    EXPECT_EQ(written(read), written(ping));
}

TEST(Connection, TheMessagesHaveTheirNumbers) {
    struct Row {
        char const* alias;
        unsigned int number;
        Identifier const& id;
    };
    for (auto const& row : std::vector<Row>{
             {"ConnectMessage", 1, ConnectMessage::MsgID()},
             {"ConnectedMessage", 2, ConnectedMessage::MsgID()},
             {"PingAnswerMessage", 3, PingAnswerMessage::MsgID()},
             {"PingMessage", 4, PingMessage::MsgID()},
             {"SystemInfoRequestMessage", 9, SystemInfoRequestMessage::MsgID()},
             {"InstalledAppsRequestMessage", 11, InstalledAppsRequestMessage::MsgID()},
             {"AppListRequestMessage", 27, AppListRequestMessage::MsgID()},
             {"ResourcesRequestMessage", 20480, ResourcesRequestMessage::MsgID()},
             {"ChassisInformationRequestMessage", 28672, ChassisInformationRequestMessage::MsgID()},
         }) {
        SCOPED_TRACE(row.alias);
        EXPECT_EQ(row.id, 0x0003000000000000ULL + row.number);
        auto const* const known = findMessage(row.alias);
        ASSERT_NE(known, nullptr);
        EXPECT_EQ(known->id, row.id);
        EXPECT_NE(created(row.number), nullptr);
    }
    // The table names these by number only.
    for (auto const number : {4096ULL, 16384ULL, 36864ULL}) {
        ASSERT_NE(created(number), nullptr) << number;
        EXPECT_EQ(written(*created(number, R"(,"Data":{})")), messageText(number));
    }
    for (auto const number : {0ULL, 29ULL, 4095ULL, 0x2000ULL, 0x3000ULL, 0xFFFFULL})
        EXPECT_EQ(created(number), nullptr) << number;
    EXPECT_EQ(AppMessage::MsgID(), 0x000300000000FFFFULL);
}

TEST(Connection, PayloadsSayAtTheEndWhetherTheyRead) {
    constexpr auto pingData =
        R"(,"Data":{"MaxVersion":3,"MinVersion":2,"MessageType":1,"SupportsBinary":true})";
    struct Row {
        char const* why;
        unsigned int number;
        std::string rest;
        std::string after; ///< what the message writes behind its id
    };
    for (auto const& row : std::vector<Row>{
             {"a request needs no data", 4, "", ""},
             {"and shows none", 4, pingData, ""},
             {"its answer needs all", 3, pingData, pingData},
             {"no data", 3, "", ""},
             {"the last key missing", 3,
              R"(,"Data":{"MaxVersion":3,"MinVersion":2,"MessageType":1})", ""},
             {"the first key missing", 3,
              R"(,"Data":{"MinVersion":2,"MessageType":1,"SupportsBinary":true})", ""},
             {"a number for a truth value", 3,
              R"(,"Data":{"MaxVersion":3,"MinVersion":2,"MessageType":1,"SupportsBinary":1})", ""},
             {"negative", 3,
              R"(,"Data":{"MaxVersion":-3,"MinVersion":2,"MessageType":1,"SupportsBinary":true})",
              ""},
             {"no object", 3, R"(,"Data":3)", ""},
             {"fields of a record stand alone", 1, R"(,"Data":{"MaxVersion":"3","MinVersion":2})",
              R"(,"Data":{"MinVersion":2})"},
             {"a record of nothing", 2, R"(,"Data":{})", R"(,"Data":{})"},
         }) {
        SCOPED_TRACE(row.why);
        auto const message = created(row.number, row.rest);
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(written(*message), messageText(row.number, row.after));
    }
}

TEST(Connection, AnUnreadPingIsZero) {
    auto const message = std::dynamic_pointer_cast<PingAnswerMessage>(
        created(3, R"(,"Data":{"MaxVersion":3,"MinVersion":2,"MessageType":1})"));
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { (void)message->payload(); }),
              "Tolv::MetaData::Reflector::operator()(): Data is not initialized");
    EXPECT_EQ(written(message->editPayload()), written(PingData()));
}

} // namespace
} // namespace Tolv::Msgs::App
