#include <string>

#include <gtest/gtest.h>

#include <tolv/core/detail/type_name.h>
#include <tolv/core/exceptions.h>
#include <tolv/msgs/attrs/enums.h>

#include "msgs/attrs/judged.h"
#include "support/trees.h"

namespace Tolv::Msgs::Attrs {
namespace {

using Testing::judged;

template <class Payload>
std::string judgedText(std::string const& data) {
    Payload payload;
    Testing::readInto(payload, data);
    return judged(payload);
}

/// The three classes share these rules: each row runs with all of them. "1", "2", ... stand for
/// values.
struct Row {
    char const* disabled; ///< null: no metadata
    char const* enums;    ///< null: no list
    char const* value;    ///< null: none that parses
    char const* verdict;  ///< "$" stands for the value, "?" for the missing key
    char const* why;
};

Row const rows[] = {
    {nullptr, nullptr, "7", "valid", "no list accepts anything"},
    {"[true]", nullptr, nullptr, "valid", "no list accepts anything, even no value"},
    {nullptr, "", "7", "enums is empty, so that no value is valid", "a set empty list"},
    {nullptr, "", nullptr, "enums is empty, so that no value is valid",
     "the value is not looked at"},
    {nullptr, "12", "2", "valid", ""},
    {nullptr, "12", "3", "$ is not in enums", ""},
    {"[]", "12", "2", "valid", "a list of no flags"},
    {"[false,true]", "12", "2", "$ is disabled in enums", ""},
    {"[true]", "12", "2", "valid", "entries without a flag are enabled"},
    {"[false,false,true]", "12", "2", "valid", "surplus flags are ignored"},
    {"[true,true,true]", "12", "3", "$ is not in enums", "all are disabled, none is the value"},
    {"[true,true]", "12", nullptr, "all of enums is disabled", "the value is not looked at"},
    {"[true,false,false]", "212", "2", "valid", "once disabled, once enabled"},
    {"[true,false,true]", "212", "2", "$ is disabled in enums", "disabled twice"},
    {"7", "12", "2", "valid", "flags that do not read"},
    {nullptr, "12", nullptr, "throws Tolv::MetaData::Reflector::operator()(): ? is not initialized",
     "no value"},
};

template <class Payload, class Write, class Show>
void judgeAll(Write const& write, Show const& show, std::string const& missing = "value") {
    for (auto const& row : rows) {
        std::string data = R"({"value":)" + (row.value != nullptr ? write(*row.value) : "[]");
        if (row.enums != nullptr) {
            data += ",\"enums\":[";
            for (auto const* entry = row.enums; *entry != '\0'; ++entry)
                data += (entry == row.enums ? "" : ",") + write(*entry);
            data += ']';
        }
        if (row.disabled != nullptr)
            data += R"(,"AttributeMetaData":{"DisabledList":)" + std::string(row.disabled) + "}";
        data += '}';
        std::string verdict = row.verdict;
        if (verdict[0] == '$')
            verdict.replace(0, 1, show(*row.value));
        if (auto const key = verdict.find('?'); key != verdict.npos)
            verdict.replace(key, 1, missing) +=
                " in " + (missing == "value" ? Tolv::Detail::nameOf(typeid(Payload))
                                             : std::string("Attrs::EnumVal"));
        EXPECT_EQ(judgedText<Payload>(data), verdict) << row.why << ": " << data;
    }
}

TEST(EnumeratedAttrs, Ints) {
    judgeAll<EnumIntData>([](char c) { return std::string(1, c); },
                          [](char c) { return std::string(1, c); });
}

TEST(EnumeratedAttrs, Strings) {
    judgeAll<EnumStringsData>([](char c) { return "\"A" + std::string(1, c) + '"'; },
                              [](char c) { return "\"A" + std::string(1, c) + '"'; });
}

TEST(EnumeratedAttrs, NumbersWithTexts) {
    auto const write = [](char c) {
        return std::string(R"({"Value":)") + c + R"(,"Literal":"A)" + c + "\"}";
    };
    // A value that is not an object is read as an entry without fields: the first one is missing.
    judgeAll<EnumData>(
        write, [](char c) { return std::string(1, c) + " \"A" + c + '"'; }, "Value");
    EXPECT_EQ(judgedText<EnumData>(R"({"value":{"Literal":"A"},"enums":[)" + write('1') + "]}"),
              "throws Tolv::MetaData::Reflector::operator()(): Value is not initialized in "
              "Attrs::EnumVal");
    EXPECT_EQ(judgedText<EnumData>(R"({"value":)" + write('2') + ",\"enums\":[" + write('1') + ',' +
                                   write('2') + "]}"),
              "valid");
    EXPECT_EQ(
        judgedText<EnumData>(R"({"value":{"Value":3,"Literal":"A"},)"
                             R"("enums":[{"Value":3,"Literal":"B"},{"Value":4,"Literal":"A"}]})"),
        R"(3 "A" is not in enums)");
    EXPECT_EQ(
        judgedText<EnumData>(R"({"AttributeMetaData":{"DisabledList":[false,true]},)"
                             R"("value":{"Value":4,"Literal":"AC"},)"
                             R"("enums":[{"Value":3,"Literal":"B"},{"Value":4,"Literal":"AC"}]})"),
        R"(4 "AC" is disabled in enums)");
    // A disabled entry is not examined and need not be complete.
    EnumData data(EnumVal(1, "A"));
    data.enums.edit().resize(1);
    data.enums.edit()[0].literal.reset();
    data.enums.edit()[0].value = 1;
    EXPECT_EQ(judged(data), "throws Tolv::MetaData::Reflector::operator()(): Literal is not "
                            "initialized in Attrs::EnumVal");
    data.editMetaData().disabledList = std::vector<bool>{true};
    EXPECT_EQ(judged(data), R"(1 "A" is not in enums)");
}

TEST(EnumeratedAttrs, BasesHaveNoJudge) {
    AttrWithMetaData<int, EnumMetaData> const bare(3);
    EXPECT_FALSE(bare.validate());
    EXPECT_EQ(judged(bare), "an enumerated value without enums is never valid");
    // Through a reference to the base, both are those of the enumerated class.
    EnumIntData data;
    AttrWithMetaData<int, EnumMetaData> const& base = data;
    EXPECT_EQ(judged(base), "valid");
    data.enums = std::vector<int>{4};
    EXPECT_EQ(judged(base), "0 is not in enums");
}

TEST(EnumeratedAttrs, StoredFlagsStayAsTheyAre) {
    EnumIntData data;
    data.enums = std::vector<int>{0, 1};
    data.editMetaData().disabledList = std::vector<bool>{true, false, true};
    (void)data.validate();
    EXPECT_EQ(data.metaData().disabledList().size(), 3U);
}

TEST(EnumeratedAttrs, EntryIsCopiedWithWhatIsUnset) {
    EnumVal entry(3, "A");
    entry.literal.reset();
    EnumData const data(entry);
    EXPECT_EQ(Testing::written(data), R"({"value":{"Value":3}})");
    EXPECT_TRUE(EnumVal(3, "A") == EnumVal(3, "A"));
    EXPECT_FALSE(EnumVal(3, "A") == EnumVal(3, "a"));
    EXPECT_FALSE(EnumVal(3, "A") == EnumVal(4, "A"));
}

} // namespace
} // namespace Tolv::Msgs::Attrs
