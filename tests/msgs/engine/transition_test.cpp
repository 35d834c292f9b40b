#include <tolv/msgs/engine/transition_data.h>

#include <memory>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/engine/messages.h>
#include <tolv/msgs/notifs/messages.h>

#include "support/captured_output.h"
#include "support/messages.h"

namespace Tolv::Msgs::Engine {
namespace {

using namespace Tolv::Testing;

constexpr auto unread =
    "Tolv::MetaData::Reflector::operator()(): param is not initialized in Engine::TransitionData";
// A ping, a connection and a notification.
constexpr auto mixed =
    R"({"event":-3,"param":[{"MessageID":844424930131972},)"
    R"({"MessageID":844424930131969,"Sender":["a"],"Data":{"MaxVersion":3,"MinVersion":2,)"
    R"("BinaryTransmission":false}},{"MessageID":1970324837040129},)"
    R"({"MessageID":844424930131972}]})";

TEST(Transition, ParametersKeepOrderAndClass) {
    auto const message = received<TransitionMessage>(messageText(0x0002000000010007, mixed));
    ASSERT_NE(message, nullptr);
    auto const& param = message->payload().param();
    ASSERT_EQ(param.size(), 4U);
    EXPECT_EQ(classOf(*param[0]), typeid(App::PingMessage));
    EXPECT_EQ(classOf(*param[1]), typeid(App::ConnectMessage));
    EXPECT_EQ(classOf(*param[2]), typeid(SimpleMessageHelper<Notifs::AttrNotification, 1>));
    EXPECT_EQ(classOf(*param[3]), typeid(App::PingMessage));
    EXPECT_TRUE(message->payload().hasParam(3));
    EXPECT_FALSE(message->payload().hasParam(4));
    EXPECT_FALSE(message->payload().hasParam(4294967295U));
    EXPECT_EQ(written(*message), messageText(0x0002000000010007, mixed));
}

TEST(Transition, CopiesShareTheParameters) {
    TransitionData data;
    data.event = 4;
    auto const ping = std::make_shared<App::PingMessage>();
    data.param.edit().push_back(ping);
    data.param.edit().push_back(ping);
    EXPECT_EQ(ping.use_count(), 3);
    TransitionData const copy(data);
    TransitionMessage const message(data);
    TransitionMessage const second(message);
    EXPECT_EQ(copy.param()[0], ping);
    EXPECT_EQ(second.payload().param()[1], ping);
    EXPECT_EQ(ping.use_count(), 9);

    readInto(data, R"({"event":4,"param":[{"MessageID":844424930131972}]})");
    EXPECT_NE(data.param()[0], ping) << "what is read is made anew";
    EXPECT_EQ(copy.param().size(), 2U);
    EXPECT_EQ(copy.param()[0], ping);
}

TEST(Transition, ParametersThatDoNotRead) {
    for (auto const* const param : {
             "null",
             "3",
             R"("a")",
             "{}",
             R"({"0":{"MessageID":844424930131972}})",
             R"([{"MessageID":844424930131972},{"MessageID":844424930132001}])", // no class
             R"([{"MessageID":1970324837040133}])", // attribute notifications end at 4
             R"([{"MessageID":0}])",
             R"([{"MessageID":844424930131972},null])",
             R"([{"MessageID":844424930131972},[{"MessageID":844424930131972}]])",
             R"([{}])",
             R"([844424930131972])",
             R"([{"MessageID":"844424930131972"}])",
         }) {
        SCOPED_TRACE(param);
        CapturedOutput const output;
        TransitionData data;
        data.param.edit().push_back(std::make_shared<App::PingMessage>());
        readInto(data, R"({"event":2,"param":)" + std::string(param) + "}");
        EXPECT_EQ(output.text(), "");
        EXPECT_EQ(data.event(), 2);
        EXPECT_FALSE(data.param.initialized());
        EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { (void)data.hasParam(0); }), unread);
        EXPECT_EQ(written(data), R"({"event":2})");
        EXPECT_TRUE(data.param.edit().empty()) << "nothing half-read stays";

        auto const message = received<TransitionMessage>(messageText(
            TransitionMessage::MsgID(), R"({"event":2,"param":)" + std::string(param) + "}"));
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(written(message->payload()), R"({"event":2})");
    }
    TransitionData data;
    readInto(data, "{}");
    EXPECT_EQ(written(data), "{}");
    // Required fields are set again in a copy.
    EXPECT_EQ(written(TransitionData(data)), R"({"event":0,"param":[]})");
}

TEST(Transition, AReadReleasesTheParametersOnceThereIsAnArray) {
    for (auto const* const text : {"{}", R"([{"MessageID":844424930131972},1])"}) {
        TransitionData::ParamList list;
        list.push_back(std::make_shared<App::PingMessage>());
        EXPECT_THROW(readInto(list, text), Exception::Base);
        EXPECT_EQ(list.empty(), *text == '[') << text;
    }
}

TEST(Transition, ParameterWithoutPayloadStaysOne) {
    constexpr auto text = R"({"event":1,"param":[{"MessageID":844424930131969}]})";
    TransitionData data;
    readInto(data, text);
    ASSERT_TRUE(data.hasParam(0));
    auto const connect = std::dynamic_pointer_cast<App::ConnectMessage>(data.param()[0]);
    ASSERT_NE(connect, nullptr);
    EXPECT_FALSE(connect->Data.initialized());
    EXPECT_EQ(written(data), text);
}

TEST(Transition, NullParameterIsRefused) {
    TransitionData data;
    data.param.edit().push_back(std::make_shared<App::PingMessage>());
    data.param.edit().push_back(nullptr);
    EXPECT_NE(thrownBy<Exception::InvalidOperation>([&] { written(data); }).find("entry 1"),
              std::string::npos);
}

TEST(Transition, ListWritesOverWhatIsThere) {
    TransitionData data;
    auto tree = parsed(mixed); // a longer list
    data.param.edit().push_back(std::make_shared<App::PingMessage>());
    data.copyToMetaData(tree);
    EXPECT_EQ(textOf(tree), R"({"event":1,"param":[{"MessageID":844424930131972}]})");
}

} // namespace
} // namespace Tolv::Msgs::Engine
