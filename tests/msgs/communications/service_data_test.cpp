#include <tolv/msgs/communications/service_data.h>

#include <string>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>

#include "support/messages.h"

namespace Tolv::Msgs::Communications::Forwarder {
namespace {

using namespace Tolv::Testing;
using Structs::MessageKeyData;

constexpr auto full =
    R"({"MsgKey":{"MessageID":18446744073709551615,"Sender":["a","b"],"Destination":["c"]},)"
    R"("Count":18446744073709551615,"ShortestDistance":9223372036854775808})";
constexpr auto unreadKey = "Tolv::MetaData::Reflector::operator()(): MsgKey is not initialized in "
                           "Communications::Forwarder::ServiceData";

TEST(ServiceData, IsMadeOfAKey) {
    MessageKey const key(5, {"a"}, {"b", "c"});
    constexpr auto keyText = R"({"MessageID":5,"Sender":["a"],"Destination":["b","c"]})";
    EXPECT_EQ(written(MessageKeyData(key)), keyText);
    EXPECT_EQ(written(MessageKeyData(5, {"a"}, {"b", "c"})), keyText);
    EXPECT_EQ(written(ServiceData(key, 0, 18446744073709551615U)),
              R"({"MsgKey":)" + std::string(keyText) +
                  R"(,"Count":0,"ShortestDistance":18446744073709551615})");
    // Empty addresses are written; those of a message are not.
    EXPECT_EQ(written(MessageKeyData(MessageKey(0, {}, {}, {}))),
              R"({"MessageID":0,"Sender":[],"Destination":[]})");
}

TEST(ServiceData, WithoutKeyIsNotCopied) {
    ServiceData data;
    readInto(data, R"({"Count":3})");
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { ServiceData const copy(data); }),
              unreadKey);
    // Assignment differs: a required field gets its default.
    ServiceData other;
    readInto(other, full);
    other = data;
    EXPECT_EQ(written(other), R"({"MsgKey":{"MessageID":0,"Sender":[],"Destination":[]},)"
                              R"("Count":3,"ShortestDistance":0})");
    // An absent count is 0 in a copy, not the 1 of a new record.
    readInto(data, R"({"MsgKey":{"MessageID":1,"Sender":[],"Destination":[]}})");
    EXPECT_EQ(written(ServiceData(data)), R"({"MsgKey":{"MessageID":1,"Sender":[],)"
                                          R"("Destination":[]},"Count":0,"ShortestDistance":0})");
}

} // namespace
} // namespace Tolv::Msgs::Communications::Forwarder
