#include <memory>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include <tolv/msgs/errs/messages.h>
#include <tolv/msgs/notifs/messages.h>
#include <tolv/msgs/sys/messages.h>

#include "support/captured_output.h"
#include "support/messages.h"

namespace Tolv::Msgs::Notifs {
namespace {

using namespace Tolv::Testing;

constexpr unsigned long long errorId = 0x0007000000030007;
constexpr auto error =
    R"({"Error":{"MessageID":1407374883553281,"Data":{"ErrorLevel":2,"ErrorCategory":1,)"
    R"("ErrorNumber":7,"ErrorDescription":"a","Timestamp":"b"}}})";

TEST(Notifications, TellWhatTheyAreAbout) {
    for (unsigned short category = 1; category <= 3; ++category) {
        for (unsigned short type = 1; type <= (category == 3 ? 7 : 4); ++type) {
            auto const id = Identifier::toValue(7, 0, category, type);
            auto const read = received<Notification>(messageText(id, ""));
            ASSERT_NE(read, nullptr) << id;
            EXPECT_EQ(read->notifCategory(), category);
            EXPECT_EQ(read->notifType(), type);
            EXPECT_EQ(dynamic_cast<AttrNotification*>(read.get()) != nullptr, category == 1);
            EXPECT_EQ(dynamic_cast<AppNotification*>(read.get()) != nullptr, category == 2);
            EXPECT_EQ(dynamic_cast<SystemNotification*>(read.get()) != nullptr, category == 3);
        }
    }
    SimpleMessageHelper<AppNotification, 4> const made({"a"}, {});
    EXPECT_EQ(made.notifCategory(), 2);
    EXPECT_EQ(made.notifType(), 4);
    EXPECT_EQ(written(made), R"({"MessageID":1970324837105668,"Sender":["a"]})");
}

TEST(Notifications, WithoutPayloadDropData) {
    auto const read = received(messageText(0x0007000000030006, error));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(written(*read), messageText(0x0007000000030006, ""));
}

TEST(Notifications, AndSystemMessagesAreDistinct) {
    auto const system = received(messageText(0x0001000000000001, ""));
    auto const notification = received(messageText(0x0007000000030001, ""));
    ASSERT_NE(system, nullptr);
    ASSERT_NE(notification, nullptr);
    EXPECT_EQ(classOf(*system), typeid(SimpleMessageHelper<Sys::SystemMessage, 1>));
    EXPECT_EQ(classOf(*notification), typeid(SimpleMessageHelper<SystemNotification, 1>));
}

TEST(Notifications, ErrorComesAndGoes) {
    auto const gone = received<SystemErrorNotification>(messageText(errorId, "{}"));
    ASSERT_NE(gone, nullptr);
    EXPECT_EQ(gone->notifCategory(), 3);
    EXPECT_EQ(gone->notifType(), 7);
    EXPECT_FALSE(gone->payload().hasError());
    EXPECT_EQ(written(*gone), messageText(errorId, "{}"));

    auto const come = received<SystemErrorNotification>(messageText(errorId, error));
    ASSERT_NE(come, nullptr);
    EXPECT_EQ(come->payload().error().errorType(), 1);
    EXPECT_EQ(written(*come), messageText(errorId, error));
}

TEST(Notifications, ErrorThatDoesNotRead) {
    struct Row {
        char const* data;
        bool hasPayload;
    };
    for (auto const& [data, hasPayload] : {
             Row{"", false},
             Row{R"({"Error":{"MessageID":1407374883553282}})", false}, // not registered
             Row{R"({"Error":{"MessageID":1970324837171201}})", false}, // a notification
             Row{R"({"Error":7})", true},
             Row{"null", true}, // one optional field, which isn't there
         }) {
        SCOPED_TRACE(data);
        CapturedOutput const output;
        auto const read = received<SystemErrorNotification>(messageText(errorId, data));
        ASSERT_NE(read, nullptr);
        EXPECT_EQ(read->Data.initialized(), hasPayload);
        EXPECT_EQ(written(*read), messageText(errorId, hasPayload ? "{}" : ""));
        EXPECT_EQ(output.text(), "");
    }
}

} // namespace
} // namespace Tolv::Msgs::Notifs
