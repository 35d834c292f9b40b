#include <tolv/core/metadata/conversion.h>

#include <cmath>
#include <complex>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/serializable.h>
#include <support/trees.h>

namespace Tolv::MetaData {
namespace {

using Testing::parsed;
using Testing::textOf;
using Int64Limits = std::numeric_limits<std::int64_t>;
using UInt64Limits = std::numeric_limits<std::uint64_t>;
constexpr auto nan = std::numeric_limits<double>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<double>::infinity();

Element s(std::int64_t value) {
    Element element;
    element.setSigned(value);
    return element;
}

Element u(std::uint64_t value) {
    Element element;
    element.setUnsigned(value);
    return element;
}

Element f(double value) {
    Element element;
    element.setFloating(value);
    return element;
}

template <class T>
struct Row {
    Element element;
    std::optional<T> value; ///< none: refused
    char const* why;
};

template <class T>
std::vector<Row<T>> commonRows() {
    std::vector<Row<T>> rows = {
        {s(0), T{0}, "zero"},
        {u(0), T{0}, "zero"},
        {f(0.0), T{0}, "zero"},
        {f(-0.0), T{0}, "the other zero"},
        {s(1), T{1}, "small"},
        {u(1), T{1}, "small"},
        {f(3.0), T{3}, "a double without a fraction"},
        {f(3.5), {}, "fraction"},
        {f(0.1), {}, "fraction"},
        {f(-0.5), {}, "must not become zero"},
        {f(std::nextafter(1.0, 0.0)), {}, "must not be rounded"},
        {f(5e-324), {}, "must not become zero"},
        {f(nan), {}, "no number"},
        {f(infinity), {}, "no number"},
        {f(-infinity), {}, "no number"},
        {f(1e300), {}, "far too large"},
        {f(-1e300), {}, "far too small"},
        {f(0x1p64), {}, "one beyond the largest integer of all"},
        {Element(), {}, "null is no zero"},
        {parsed("true"), {}, "true is no one"},
        {parsed("\"1\""), {}, "a text is no number"},
        {parsed("[1]"), {}, "an array of one number is none"},
        {parsed("{}"), {}, "object"},
    };
    return rows;
}

template <class T>
void check(std::vector<Row<T>> const& rows) {
    for (auto const& row : rows) {
        SCOPED_TRACE(std::string(row.why) + ", kind " +
                     std::to_string(row.element.GetElementType()));
        T const before{};
        T value = before;
        EXPECT_EQ(TryGetAs(row.element, value), row.value.has_value());
        EXPECT_EQ(value, row.value.value_or(before));
        if (row.value) {
            T thrown = before;
            GetAs(row.element, thrown);
            EXPECT_EQ(thrown, *row.value);
        } else {
            T kept = before;
            EXPECT_THROW(GetAs(row.element, kept), Exception::InvalidParameter);
            EXPECT_EQ(kept, before);
        }
    }
}

/// The number in each of the three kinds that can hold it.
template <class T>
void add(std::vector<Row<T>>& rows, std::int64_t number, std::optional<T> value, char const* why) {
    rows.push_back({s(number), value, why});
    if (number >= 0)
        rows.push_back({u(static_cast<std::uint64_t>(number)), value, why});
    if (std::int64_t{1} << 53 > (number < 0 ? -number : number))
        rows.push_back({f(static_cast<double>(number)), value, why});
}

template <class T>
void checkSmall() {
    auto rows = commonRows<T>();
    std::int64_t const least = std::numeric_limits<T>::min();
    std::int64_t const most = std::numeric_limits<T>::max();
    add<T>(rows, least, std::numeric_limits<T>::min(), "the least that fits");
    add<T>(rows, least + 1, static_cast<T>(least + 1), "one above the least");
    add<T>(rows, least - 1, {}, "one below the least");
    add<T>(rows, most, std::numeric_limits<T>::max(), "the most that fits");
    add<T>(rows, most + 1, {}, "one above the most");
    add<T>(rows, (most + 1) * 2 + 1, {}, "the low bits alone would fit");
    add<T>(rows, -((most + 1) * 2) + 1, {}, "the low bits alone would fit");
    rows.push_back({f(static_cast<double>(most) + 0.5), {}, "half above the most"});
    rows.push_back({f(static_cast<double>(least) - 0.5), {}, "half below the least"});
    rows.push_back({u(UInt64Limits::max()), {}, "all bits, which are -1 as signed"});
    check(rows);
}

TEST(Conversion, NumbersThatFitSmallTypes) {
    checkSmall<unsigned char>();
    checkSmall<unsigned short>();
    checkSmall<int>();
    checkSmall<unsigned int>();
}

TEST(Conversion, NumbersThatFitLongLong) {
    auto rows = commonRows<long long>();
    constexpr auto least = Int64Limits::min();
    constexpr auto most = Int64Limits::max();
    constexpr auto u63 = std::uint64_t{1} << 63U;
    rows.insert(rows.end(),
                {
                    {s(least), least, "the least"},
                    {s(most), most, "the most"},
                    {u(u63 - 1), most, "the most"},
                    {u(u63), {}, "one above the most"},
                    {u(UInt64Limits::max()), {}, "the bits of -1"},
                    {f(-0x1p63), least, "the least is a double"},
                    {f(std::nextafter(-0x1p63, -infinity)), {}, "the double below the least"},
                    {f(0x1p63), {}, "the most is none: this is one above"},
                    {f(std::nextafter(0x1p63, 0)), most - 1023, "the double below that"},
                    {f(0x1p53 + 2), (1LL << 53) + 2, "beyond 2^53"},
                    {f(-3.0), -3, "negative"},
                });
    check(rows);
}

TEST(Conversion, NumbersThatFitUnsignedLongLong) {
    auto rows = commonRows<unsigned long long>();
    constexpr auto most = UInt64Limits::max();
    rows.insert(rows.end(),
                {
                    {u(most), most, "the most"},
                    {s(-1), {}, "has the bits of the most"},
                    {s(Int64Limits::min()), {}, "negative"},
                    {s(Int64Limits::max()), most / 2, "the most of a signed number"},
                    {f(std::nextafter(0x1p64, 0)), most - 2047, "the largest double that fits"},
                    {f(0x1p63), std::uint64_t{1} << 63U, "beyond the signed range"},
                    {f(-1.0), {}, "negative"},
                });
    check(rows);
}

TEST(Conversion, Doubles) {
    struct {
        Element element;
        std::optional<double> value;
        char const* why;
    } const rows[] = {
        {f(0.1), 0.1, "itself"},
        {f(-0.0), -0.0, "the sign of zero stays"},
        {f(infinity), infinity, "itself"},
        {f(nan), nan, "itself"},
        {s(-3), -3.0, "signed"},
        {u(3), 3.0, "unsigned"},
        {s((1LL << 53) + 1), 0x1p53, "nearest, ties to even"},
        {s((1LL << 53) + 3), 0x1p53 + 4, "nearest, ties to even"},
        {s(Int64Limits::min()), -0x1p63, "exact"},
        {u(UInt64Limits::max()), 0x1p64, "nearest"},
        {parsed("\"NaN\""), nan, "no number in JSON"},
        {parsed("\"Infinity\""), infinity, "no number in JSON"},
        {parsed("\"-Infinity\""), -infinity, "no number in JSON"},
        {parsed("\"+Infinity\""), {}, "not what the writer makes"},
        {parsed("\"nan\""), {}, "case matters"},
        {parsed("\"NaN \""), {}, "nothing behind"},
        {parsed("\"\""), {}, "no text"},
        {parsed("\"1.5\""), {}, "numbers are no texts"},
        {Element(), {}, "null is no zero"},
        {parsed("true"), {}, "true is no one"},
        {parsed("[1.5]"), {}, "array"},
    };
    for (auto const& row : rows) {
        double value = 42;
        EXPECT_EQ(TryGetAs(row.element, value), row.value.has_value()) << row.why;
        auto const expected = row.value.value_or(42);
        EXPECT_TRUE(value == expected || (std::isnan(value) && std::isnan(expected))) << row.why;
        EXPECT_EQ(std::signbit(value), std::signbit(expected)) << row.why;
    }
}

TEST(Conversion, OtherTypes) {
    check<bool>({{parsed("true"), true, "itself"},
                 {parsed("false"), false, "itself"},
                 {s(1), {}, "a number is no boolean"},
                 {parsed("\"true\""), {}, "a text is no boolean"},
                 {Element(), {}, "null"}});
    check<std::string>({{parsed("\"\""), "", "empty"},
                        {parsed("\"a\\u0000b\""), std::string("a\0b", 3), "NUL"},
                        {s(1), {}, "no string"},
                        {parsed("[\"a\"]"), {}, "array"},
                        {Element(), {}, "null is no empty string"}});
    check<std::vector<int>>({{parsed("[]"), std::vector<int>{}, "empty"},
                             {parsed("[1,2.0,-3]"), std::vector<int>{1, 2, -3}, "kinds mixed"},
                             {parsed("[1,2.5]"), {}, "the second does not fit"},
                             {parsed("[1,4294967296]"), {}, "too large"},
                             {parsed("[1,null]"), {}, "null is no zero"},
                             {parsed("1"), {}, "one number is no list"},
                             {parsed("{}"), {}, "object"},
                             {Element(), {}, "null is no empty list"}});
    check<std::vector<std::string>>(
        {{parsed("[]"), std::vector<std::string>{}, "empty"},
         {parsed("[\"a\",\"\"]"), std::vector<std::string>{"a", ""}, "list"},
         {parsed("[\"a\",1]"), {}, "the second is none"},
         {parsed("\"a\""), {}, "one string is no list"}});
    check<std::complex<double>>(
        {{parsed("[1,-2.5]"), std::complex<double>(1, -2.5), "integer and double"},
         {parsed("[1]"), {}, "too short"},
         {parsed("[1,2,3]"), {}, "too long"},
         {parsed("[1,\"x\"]"), {}, "no number"},
         {parsed("1"), {}, "a real number is none"}});
    check<std::complex<bool>>({{parsed("[true,false]"), std::complex<bool>(true, false), "itself"},
                               {parsed("[false,true]"), std::complex<bool>(false, true), "order"},
                               {parsed("[1,0]"), {}, "numbers are no booleans"},
                               {parsed("[true]"), {}, "too short"}});
}

TEST(Conversion, AFailureKeepsTheValue) {
    std::vector<int> list{7};
    EXPECT_FALSE(TryGetAs(parsed("[1,2,\"x\"]"), list));
    EXPECT_THROW(GetAs(parsed("[1,2,\"x\"]"), list), Exception::InvalidParameter);
    EXPECT_EQ(list, std::vector<int>{7});
    std::complex<double> complex(1, 2);
    EXPECT_FALSE(TryGetAs(parsed("[3,\"x\"]"), complex));
    EXPECT_EQ(complex, std::complex<double>(1, 2));
}

template <class T>
std::string refusal(Element const& element) {
    T value{};
    return Testing::thrownBy<Exception::InvalidParameter>([&] { GetAs(element, value); });
}

TEST(Conversion, TheTextSaysWhatWasExpectedAndFound) {
    EXPECT_EQ(refusal<int>(f(3.5)), "expected a number that fits int, found 3.5");
    EXPECT_EQ(refusal<int>(u(UInt64Limits::max())),
              "expected a number that fits int, found 18446744073709551615");
    EXPECT_EQ(refusal<unsigned char>(s(-1)), "expected a number that fits unsigned char, found -1");
    EXPECT_EQ(refusal<unsigned long long>(parsed("\"x\"")),
              "expected a number that fits unsigned long long, found a string");
    EXPECT_EQ(refusal<std::string>(s(1)), "expected a string, found a number");
    EXPECT_EQ(refusal<double>(Element()), "expected a number, found null");
    EXPECT_EQ(refusal<bool>(s(1)), "expected a boolean, found a number");
    EXPECT_EQ(refusal<std::vector<int>>(parsed("{}")), "expected an array, found an object");
    EXPECT_EQ(refusal<std::vector<int>>(parsed("[1,2,0.5]")),
              "expected a number that fits int at index 2, found 0.5");
    EXPECT_EQ(refusal<std::vector<std::string>>(parsed("[null]")),
              "expected a string at index 0, found null");
}

template <class T>
void roundTrip(T const& value, char const* text, Kind kind) {
    auto element = parsed("\"a text of more than 14 bytes\""); // to be replaced
    SetAs(value, element);
    EXPECT_EQ(element.kind(), kind) << text;
    EXPECT_EQ(textOf(element), text);
    T back{};
    GetAs(parsed(textOf(element)), back);
    EXPECT_EQ(back, value) << text;
}

TEST(Conversion, ThroughTextAndBack) {
    roundTrip(true, "true", Kind::boolean);
    roundTrip<unsigned char>(255, "255", Kind::unsignedNumber);
    roundTrip<unsigned short>(65535, "65535", Kind::unsignedNumber);
    roundTrip(-1, "-1", Kind::signedNumber);
    roundTrip(4294967295U, "4294967295", Kind::unsignedNumber);
    roundTrip<long long>(Int64Limits::min(), "-9223372036854775808", Kind::signedNumber);
    roundTrip<unsigned long long>(UInt64Limits::max(), "18446744073709551615",
                                  Kind::unsignedNumber);
    roundTrip(3.0, "3.0", Kind::floatingNumber);
    roundTrip(-infinity, "\"-Infinity\"", Kind::floatingNumber);
    roundTrip(std::string("a\nb"), "\"a\\nb\"", Kind::string);
    roundTrip(std::complex<bool>(true, false), "[true,false]", Kind::array);
    roundTrip(std::complex<double>(1, infinity), "[1.0,\"Infinity\"]", Kind::array);
    roundTrip(std::vector<int>{}, "[]", Kind::array);
    roundTrip(std::vector<int>{1, -2}, "[1,-2]", Kind::array);
    roundTrip(std::vector<std::string>{"", "a text of more than 14 bytes"},
              "[\"\",\"a text of more than 14 bytes\"]", Kind::array);
}

TEST(Conversion, Results) {
    EXPECT_EQ(GetAs<bool>(parsed("true")), true);
    EXPECT_EQ(GetAs<int>(f(-3.0)), -3);
    EXPECT_EQ(GetAs<unsigned int>(s(3)), 3U);
    EXPECT_EQ(GetAs<std::string>(parsed("\"x\"")), "x");
    EXPECT_THROW(static_cast<void>(GetAs<unsigned int>(s(-3))), Exception::InvalidParameter);
}

class Serializable : public PartiallySerializableInterface {
public:
    void copyToMetaData(Element& element) const override { element["x"].setSigned(1); }
    void copyFromMetaData(Element const&) override {}
};

TEST(Conversion, ObjectsWriteThemselves) {
    Serializable const object;
    Element element;
    SetAs(static_cast<PartiallySerializableInterface const&>(object), element);
    EXPECT_EQ(textOf(element), R"({"x":1})");
}

} // namespace
} // namespace Tolv::MetaData
