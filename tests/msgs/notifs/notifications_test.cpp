#include <gtest/gtest.h>

#include <tolv/msgs/notifs/messages.h>

#include "support/messages.h"

namespace Tolv::Msgs::Notifs {
namespace {

using namespace Tolv::Testing;

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

} // namespace
} // namespace Tolv::Msgs::Notifs
