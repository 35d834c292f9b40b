// Checks that the code in docs/adding-a-message.md does what that page says.
#include <tolv/messages.h>
#include <gtest/gtest.h>

#include "record.h" // the page's record

using Tolv::Msgs::App::LicenseData;
#include "own_message.inc" // the page's message of a program's own

namespace {

using namespace Tolv::Msgs;
using namespace Tolv::MetaData;

TEST(AddingAMessage, ThePageMakesAMessageThatTravels) {
    EXPECT_TRUE(LicenseMessage::factoryRegistration.registered());
    LicenseMessage license;
    license.editPayload().id = std::string("spectrum");
    license.editPayload().hours = 1.5;

    Element tree;
    license.copyToMetaData(tree);
    std::string text;
    WriterJson::Write(tree, text);
    EXPECT_EQ(text,
              R"({"MessageID":5629499534213121,"Data":{"ID":"spectrum","Seats":1,"Hours":1.5}})");

    Element received;
    ReaderJson::Read(received, text);
    auto const message = Message::CreateFromMetaData(received);
    auto const* const read = dynamic_cast<LicenseMessage const*>(message.get());
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->payload().hours(), 1.5);
}

TEST(AddingAMessage, TheCompilersCopyOfTheRecordHasItsOwnFields) {
    LicenseData first;
    first.seats = 2;
    auto second = first;
    first.seats = 3;
    EXPECT_EQ(second.seats(), 2);
    EXPECT_FALSE(second.hours.initialized());
    EXPECT_TRUE(second.seats.isOwnedBy(second));
}

TEST(AddingAMessage, IntrospectionKnowsTheRecordByItsDeclarations) {
    auto const described = Introspection::describe(LicenseMessage::MsgID());
    ASSERT_TRUE(described);
    auto const fields = described->payload();
    auto const* const hours = Introspection::findField(fields, "Hours");
    ASSERT_NE(hours, nullptr);
    EXPECT_FALSE(hours->required);
    EXPECT_EQ(hours->unit, "h");
    EXPECT_EQ(hours->doc, "the time left; unlimited if absent");
}

} // namespace
