#include <tolv/msgs/attrs/batches.h>

#include <initializer_list>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/msgs/catalogue.h>

#include "support/captured_output.h"
#include "support/messages.h"

// The batches of attributes. What a list of messages does in general is in messages_array_test.cpp.
namespace Tolv::Msgs::Attrs {
namespace {

using namespace Tolv::Testing;

constexpr auto corrupt = "Exception MetaDat::ReflectorArray MetaData Array corrupt for Messages\n";
constexpr auto noArray =
    "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n";

std::string single(unsigned short number, std::string const& data) {
    return messageText(Identifier::toValue(4, 0, 0, number), data);
}

std::string batch(unsigned short number, std::string const& messages) {
    return messageText(Identifier::toValue(4, 1, 0, number), R"({"Messages":)" + messages + "}");
}

/// Which single message stands in which batch. `data` is a payload that no other single message
/// writes back as it is, so that the class of the entries shows in the text.
struct {
    unsigned short batch;
    unsigned short single;
    char const* data;
} const numbers[] = {
    {1, 3, R"({"AttributeMetaData":{"Name":"n"},"b":false})"},
    {2, 2, R"({"AttributeMetaData":{"Minimum":0.5},"d":1.5})"},
    {3, 10, R"({"value":{"Value":1,"Literal":"a"},"enums":[{"Value":1,"Literal":"a"}]})"},
    {4, 31, R"({"value":1,"enums":{"type":9,"len":1,"base64":"AQAAAA=="}})"},
    {5, 23, R"({"value":"a","enums":["a"]})"},
    {6, 1, R"({"AttributeMetaData":{"Minimum":-9223372036854775808},"i":1})"},
    {7, 4, R"({"AttributeMetaData":{"MaxLength":1},"s":"a"})"},
    {8, 9, R"({"trace":{"type":1,"len":1,"base64":"AQ=="}})"},
    {9, 8, R"({"trace":{"type":2,"len":1,"base64":"AQ=="}})"},
    {10, 6, R"({"trace":{"type":3,"len":1,"base64":"AAAAAAAA+D8="}})"},
    {11, 7, R"({"trace":{"type":4,"len":1,"base64":"AAAAAAAA+D8AAAAAAAD4Pw=="}})"},
    {12, 24,
     R"({"isPlaceholder":false,"name":"","description":"","manufacturer":"",)"
     R"("serialNumber":"","slot":"esm","lun":"lun0","deviceId":0,"isAssignable":true,)"
     R"("deviceType":"fru","state":"","version":"","ipAddress":"a"})"},
    {13, 25,
     R"({"slot":"esm","lun":"lun0","deviceId":0,"number":0,"name":"","bank":-1,)"
     R"("type":"fan","reading":"a"})"},
    {14, 30,
     R"({"enabled":true,"source":{"slot":"esm","lun":"lun0","deviceId":0,"channel":0,)"
     R"("group":0},"destination":{"slot":"pem","lun":"lun0","deviceId":0,"channel":0,)"
     R"("group":0},"link":{"extension":0,"type":0,"iface":0},"group":0,"ports":"ports_1"})"},
    {15, 32, R"({"output":"trig0","source":"none"})"},
    {16, 33, R"({"source":"none","offset":1.5})"},
    {17, 34, R"({"source":"none","width":1.5})"},
    {18, 39, R"({"id":1,"name":"","enable":true,"result":"","state":3})"},
    {19, 43, R"({"bank":1,"speed":2})"},
    {20, 45, R"({"name":"a","version":"b"})"},
    {22, 48, R"({"slot":"slot1","deviceId":1,"isRoot":true})"},
    {23, 49, R"({"root":{"slot":"slot1","deviceId":1,"isRoot":true},"endpoints":[]})"},
    {25, 55,
     R"({"filePath":"a","fileSize":1,"sampleRate":0.0,"iterations":0,"centerFreq":0.0,)"
     R"("outputPower":0.0,"startTime":0.0})"},
};

TEST(AttrBatches, OfTheirMessages) {
    for (auto const& row : numbers) {
        auto const text =
            batch(row.batch, "[" + single(row.single, row.data) + ",{\"MessageID\":7," +
                                 R"("Data":)" + row.data + "}]");
        SCOPED_TRACE(text);
        CapturedOutput const output;
        auto const read = received(text);
        ASSERT_NE(read, nullptr);
        EXPECT_NE(dynamic_cast<AttrArrays*>(read.get()), nullptr);
        EXPECT_EQ(written(*read), text) << "the id of the second entry is none of theirs";
        EXPECT_EQ(output.text(), "");

        auto const alone = received(single(row.single, row.data));
        ASSERT_NE(alone, nullptr);
        EXPECT_EQ(dynamic_cast<AttrArrays*>(alone.get()), nullptr);
        auto const* const described = findMessage(read->id());
        auto const* const ofEntry = findMessage(alone->id());
        ASSERT_TRUE(described != nullptr && ofEntry != nullptr);
        EXPECT_EQ(described->payload, "MessagesArray<" + ofEntry->fullAlias() + ">");
    }
}

// The numbers 1, 2 and 3 stand for a batch and for a message of another class.
TEST(AttrBatches, AreNotTheSinglesOfTheSameNumber) {
    static_assert(!std::is_same_v<BoolBatchMessage, LongMessage>);
    EXPECT_EQ(BoolBatchMessage::MsgID().type(), LongMessage::MsgID().type());
    EXPECT_EQ(BoolBatchMessage::MsgID().sub1(), 1);
    EXPECT_EQ(BoolMessage::MsgID().sub1(), 0);
    EXPECT_NE(received<BoolBatchMessage>(batch(1, "[]")), nullptr);
    EXPECT_NE(received<LongMessage>(single(1, R"({"i":1})")), nullptr);
    for (unsigned short const number : std::initializer_list<unsigned short>{0, 21, 24, 26, 31})
        EXPECT_EQ(received(batch(number, "[]")), nullptr) << number;
}

struct BadInput {
    char const* why;
    std::string messages; ///< what stands under "Messages"; empty: the key is missing
    std::string kept;     ///< the list afterwards, when it held one message before
    char const* printed;
};

std::string const old = single(2, R"({"AttributeMetaData":{"Maximum":2.5},"d":0.5})");
std::string const good = single(2, R"({"d":1.5})");

std::vector<BadInput> badInputs() {
    auto const list = [](std::string const& entries) { return "[" + entries + "]"; };
    auto const otherId = single(31, R"({"d":2.5})");
    return {
        {"id of another class", list(otherId), list(otherId), ""},
        {"payload of another class: its value doesn't read",
         list(single(3, R"({"b":false})") + ',' + good),
         list(single(3, R"({"d":0.0})") + ',' + good), ""},
        {"entry is a number", list(good + ",3"), list(old), corrupt},
        {"entry is null", list("null," + good), list(old), corrupt},
        {"entry is a list", list("[],[]"), list(old), corrupt},
        {"entry without payload", list(good + ',' + single(2, "")), list(old), corrupt},
        {"payload is no record", list(single(2, "[1]") + ',' + good),
         list(single(2, R"({"d":0.0})") + ',' + good), ""},
        {"the list is an object", "{}", list(old), noArray},
        {"the list is an encoded one", R"({"type":3,"len":0})", list(old), noArray},
        {"the list is null", "null", list(old), noArray},
        {"no list", "", "", ""},
        {"empty list", "[]", "[]", ""},
    };
}

TEST(AttrBatches, TakeBadInput) {
    for (auto const& row : badInputs()) {
        SCOPED_TRACE(row.why);
        auto const text = row.messages.empty() ? messageText(DoubleBatchMessage::MsgID(), "{}")
                                               : batch(2, row.messages);
        auto const after = [&](std::string const& messages) {
            return messages.empty() ? messageText(DoubleBatchMessage::MsgID(), "{}")
                                    : batch(2, messages);
        };
        auto const held = received<DoubleBatchMessage>(batch(2, "[" + old + "]"));
        ASSERT_NE(held, nullptr);
        {
            CapturedOutput const output;
            readInto(*held, text);
            EXPECT_EQ(output.text(), row.printed);
        }
        EXPECT_EQ(written(*held), after(row.kept));
        EXPECT_EQ(held->payload().messages.initialized(), !row.messages.empty());

        // A new batch held nothing before.
        CapturedOutput const output;
        auto const fresh = received<DoubleBatchMessage>(text);
        ASSERT_NE(fresh, nullptr);
        EXPECT_EQ(output.text(), row.printed);
        EXPECT_EQ(written(*fresh), after(*row.printed != '\0' ? "[]" : row.kept));
    }
}

TEST(AttrBatches, EntriesHaveTheirOwnMetadata) {
    std::vector<DoubleMessage> messages(3, DoubleMessage(1.5));
    messages[1].editPayload().editMetaData().maximum = 2.0;
    DoubleBatchMessage batchMessage{MessagesArray<DoubleMessage>(messages)};
    messages[1].editPayload().editMetaData().maximum = 9.0;
    auto const read = sent(batchMessage);
    ASSERT_NE(read, nullptr);
    auto const& list = read->payload().messages();
    ASSERT_EQ(list.size(), 3U);
    EXPECT_EQ(list[1].payload().metaData().maximum(), 2.0);
    EXPECT_FALSE(list[0].payload().attributeMetaData.initialized());
    EXPECT_FALSE(list[2].payload().attributeMetaData.initialized());
}

} // namespace
} // namespace Tolv::Msgs::Attrs
