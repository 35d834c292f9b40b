#include <tolv/core/metadata/read_report.h>

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/messages.h>
#include <tolv/msgs/introspection/explanation.h>

#include "../fuzz/tree_mutations.h"
#include "support/captured_output.h"
#include "support/counters.h"
#include "support/golden.h"
#include "support/messages.h"

namespace Tolv::Msgs::Introspection {
namespace {

using MetaData::Element;
using MetaData::ReadEvent;
using MetaData::ReadReport;
using namespace Tolv::Testing;

using Lines = std::vector<std::string>;

/// "path | problem | found" of each problem of a message with this text.
Lines problemsOf(std::string const& text) {
    CapturedOutput const output; // the lines of the array fields
    ReadReport const report;
    received(text);
    Lines lines;
    for (auto const& one : explain(report))
        lines.push_back(one.path + " | " + one.problem + (one.value ? " | " + one.found() : ""));
    return lines;
}

std::string connect(std::string const& data) { return messageText(0x0003000000000001, data); }
std::string attribute(unsigned int number, std::string const& data) {
    return messageText(0x0004000000000000 + number, data);
}

TEST(Explain, NamesTheFieldAndWhy) {
    struct Case {
        std::string text;
        Lines expected;
    };
    auto const seven = std::string("expected an integer from -2147483648 to 2147483647");
    for (
        auto const& [text, expected] : std::vector<Case>{
            {connect(R"({"MaxVersion":1,"MinVersion":1,"BinaryTransmission":true})"), {}},
            {connect(R"({"MaxVersion":"3","MinVersion":3e10,"BinaryTransmission":null})"),
             {"Data.MaxVersion | " + seven + R"(, found a string | "3")",
              "Data.MinVersion | " + seven + " | 3e+10",
              "Data.BinaryTransmission | expected a boolean, found null | null"}},
            {connect(R"({"MaxVersion":1,"MinVersion":1,"More":[1],"a b":{}})"),
             {"Data.BinaryTransmission | required, but absent",
              "Data.More | no field has this key | [1]",
              R"(Data."a b" | no field has this key | {})"}},
            {connect(""), {"Data | required, but absent"}},
            {connect("5"), {"Data | expected an object, found a number | 5"}},
            {messageText(0x0003000000000004, R"({"a":1})"),
             {R"(Data | no field has this key | {"a":1})"}},
            {R"({"MessageID":844424930131972,"Sender":["a",1]})",
             {R"(Sender | keeps its old value, because of Sender[1] | ["a",1])",
              "Sender[1] | expected a string, found a number | 1"}},
            // what only a destination makes meaningful
            {attribute(13, ""), {"Destination | required, but absent"}},
            // a payload of all or nothing, written by hand
            {messageText(0x0003000000000003, R"({"MaxVersion":1,"MinVersion":-1,"Minversion":1})"),
             {R"(Data | did not parse, because of Data.MinVersion | {"MaxVersion":1,"MinVersion":-1,"Minversion":1})",
              "Data.MinVersion | expected an integer from 0 to 4294967295 | -1",
              "Data.MessageType | required, but absent",
              "Data.SupportsBinary | required, but absent",
              "Data.Minversion | no field has this key | 1"}},
            // words, and a number that its check refuses
            {attribute(48, R"({"slot":"slot9","deviceId":256,"isRoot":true})"),
             {R"(Data.slot | unknown literal, expected one of "esm", "slot1", "slot2", "slot3", )"
              R"("slot4", "slot5", "pem", "backplane", "ipass" | "slot9")",
              "Data.deviceId | expected an integer from 0 to 255 | 256"}},
            {attribute(40, R"({"testStateId":1,"testState":7})"),
             {"Data.testState | unknown literal, expected one of 0 (passed), 1 (failed), "
              "2 (running), 3 (not run) | 7"}},
            // lists of records, and records inside of records
            {messageText(0x0003000000008000,
                         R"({"Make":"","Model":"","ModuleList":[{"Make":"","Model":""},)"
                         R"({"Make":"","Model":"","Configuration":{"Divisions":1,"ComponentList":)"
                         R"([{"Type":1,"Position":0,"Width":"x"},5]}}]})"),
             {"Data.ModuleList[1].Configuration.ComponentList[0].Width | " + seven +
                  R"(, found a string | "x")",
              "Data.ModuleList[1].Configuration.ComponentList[1] | expected an object, found a "
              "number | 5"}},
            // arrays in both forms
            {attribute(6, R"({"trace":[1,"NaN","x"]})"),
             {R"(Data.trace | keeps its old value, because of Data.trace[2] | [1,"NaN","x"])",
              R"(Data.trace[2] | expected a number, found a string | "x")"}},
            {attribute(6, R"({"trace":{"type":4,"len":0}})"),
             {R"(Data.trace | expected the encoded form of type 3 | {"type":4,"len":0})"}},
            {attribute(6, R"({"trace":{"type":3,"len":1}})"),
             {R"(Data | did not parse, because of Data.trace | {"trace":{"type":3,"len":1}})",
              "Data.trace.base64 | required, but absent"}},
            // an encoded array whose "len" is wrong: the tag is no number of elements
            {attribute(6, R"({"trace":{"type":3,"len":1e30}})"),
             {R"(Data | did not parse, because of Data.trace | {"trace":{"type":3,"len":1e+30}})",
              "Data.trace.len | expected an integer from 0 to 18446744073709551615 | 1e+30"}},
            {attribute(6, R"({"trace":{"type":3,"len":9,"base64":"AAAAAAAA8D8="}})"),
             {"Data.trace.len | the text holds 1 | 9"}},
            {attribute(9, R"({"trace":{"type":1,"len":17,"base64":"AAA="}})"),
             {R"(Data | did not parse, because of Data.trace | )"
              R"({"trace":{"type":1,"len":17,"base64":"AAA="}})",
              "Data.trace.len | expected 9 to 16, the text holds 2 bytes | 17"}},
            {attribute(8, R"({"trace":{"type":2,"len":1,"base64":""}})"),
             {R"(Data | did not parse, because of Data.trace | )"
              R"({"trace":{"type":2,"len":1,"base64":""}})",
              "Data.trace.len | expected 0, the text holds 0 bytes | 1"}},
            // messages inside of messages
            {messageText(0x0004000100000001, R"({"Messages":[{"MessageID":1125899906842627,)"
                                             R"("Data":{"b":true}},{"MessageID":1}]})"),
             {R"(Data.Messages | keeps its old value, because of Data.Messages[1] | )"
              R"([{"MessageID":1125899906842627,"Data":{"b":true}},{"MessageI...)",
              "Data.Messages[1].Data | required, but absent"}},
            {attribute(21, R"({"Attributes":[{"MessageID":1125899906842627,"Data":{"b":1}},)"
                           R"({"MessageID":1125899906842627,"x":0,"Data":{"b":0}}]})"),
             {"Data.Attributes[0].Data.b | expected a boolean, found a number | 1",
              "Data.Attributes[1].Data.b | expected a boolean, found a number | 0",
              "Data.Attributes[1].x | no field has this key | 0"}},
            {messageText(0x0003000000000012,
                         R"({"Result":true,"UUID":"","Error":{"MessageID":77}})"),
             {R"(Data | did not parse, because of Data.Error | )"
              R"({"Result":true,"UUID":"","Error":{"MessageID":77}})",
              "Data.Error.MessageID | unknown id 0x000000000000004d | 77"}},
            {messageText(0x0002000000010007, R"({"event":1,"param":[{"MessageID":844424930131972,)"
                                             R"("Sender":5}]})"),
             {"Data.param[0].Sender | expected an array, found a number | 5"}},
        })
        EXPECT_EQ(problemsOf(text), expected) << text;
}

// ---- What a report records
// -----------------------------------------------------------------------

TEST(ReadReport, RecordsTheReadsOfItsThread) {
    auto const text = connect(R"({"MaxVersion":1,"MinVersion":1})");
    ReadReport outer;
    std::thread([&] { received(text); }).join();
    EXPECT_TRUE(outer.events().empty()) << "another thread's";
    {
        ReadReport const inner;
        received(text);
        EXPECT_EQ(inner.events().size(), 7U);
    }
    EXPECT_TRUE(outer.events().empty()) << "the inner one's";
    received(text);
    received(text);
    std::map<ReadEvent::Outcome, int> outcomes;
    for (auto const& event : outer.events())
        ++outcomes[event.outcome];
    EXPECT_EQ(outcomes[ReadEvent::Outcome::read], 2 * 4);
    EXPECT_EQ(outcomes[ReadEvent::Outcome::absent], 2 * 3);
    outer.clear();
    EXPECT_TRUE(outer.events().empty());
}

/// Two records, of which the second may lie where the first one was.
TEST(ReadReport, TellsRecordsApartThatLieAtTheSamePlace) {
    struct Small : MetaData::MirroredObject {
        MetaData::Reflector<int> number;
        explicit Small(std::string const& key) : number(this, key, MetaData::Optional) {}
    };
    ReadReport const report;
    for (auto const* const key : {"a", "b", "c"}) {
        Element tree;
        tree[key].setSigned(1); // which others may write to: the report has a copy
        tree["unknown"].setString(key);
        Small(key).copyFromMetaData(tree);
    }
    Lines lines;
    for (auto const& one : explain(report))
        lines.push_back(one.path + one.found());
    EXPECT_EQ(lines, (Lines{R"(unknown"a")", R"(unknown"b")", R"(unknown"c")"}));
}

std::string listOf(std::size_t count, std::string const& entry) {
    std::string text = "[";
    for (std::size_t i = 0; i < count; ++i)
        text += (i == 0 ? "" : ",") + entry;
    return text + ']';
}

// What a report takes beside the message, while it is read and afterwards, and what it says of
// more than anybody reads.
TEST(ReadReport, IsBounded) {
    auto const modules = [](std::string const& list) {
        return messageText(0x0003000000008000,
                           R"({"Make":"","Model":"","ModuleList":)" + list + '}');
    };
    auto const nested = [](int messages) {
        std::string text;
        for (int i = 0; i < messages; ++i)
            text = messageText(0x0002000000010007, R"({"param":[)" + text + R"(],"x":0})");
        return text;
    };
    std::string keys;
    for (int i = 0; i < 10'000; ++i)
        keys += ",\"" + std::to_string(i) + "\":0";
    struct {
        std::string text;
        std::size_t problems; ///< 0: no more than can be told
        char const* why;
    } const rows[] = {
        {modules(listOf(20'000, "{}")), 40'000, "empty records"},
        {modules(listOf(20'000, "[]")), 20'000, "empty lists for records"},
        {modules(listOf(20'000, "0")), 20'000, "numbers for records"},
        {modules(listOf(5'000, R"({"Configuration":{"ComponentList":[{}]}})")), 0, "nested ones"},
        {attribute(21,
                   R"({"Attributes":)" + listOf(5'000, R"({"MessageID":1125899906842627})") + '}'),
         5'000, "messages without payload"},
        {nested(85), 0, "messages in messages"},
        {connect(R"({"MaxVersion":1)" + keys + '}'), 10'002, "unknown keys"},
        {connect("{\"" + std::string(900'000, 'k') + "\":0}"), 0, "a long key"},
    };
    for (auto const& row : rows) {
        CapturedOutput const output;
        auto const tree = parsed(row.text);
        for (auto const& read : {std::function([&] { Message::CreateFromMetaData(tree); }),
                                 std::function([&] { Message::CreateFromText(row.text); })}) {
            auto const without = [&] {
                Counted const counted;
                read();
                return counted.peakBytes();
            }();
            ReadReport const report;
            Counted const counted;
            read();
            EXPECT_LE(counted.peakBytes() - without,
                      64 * static_cast<std::ptrdiff_t>(row.text.size()))
                << row.why;
            auto const most = Limits{}.reportEntries;
            auto const problems = explain(report);
            EXPECT_EQ(report.events().size(), std::min(report.size(), most)) << row.why;
            if (row.problems != 0) {
                EXPECT_EQ(problems.back().problem,
                          "and " + std::to_string(row.problems - most) + " more")
                    << row.why;
                EXPECT_EQ(problems.back().kind, ProblemKind::more) << row.why;
            }
            // What is told is no more than that, too.
            EXPECT_LE(counted.peakBytes() - without,
                      64 * static_cast<std::ptrdiff_t>(row.text.size()) + 8'000'000)
                << row.why;
        }
    }
}

// ---- Reads are the same with a report and without
// --------------------------------------------------

/// The result of reading `tree`: what the message writes or what is thrown, and what is printed.
std::string outcomeOf(Element const& tree) {
    CapturedOutput const output;
    std::string result;
    try {
        auto const message = Message::CreateFromMetaData(tree);
        if (message == nullptr)
            return "no message";
        result = written(*message);
        for (auto const* const field : message->members())
            result += field->initialized() ? '1' : '0';
    } catch (std::exception const& e) {
        result = e.what();
    }
    return result + output.text();
}

TEST(ReadReport, ChangesNoRead) {
    std::size_t cases = 0;
    std::size_t explained = 0;
    for (auto const& row : catalogue()) {
        auto tree = goldenOf(row);
        auto const compare = [&] {
            ++cases;
            auto const shared = parsed(textOf(tree)); // and one that others may write to
            auto const expected = outcomeOf(tree);
            ReadReport const report;
            ASSERT_EQ(outcomeOf(tree), expected) << textOf(tree);
            ASSERT_EQ(outcomeOf(shared), expected) << textOf(tree);
            explained += explain(report).empty() ? 0 : 1;
        };
        {
            ReadReport const report;
            outcomeOf(tree);
            EXPECT_TRUE(explain(report).empty())
                << row.fullAlias() << ' ' << explain(report).front().path << ' '
                << explain(report).front().problem;
        }
        // Each value replaced by one of every other kind, and gone.
        for (std::size_t i = 0; i < Fuzzing::placesIn(tree).size(); ++i) {
            auto const place = Fuzzing::placesIn(tree)[i];
            auto const before = place.value();
            for (auto const* other : {"null", "-7", "\"?\"", "[5]", R"({"MessageID":77})"}) {
                place.value() = parsed(other);
                compare();
            }
            place.value() = before;
            auto const whole = tree;
            place.remove();
            compare();
            tree = whole;
        }
    }
    EXPECT_GT(cases, 10000U);
    EXPECT_GT(explained, cases / 2);
}

} // namespace
} // namespace Tolv::Msgs::Introspection
