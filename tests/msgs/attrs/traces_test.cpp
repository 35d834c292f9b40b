#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/attrs/messages.h>

#include "msgs/attrs/judged.h"
#include "support/captured_output.h"
#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::Msgs::Attrs {
namespace {

using Testing::judged;

TEST(Traces, NeitherLimitsNorSegmentsAreChecked) {
    TraceWithSegmentsPayload<double, RangedMetaData<double>> trace;
    trace.trace = std::vector<double>{9};
    trace.editMetaData().maximum = 1.0;
    trace.segments = std::vector<TraceSegment>{{5, 7}, {0, 0}};
    EXPECT_EQ(judged(trace), "valid");
    isTrace const& marked = trace;
    (void)marked;
}

TEST(Traces, SegmentsComeBack) {
    TraceWithSegmentsPayload<bool, RangedMetaData<long long>> sent;
    sent.segments = std::vector<TraceSegment>{{1, 18446744073709551615ULL}, {0, 2}};
    auto read = sent;
    Testing::readInto(read, Testing::written(sent));
    ASSERT_EQ(read.segments().size(), 2U);
    EXPECT_EQ(read.segments()[0].length(), 18446744073709551615ULL);
    EXPECT_EQ(read.segments()[1].length(), 2U);
    // A segment without its length is one of length 0.
    Testing::readInto(read, R"({"trace":[],"segments":[{"offset":3}]})");
    EXPECT_EQ(Testing::written(read), R"({"trace":[],"segments":[{"offset":3,"length":0}]})");
}

// Read as the payload of a message: what the trace throws resets nothing but the payload, and no
// memory is taken because a length says so.
TEST(Traces, HostileTraces) {
    struct {
        char const* trace;
        char const* readsAs; ///< null: the payload did not read
        char const* line;    ///< on the standard output
        char const* why;
    } const rows[] = {
        {R"({"type":3,"len":1000000000000,"base64":"AAAAAAAA+D8="})",
         R"({"type":3,"len":1,"base64":"AAAAAAAA+D8="})", "", "the text tells the length"},
        {R"({"type":3,"len":0,"base64":"AAAAAAAA+D8="})", R"({"type":3,"len":0})", "",
         "length 0 is none"},
        {R"({"type":3,"len":1,"base64":"AAAAAAAA+D8"})", nullptr, "", "cut text"},
        {R"({"type":3,"len":1,"base64":"AAAA*AAA+D8="})", nullptr, "", "no base64"},
        {R"({"type":3,"len":1})", nullptr, "", "no text"},
        {R"({"type":4,"len":1,"base64":"AAAAAAAA+D8="})", R"({"type":3,"len":0})", "type",
         "another type"},
        {R"({"len":1,"base64":"AAAAAAAA+D8="})", nullptr, "", "no type"},
        {R"({"type":3,"len":2,"base64":"AAAAAAAA+D8AAA=="})",
         R"({"type":3,"len":1,"base64":"AAAAAAAA+D8="})", "", "part of an element"},
        {R"([1,"x"])", "[]", "corrupt", "an entry of the wrong kind"},
        {R"("AAAAAAAA+D8=")", nullptr, "", "text in place of the object"},
    };
    for (auto const& row : rows) {
        SCOPED_TRACE(row.why);
        auto const tree = Testing::parsed(R"({"MessageID":1125899906842630,"Data":{"trace":)" +
                                          std::string(row.trace) + "}}");
        Testing::CapturedOutput const output;
        Testing::Counted const counted;
        auto const message = Message::CreateFromMetaData(tree);
        EXPECT_LT(counted.largestAllocation(), 100'000U);
        auto const& trace = dynamic_cast<DoubleTraceMessage&>(*message);
        EXPECT_EQ(trace.Data.initialized(), row.readsAs != nullptr);
        if (row.readsAs != nullptr) {
            EXPECT_EQ(Testing::written(trace.payload()),
                      std::string("{\"trace\":") + row.readsAs + "}");
        }
        EXPECT_NE(output.text().find(row.line), std::string::npos) << output.text();
        EXPECT_EQ(output.text().empty(), *row.line == '\0') << output.text();
    }
    TracePayload<bool, AttrMetaDataBase> bits;
    for (auto const* const lie : {R"({"type":1,"len":1000000000000,"base64":"gAE="})",
                                  R"({"type":1,"len":18446744073709551615,"base64":"gAE="})",
                                  R"({"type":1,"len":8,"base64":"gAE="})"}) {
        Testing::Counted const counted;
        EXPECT_THROW(Testing::readInto(bits, std::string("{\"trace\":") + lie + "}"),
                     Exception::InvalidParameter);
        EXPECT_LT(counted.largestAllocation(), 100'000U);
    }
}

} // namespace
} // namespace Tolv::Msgs::Attrs
