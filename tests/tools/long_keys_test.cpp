#include <cstddef>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "findings.h"
#include "support/counters.h"
#include "trace_search.h"
#include "tree_diff.h"
#include "tree_path.h"

namespace Tolv::Tool {
namespace {

/// A line of `bytes`, half of which is one key and the other half members below it.
ExaminedLine hostileLine(std::size_t bytes, char const* value) {
    auto text = "{\"" + std::string(bytes / 2, 'k') + "\":[";
    while (text.size() < bytes - 20)
        text.append(R"({"m":)").append(value).append("},");
    text.back() = ']';
    CapturedCout printed;
    return examine(printed, text + '}');
}

/// A key is not copied for each element below it: what is allocated grows as the line does.
TEST(LongKeys, CostNoMoreThanTheirLength) {
    Classes const classes;
    struct Case {
        char const* name;
        std::function<void(ExaminedLine const&, ExaminedLine const&)> work;
    };
    for (auto const& [name, work] : {
             Case{"lint", [&](auto const&line, auto const&) { findingsOf(line, classes); }},
             Case{"diff", [](auto const&left,
                             auto const&right) { differencesOf(left.input, right.input, {}, {}); }},
             Case{"diff --ignore",
                  [](auto const&left, auto const&right) {
                      differencesOf(left.input, right.input, {}, {"Data.Timestamp"});
                  }},
             Case{"export", [](auto const&line, auto const&) { findTrace(line.input, {}); }},
             Case{"export --path",
                  [](auto const&line, auto const&) { findTrace(line.input, "Data.trace"); }},
         }) {
        constexpr std::size_t bytes = 200'000;
        auto const line = hostileLine(bytes, "9007199254740993"); // a finding of lint each
        auto const other = hostileLine(bytes, "9007199254740992");
        Testing::Counted const counted;
        work(line, other);
        EXPECT_LT(counted.allocatedBytes(), 100 * bytes) << name;
    }
}

TEST(TreePath, TextAndSearch) {
    TreePath const root;
    TreePath const data(root, "Data");
    TreePath const list(data, "a b");
    TreePath const entry(list, 12);
    TreePath const trace(entry, "trace");
    EXPECT_EQ(trace.text(), R"(Data."a b"[12].trace)");
    EXPECT_TRUE(trace.is(R"(Data."a b"[12].trace)"));
    EXPECT_TRUE(entry.leadsTo(R"(Data."a b"[12].trace)"));
    for (auto const* other : {"", "Data", R"(Data."a b"[12].trac)", R"(Data."a b"[12].traces)",
                              R"(Data."a b"[1].trace)", R"(data."a b"[12].trace)"})
        EXPECT_FALSE(trace.is(other)) << other;
    EXPECT_FALSE(data.leadsTo("Datas.x"));
    EXPECT_TRUE(root.leadsTo("Data"));
    EXPECT_TRUE(trace.endsWith("trace"));
    EXPECT_FALSE(TreePath(root, "trace").endsWith("trace")); // is in no payload

    std::string const key(1000, 'k');
    EXPECT_EQ(TreePath(data, key).text(),
              "Data.\"" + std::string(TreePath::mostKeyBytes, 'k') + "...\" (1000 bytes)");
    std::function<std::string(TreePath const&, int)> const deep = [&](TreePath const& path,
                                                                      int levels) {
        return levels == 0 ? path.text() : deep(TreePath(path, std::size_t(levels)), levels - 1);
    };
    EXPECT_EQ(deep(data, 20), "Data[20][19][18][17][16][15][14]...[8][7][6][5][4][3][2][1]");
}

} // namespace
} // namespace Tolv::Tool
