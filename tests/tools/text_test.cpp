#include <gtest/gtest.h>

#include <tolv/core/metadata/json.h>

#include "text.h"

namespace Tolv::Tool {
namespace {

TEST(Text, IsHarmless) {
    struct Case {
        char const* text;
        char const* harmless;
        char const* reason;
    };
    for (auto const& [text, expected, reason] : {
             Case{"plain \"text\" \\ é Ω 漢 😀", "plain \"text\" \\ é Ω 漢 😀", "nothing to escape"},
             Case{"\x1b[2J\r\n\t\x07", "\\u001b[2J\\u000d\\n\\t\\u0007", "C0"},
             Case{"~\x7f\xC2\x80\xC2\x9F\xC2\xA0", "~\\u007f\\u0080\\u009f\xC2\xA0",
                  "DELETE and C1, and their neighbours"},
             Case{"\xE2\x80\x8A\xE2\x80\x8B\xE2\x80\x8F\xE2\x80\x90",
                  "\xE2\x80\x8A\\u200b\\u200f\xE2\x80\x90", "zero width"},
             Case{"\xE2\x80\xA7\xE2\x80\xA8\xE2\x80\xA9\xE2\x80\xAA\xE2\x80\xAE\xE2\x80\xAF",
                  "\xE2\x80\xA7\\u2028\\u2029\\u202a\\u202e\xE2\x80\xAF",
                  "separators and directions"},
             Case{"\xE2\x81\x9F\xE2\x81\xA0\xE2\x81\xA6\xE2\x81\xA9\xE2\x81\xB0",
                  "\xE2\x81\x9F\\u2060\\u2066\\u2069\xE2\x81\xB0", "isolates"},
             Case{"\xEF\xBB\xBF\xD8\x9C\xC2\xAD", "\\ufeff\\u061c\\u00ad", "marks"},
             Case{"\xF3\xA0\x80\x81", "\\udb40\\udc01", "beyond 16 bits: two halves"},
             Case{"a\xFF\xE2\x80", "a\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", "no UTF-8"},
         }) {
        EXPECT_EQ(harmless(text), expected) << reason;
        EXPECT_EQ(harmless(expected), expected) << reason;
    }
    EXPECT_EQ(quoted("\"\\\xE2\x80\xAE", 9), R"("\"\\\u202e")");
    EXPECT_EQ(quoted("ab\xE2\x80\xAE", 4), R"("ab..." (5 bytes))"); // not within a character
}

TEST(Text, HarmlessJsonHasTheSameValue) {
    MetaData::Element tree;
    tree["key \xE2\x80\xAE\x7f"].setString("\xC2\x85 \xF3\xA0\x80\x81\x1b\" \xE2\x81\xA6 é");
    tree["eight.."].setString("12345678"); // ASCII is taken eight bytes at a time
    std::string json;
    MetaData::WriterJson::Write(tree, json, false);
    auto const safe = harmlessJson(json);
    for (auto const* harmful : {"\xE2\x80\xAE", "\x7f", "\xC2\x85", "\xF3\xA0\x80\x81", "\x1b"})
        EXPECT_EQ(safe.find(harmful), safe.npos);
    MetaData::Element again;
    MetaData::ReaderJson::Read(again, safe);
    EXPECT_EQ(again, tree);
}

} // namespace
} // namespace Tolv::Tool
