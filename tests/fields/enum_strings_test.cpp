#include <string>

#include <gtest/gtest.h>

#include <tolv/core/msgs/identifier.h>
#include <tolv/fields/enum_strings.h>
#include <tolv/fields/reflector_array.h>

#include "support/trees.h"

namespace Instrument {

enum class Range { low = 3, high = 1, other = 99, below = -7 };
enum Coupling : unsigned char { AC, DC };

Tolv::EnumStringsThrow<Range> const rangeWords{{Range::low, "Low"}, {Range::high, "High"}};
inline auto const& stringsOf(Range) { return rangeWords; }

Tolv::EnumStringsThrow<Coupling> const couplingWords{{AC, "AC"}, {DC, "DC"}};
inline auto const& stringsOf(Coupling) { return couplingWords; }

} // namespace Instrument

namespace {

using namespace Tolv;
using namespace Tolv::MetaData;
using Instrument::Range;
using Testing::thrownBy;

TEST(EnumStrings, InsertKeepsBothDirectionsUnique) {
    EnumStringsThrow<Range> table{{Range::low, "Low"}};
    struct {
        Range value;
        char const* literal;
        bool accepted;
        char const* why;
    } const rows[] = {
        {Range::high, "", false, "an empty word stands for nothing"},
        {Range::high, "High", true, "both are new"},
        {Range::high, "High", true, "the pair is there already"},
        {Range::low, "High", false, "the word is taken"},
        {Range::high, "Tall", false, "the value is taken"},
        {Range::high, "low", true, "would be taken by a case-insensitive comparison"},
    };
    for (auto const& row : rows) {
        if (std::string_view(row.literal) == "low")
            table.remove(Range::high);
        EXPECT_EQ(table.insert(row.value, row.literal), row.accepted) << row.why;
    }
    EXPECT_EQ(table.size(), 2U);
    EXPECT_EQ(table.literal(Range::low), "Low");
    EXPECT_EQ(table.value("low"), Range::high);
    EXPECT_EQ(table.tryValue("High"), nullptr);
}

TEST(EnumStrings, ListWithRefusedPairsKeepsTheFirst) {
    EnumStringsThrow<Range> const table{
        {Range::low, "Z"}, {Range::low, "A"}, {Range::high, "Z"}, {Range::high, ""}};
    EXPECT_EQ(table.size(), 1U);
    EXPECT_EQ(table.literal(Range::low), "Z");
}

TEST(EnumStrings, UnknownOnesThrowTheirText) {
    auto const& table = Instrument::rangeWords;
    EXPECT_EQ(thrownBy<Exception::InvalidEnumValue>([&] { (void)table.literal(Range::other); }),
              "99");
    EXPECT_EQ(thrownBy<Exception::InvalidEnumValue>([&] { (void)table.literal(Range::below); }),
              "-7");
    EXPECT_EQ(thrownBy<Exception::InvalidEnumLiteral>([&] { (void)table.value("Mid"); }), "Mid");
    EXPECT_EQ(thrownBy<Exception::InvalidEnumLiteral>([&] { (void)table.value(""); }), "");
    EXPECT_EQ(table.tryLiteral(Range::other), nullptr);
    EXPECT_EQ(*table.tryValue(std::string_view("Lower", 3)), Range::low);

    EnumStringsThrow<Msgs::Identifier> const ids{{0x100000001ULL, "one"}};
    EXPECT_EQ(ids.value("one"), 0x100000001ULL);
    // Equal only in the low half; of an id, the low half is shown, as a signed number.
    EXPECT_EQ(thrownBy<Exception::InvalidEnumValue>([&] { (void)ids.literal(1); }), "1");
    EXPECT_EQ(thrownBy<Exception::InvalidEnumValue>([&] { (void)ids.literal(0x4FFFFFFFFULL); }),
              "-1");
}

TEST(EnumStrings, RemoveTakesOnlyItsValue) {
    auto table = Instrument::rangeWords;
    table.remove(Range::other);
    EXPECT_EQ(table.size(), 2U);
    table.remove(Range::low);
    EXPECT_EQ(table.tryValue("Low"), nullptr);
    EXPECT_EQ(table.literal(Range::high), "High");
}

TEST(EnumStrings, WalksInTheOrderOfTheLiterals) {
    EnumStringsThrow<Range> const table{{Range::low, "b"}, {Range::high, "C"}, {Range::other, "a"}};
    std::string order;
    for (auto const& [literal, value] : table)
        order += literal + std::to_string(static_cast<int>(value)) + ' ';
    EXPECT_EQ(order, "C1 a99 b3 ");
}

TEST(EnumStrings, DefaultPairIsNotInTheTable) {
    // The default literal with another value, and the default value with another literal, work too.
    EnumStringsThrow<Range> const all{
        {Range::low, "Unknown"}, {Range::other, "Other"}, {Range::high, "High"}};
    EnumStringsDefault<Range> const copied(Range::other, "Unknown", all);
    EXPECT_EQ(copied.size(), 1U);
    EXPECT_EQ(copied.value("High"), Range::high);
    EXPECT_EQ(all.size(), 3U);

    EnumStringsDefault<Range> const table(Range::other, "Unknown",
                                          {{Range::other, "Unknown"}, {Range::low, "Low"}});
    EXPECT_EQ(thrownBy<Exception::InvalidEnumLiteral>([&] { (void)table.value("Unknown"); }),
              "Unknown");
    EXPECT_EQ(thrownBy<Exception::InvalidEnumValue>([&] { (void)table.literal(Range::other); }),
              "99");
    EXPECT_EQ(table.value("Low"), Range::low);
    EXPECT_EQ(table.defaultLiteral(), "Unknown");
    EXPECT_EQ(table.defaultValue(), Range::other);
}

TEST(EnumStrings, ElementsHoldWords) {
    Element element;
    SetAs<Range>(Range::high, element);
    EXPECT_EQ(element.asString(), "High");
    EXPECT_EQ(GetAs<Range>(element), Range::high);
    EXPECT_THROW(SetAs<Range>(Range::other, element), Exception::InvalidEnumValue);
    EXPECT_EQ(element.asString(), "High") << "a refused value leaves the element";

    auto value = Range::below;
    for (auto const& refused :
         {Element(Trivial_T<std::string>("Mid")), Element(Trivial_T<bool>(true))}) {
        EXPECT_FALSE(TryGetAs(refused, value));
        EXPECT_ANY_THROW(GetAs(refused, value));
        EXPECT_EQ(value, Range::below);
    }
    EXPECT_THROW(GetAs<Range>(Element(Trivial_T<std::string>("Mid"))),
                 Exception::InvalidEnumLiteral);
    EXPECT_THROW(GetAs<Range>(Element(Trivial_T<bool>(true))), Exception::InvalidParameter);
}

TEST(EnumStrings, FieldsHoldWords) {
    struct Input : MirroredObject {
        Reflector<Range> range{this, "Range"_key, Required, Range::low};
        Reflector<Instrument::Coupling> coupling{this, "Coupling"_key, Optional};
        ReflectorArray<Range> ranges{this, "Ranges"_key, Optional};
    } input;
    input.coupling = Instrument::DC;
    input.ranges = std::vector{Range::high, Range::low};
    Element element;
    input.copyToMetaData(element);
    EXPECT_EQ(element["Range"].asString(), "Low");
    EXPECT_EQ(element["Coupling"].asString(), "DC");

    Input read;
    read.copyFromMetaData(element);
    EXPECT_EQ(read.coupling(), Instrument::DC);
    EXPECT_EQ(read.ranges(), input.ranges());

    // An unknown literal silently resets the field; a value without a literal cannot be written.
    SetAs<std::string>("Mid", element["Range"]);
    read.copyFromMetaData(element);
    EXPECT_FALSE(read.range.initialized());
    input.range = Range::other;
    Element refused;
    EXPECT_THROW(input.copyToMetaData(refused), Exception::InvalidEnumValue);
}

} // namespace
