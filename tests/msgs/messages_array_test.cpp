#include <tolv/msgs/messages_array.h>

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/app/applications.h>
#include <tolv/msgs/families.h>

#include "support/captured_output.h"
#include "support/messages.h"

namespace Tolv::Msgs {
namespace {

using namespace Tolv::Testing;

using Entry = PayloadMessageHelper<App::AppMessage, App::InstalledAppData, 600>;
using Entries = MessagesArray<Entry>;
using Batch = PayloadMessageHelper<Attrs::AttrArrays, Entries, 601>;
static_assert(std::is_base_of_v<isMessagesArray, Entries>);

constexpr auto corrupt = "Exception MetaDat::ReflectorArray MetaData Array corrupt for Messages\n";

/// The batch is registered during a test; the entries never are.
class MessagesArrayTest : public testing::Test {
    Message::Registrar<Batch> const registrar_{Batch::MsgID()};
};

std::string entry(std::string const& name) {
    return messageText(0x0003000000000258, R"({"Name":")" + name + R"(","ID":"i"})");
}

std::string listOf(std::string const& entries) { return R"({"Messages":[)" + entries + "]}"; }

std::string batchOf(std::string const& entries) {
    return messageText(0x0004000100000259, listOf(entries));
}

TEST_F(MessagesArrayTest, EntriesAreWholeMessages) {
    Entries entries;
    for (int i = 0; i < 100; ++i) // grows several times
        entries.messages.edit().emplace_back(App::InstalledAppData(std::to_string(i), "i"),
                                             Address{"from"}, Address{"to", std::to_string(i)});
    Batch const batch(entries, {"sender"});
    EXPECT_TRUE(written(batch).starts_with(
        R"({"MessageID":1125904201810521,"Sender":["sender"],"Data":{"Messages":[)"
        R"({"MessageID":844424930132568,"Sender":["from"],"Destination":["to","0"],)"
        R"("Data":{"Name":"0","ID":"i"}},)"));
    auto const read = sent(batch);
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(written(*read), written(batch));
    ASSERT_EQ(read->payload().messages().size(), 100U);
    EXPECT_EQ(read->payload().messages()[99].payload().name(), "99");
    Entries const listed(entries.messages());
    EXPECT_EQ(written(listed), written(entries));
    EXPECT_EQ(written(Entries(listed)), written(entries));
}

TEST_F(MessagesArrayTest, IdOfAnEntryIsReadAndNotLookedAt) {
    constexpr auto data = R"({"Name":"a","ID":"b"})";
    for (unsigned long long const id : {
             0x0002000000010007ULL, // a transition
             0x0007000000010005ULL, // of no class
             0x0004000100000259ULL, // the batch itself
             0xFFFFFFFFFFFFFFFFULL,
             0ULL,
         }) {
        auto const text = batchOf(entry("first") + ',' + messageText(id, data));
        auto const read = received<Batch>(text);
        ASSERT_NE(read, nullptr);
        ASSERT_EQ(read->payload().messages().size(), 2U);
        EXPECT_EQ(read->payload().messages()[1].id(), id);
        EXPECT_EQ(read->payload().messages()[1].payload().name(), "a");
        EXPECT_EQ(written(*read), text);
    }
    // A missing or non-numeric id is no id.
    for (auto const* const begin : {"{", R"({"MessageID":"1",)"}) {
        auto const read = received<Batch>(batchOf(std::string(begin) + R"("Data":{"Name":"a"}})"));
        ASSERT_NE(read, nullptr);
        EXPECT_EQ(written(*read), batchOf(messageText(0, R"({"Name":"a","ID":""})")));
    }
}

TEST_F(MessagesArrayTest, CorruptEntryLeavesTheListAsItWas) {
    for (auto const& bad : {
             std::string("3"), std::string("null"), std::string(R"("a")"), std::string("[]"),
             "[" + entry("a") + "]", std::string("{}"),
             messageText(0x0003000000000258, ""),     // without payload
             std::string(R"({"Name":"a","ID":"b"})"), // nothing but the payload
         }) {
        for (auto const& entries : {bad, bad + ',' + entry("good"), entry("good") + ',' + bad}) {
            SCOPED_TRACE(entries);
            for (auto const& before : {std::string(), entry("old"),
                                       entry("old") + ',' + entry("a") + ',' + entry("b")}) {
                Entries list;
                readInto(list, listOf(before));
                CapturedOutput const output;
                readInto(list, listOf(entries));
                EXPECT_EQ(output.text(), corrupt);
                EXPECT_EQ(written(list), listOf(before));
            }
            CapturedOutput const output;
            auto const read = received<Batch>(batchOf(entries));
            ASSERT_NE(read, nullptr);
            EXPECT_EQ(output.text(), corrupt);
            EXPECT_EQ(written(*read), batchOf("")) << "the list of a new batch is empty";
        }
    }
}

TEST_F(MessagesArrayTest, BatchWithAnEntryWithoutPayloadIsNotCopied) {
    Entries entries;
    entries.messages.edit().resize(2);
    readInto(entries.messages.edit()[1], "{}");
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { Entries const copy(entries); }),
              "Tolv::MetaData::Reflector::operator()(): Data is not initialized in "
              "PayloadMessageHelper<App::AppMessage, App::InstalledAppData, 600>");
}

} // namespace
} // namespace Tolv::Msgs
