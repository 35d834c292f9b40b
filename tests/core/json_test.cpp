#include <tolv/core/metadata/json.h>

#include <algorithm>
#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <boost/multiprecision/cpp_int.hpp>
#include <simdjson.h>

#include <tolv/core/exceptions.h>
#include <support/counters.h>
#include <support/trees.h>

namespace Tolv::MetaData {
namespace {

using namespace std::literals;

Element parsed(std::string_view text) {
    auto element = Testing::parsed(text);
    Testing::Taken taken;
    taken.copyFromText(text);
    EXPECT_EQ(taken.tree, element);
    return element;
}

std::string textOf(Element const& element, bool compact = true) {
    std::string text = "left from before";
    WriterJson::Write(element, text, compact);
    return text;
}

/// Why `text` is refused, or "accepted".
std::string refusalOf(std::string_view text, Limits const& limits = {}) {
    Element element;
    element.setString("must stay as it is");
    try {
        ReaderJson::Read(element, text, limits);
    } catch (Exception::InvalidParameter const& e) {
        EXPECT_EQ(element.asStringView(), "must stay as it is") << text;
        EXPECT_EQ(Testing::thrownBy<Exception::InvalidParameter>(
                      [&] { Testing::Taken().copyFromText(text, limits); }),
                  e.what());
        return e.what();
    }
    return "accepted";
}

// ---- Accepted and refused --------------------------------------------------------------------

struct Accepted {
    std::string text;
    std::string written; ///< in the compact form of the writer
    char const* why;
};

std::vector<Accepted> const accepted = {
    {"null", "null", "a value of any kind is a text"},
    {"true", "true", "literal"},
    {"false", "false", "literal"},
    {"0", "0", "digit"},
    {"-0", "-0.0", "zero keeps its sign, which integers have none of"},
    {"-0.0", "-0.0", "negative zero"},
    {"-0e5", "-0.0", "negative zero with an exponent"},
    {"0.0", "0.0", "a double stays one"},
    {"0e0", "0.0", "an exponent makes a double"},
    {"0E+0", "0.0", "capital E"},
    {"0e-1", "0.0", "negative exponent"},
    {"10", "10", "zero behind another digit"},
    {"-1", "-1", "negative"},
    {"1.0", "1.0", "a double with an integral value"},
    {"1.5e3", "1500.0", "exponent"},
    {"1e5", "1e+05", "the shorter form"},
    {"123e-2", "1.23", "negative exponent"},
    {"1e-400", "0.0", "too small for a double"},
    {"-1e-400", "-0.0", "too small for a double, with sign"},
    {"0.1e1", "1.0", "zero before the point"},
    {"9223372036854775807", "9223372036854775807", "largest signed number"},
    {"9223372036854775808", "9223372036854775808", "smallest that is only unsigned"},
    {"-9223372036854775808", "-9223372036854775808", "smallest signed number"},
    {"-9223372036854775809", "-9223372036854775808.0", "beyond all integers: nearest double"},
    {"18446744073709551615", "18446744073709551615", "largest unsigned number"},
    {"18446744073709551616", "18446744073709551616.0", "beyond all integers: nearest double"},
    {"100000000000000000000000", "1e+23", "beyond all integers: nearest double"},
    {"9007199254740993", "9007199254740993", "no double, but an integer"},
    {"9007199254740993.0", "9007199254740992.0", "the nearest double, ties to even"},
    {"\"\"", "\"\"", "empty string"},
    {"\"a\"", "\"a\"", "string"},
    {R"("\"\\\/\b\f\n\r\t")", R"("\"\\/\b\f\n\r\t")", "all short escapes"},
    {R"("\u0041")", "\"A\"", "escaped without need"},
    {R"("\u0000")", R"("\u0000")", "NUL, escaped"},
    {R"("\u001f\u001F")", R"("\u001F\u001F")", "hexadecimal digits of both cases"},
    {R"("\u007f")", "\"\x7F\"", "DEL is no control character of JSON"},
    {R"("\u0080\u07ff\u0800\uffff")", "\"\u0080\u07FF\u0800\uFFFF\"", "borders of UTF-8 lengths"},
    {R"("\ud834\udd1e")", "\"\U0001D11E\"", "pair of surrogates"},
    {R"("\uD800\uDC00\uDBFF\uDFFF")", "\"\U00010000\U0010FFFF\"", "first and last pair"},
    {R"("\ud7ff\ue000")", "\"\uD7FF\uE000\"", "neighbours of the surrogates"},
    {"\"\x7F\"", "\"\x7F\"", "raw DEL"},
    {"\"\u00E4\u20AC\U0001F600\"", "\"\u00E4\u20AC\U0001F600\"", "raw UTF-8 of all lengths"},
    {"\"\uFEFF\"", "\"\uFEFF\"", "a byte order mark inside of a string is a character"},
    {"\"/\"", "\"/\"", "a slash needs no escape"},
    {"[]", "[]", "empty array"},
    {"[ \t\r\n]", "[]", "all kinds of white space"},
    {"{}", "{}", "empty object"},
    {" { } ", "{}", "white space everywhere"},
    {"\t\n\r [ 1 , 2 ] \t\n\r", "[1,2]", "white space everywhere"},
    {R"( { "a" : 1 , "b" : 2 } )", R"({"a":1,"b":2})", "white space everywhere"},
    {"[null,true,false,0,\"\",[],{}]", "[null,true,false,0,\"\",[],{}]", "values of all kinds"},
    {R"({"":0})", R"({"":0})", "empty key"},
    {R"({"\u0061":1,"A":2})", R"({"a":1,"A":2})", "escape in a key; case matters"},
    {R"({"a":{"a":{"a":1}}})", R"({"a":{"a":{"a":1}}})", "one key on several levels"},
    {R"([{"a":1},{"a":2}])", R"([{"a":1},{"a":2}])", "one key in several objects"},
    {"1 ", "1", "number, then white space"},
    {"1\n", "1", "number, then the end of a line"},
    {"[1]", "[1]", "number, then bracket"},
    {"[-1,0.5e1]", "[-1,5.0]", "numbers in an array"},
    {"12345678901234567890123456789012345678901234567890", "1.2345678901234567e+49", "long number"},
    {"0.000000000000000000000000000000000000000000000001", "1e-48", "long fraction"},
};

struct Refused {
    std::string text;
    std::size_t offset; ///< of the byte that the message names
    char const* why;
};

std::vector<Refused> const refused = {
    {"", 0, "no value"},
    {" \t\n", 3, "no value"},
    // Numbers, besides all short ones in json_grammar_test.cpp.
    {"[01                                        ]", 2, "leading zero, with text behind"},
    {".5", 0, "no digit before the point"},
    {"-.5", 1, "no digit before the point"},
    {"[1.]", 3, "no digit behind the point"},
    {"[1.e5]", 3, "no digit behind the point"},
    {"[1e-]", 4, "no exponent"},
    {"[-]", 2, "sign alone"},
    {"-a                                         ", 1, "sign and letter"},
    {"0x1", 1, "hexadecimal"},
    {"1_000", 1, "separator"},
    {"1,000", 1, "separator"},
    {"NaN", 0, "no number"},
    {"nan ", 0, "no number"},
    {"Infinity", 0, "no number"},
    {"-Infinity", 1, "no number"},
    {"1e400", 0, "too large for a double"},
    {"[1,-1e309]", 3, "too large for a double"},
    {"[1, 1" + std::string(400, '0') + "]", 4, "too large for a double"},
    {"1a", 1, "letter behind"},
    // Literals.
    {"nul", 3, "cut"},
    {"tru", 3, "cut"},
    {"fals", 4, "cut"},
    {"Null", 0, "case"},
    {"TRUE", 0, "case"},
    {"nulll", 4, "longer"},
    {"truefalse", 4, "two values"},
    {"undefined", 0, "unknown word"},
    {"'a'", 0, "single quotes"},
    // Strings.
    {"\"", 1, "not closed"},
    {"\"a", 2, "not closed"},
    {"\"\\\"", 3, "the quote is escaped"},
    {"\"\\", 2, "cut in an escape"},
    {"\"a\nb\"", 2, "raw line feed"},
    {"\"a\tb\"", 2, "raw tabulator"},
    {"\"\0\""s, 1, "raw NUL"},
    {"\"abcdefghijklmnopqrstuvwxyz\x1F\"", 27, "last control character"},
    {"\"\\n\x01\"", 3, "raw control character behind an escape"},
    {R"("\u")", 3, "no digits"},
    {R"("\u004")", 6, "three digits"},
    {R"("\u00g0")", 5, "no hexadecimal digit"},
    {R"("\u00g0             ")", 5, "no hexadecimal digit, with text behind"},
    {R"("\u+041")", 3, "sign"},
    {R"("\u{41}")", 3, "another language"},
    {R"("\ud800")", 7, "leading surrogate alone"},
    {R"("\ud800             ")", 7, "leading surrogate alone, with text behind"},
    {R"("\ud800\n           ")", 8, "leading surrogate and another escape"},
    {R"("\udc00             ")", 2, "trailing surrogate alone"},
    {R"("\ud800\ud800       ")", 9, "two leading surrogates"},
    {R"("\ud800\u0041       ")", 9, "leading surrogate and a letter"},
    // Structure, besides all short texts in json_grammar_test.cpp.
    {R"({"a":1,})", 7, "comma before the end"},
    {R"({"a":1 "b":2})", 7, "no comma"},
    {"{a:1}", 1, "no quotes"},
    {"{'a':1}", 1, "single quotes"},
    {"// comment\n1", 0, "comment"},
    {"1 // comment", 2, "comment"},
    {"[1/* */]", 2, "comment"},
    {"#1", 0, "comment"},
    // Characters outside of strings.
    {"\0"s, 0, "NUL"},
    {"1\0"s, 1, "NUL behind the value"},
    {"[1,\0]"s, 3, "NUL between"},
    {"\xEF\xBB\xBF"
     "1",
     0, "byte order mark"},
    {"\u00A0"
     "1",
     0, "no white space of JSON"},
    {"\v1", 0, "no white space of JSON"},
    {"1\f", 1, "no white space of JSON"},
    {"1 x", 2, "text behind"},
    // UTF-8, besides the cases in json_grammar_test.cpp.
    {"\"abcdefghijklmnopqrstuvwxyz\xE2\x28\xA1 and more text\"", 27, "wrong second byte"},
    {"\"\\n\xE2\x82\"", 3, "cut, behind an escape"},
    {"\"\\n" + std::string(5000, 'x') + "\xE2\x82\"", 5003, "cut, far behind an escape"},
    {"[1,\xC3\xA4]", 3, "good UTF-8 outside of strings"},
    {"[1,\xC3]", 3, "bad UTF-8 outside of strings"},
};

TEST(ReaderJson, Accepts) {
    for (auto const& row : accepted) {
        SCOPED_TRACE(row.text + ": " + row.why);
        EXPECT_EQ(refusalOf(row.text), "accepted");
        EXPECT_EQ(textOf(parsed(row.text)), row.written);
        EXPECT_EQ(parsed(row.written), parsed(row.text));
    }
}

TEST(ReaderJson, RefusesAndSaysWhere) {
    for (auto const& row : refused) {
        auto const refusal = refusalOf(row.text);
        EXPECT_TRUE(refusal.ends_with(" at byte " + std::to_string(row.offset)))
            << row.text << ": " << row.why << "\n  expected byte " << row.offset << "\n  "
            << refusal;
    }
}

TEST(ReaderJson, TheTextSaysWhatIsWrong) {
    struct {
        std::string text;
        std::string message;
    } const rows[] = {
        {"", "no value at byte 0"},
        {"[1", "unexpected end at byte 2"},
        {"[1 x", "unexpected 'x' at byte 3"},
        {"\"\n\"", "unexpected byte 0x0A at byte 1"},
        {"1 2", "trailing text after the value at byte 2"},
        {"\"\xFF\"", "invalid UTF-8 at byte 1"},
        {"\xEF\xBB\xBF{}", "byte order mark at byte 0"},
        {R"("\ud800\ud800       ")", "unpaired surrogate at byte 9"},
        {R"("\u00x0")", "expected four hexadecimal digits at byte 5"},
        {"[1e400]", "number out of range for a double at byte 1"},
        {R"({"a":1,"b":2,"a":3})", "duplicate key \"a\" in an object at byte 13"},
    };
    for (auto const& row : rows)
        EXPECT_EQ(refusalOf(row.text), "JSON text refused: " + row.message) << row.text;
}

TEST(ReaderJson, ReadsNothingBehindTheText) {
    // A view that ends in the middle of a longer text: what follows must not matter.
    std::string const text = "[1234567,\"text\",true,1.5e10]";
    for (std::size_t size = 0; size < text.size(); ++size)
        EXPECT_NE(refusalOf(std::string_view(text).substr(0, size)), "accepted") << size;
    EXPECT_EQ(parsed(std::string_view("1234").substr(0, 2)).signedNumber(), 12);
    EXPECT_EQ(parsed(std::string_view("truetrue").substr(0, 4)).boolean(), true);
    EXPECT_EQ(refusalOf(std::string_view()), "JSON text refused: no value at byte 0");
}

TEST(ReaderJson, AllocatesOnlyWhatTheTreeKeeps) {
    auto const text = R"({"MessageID":844424930131969,"Sender":["client","ui"],)"
                      R"("Destination":["instrument","service"],)"
                      R"("Data":{"MaxVersion":1,"MinVersion":1,"BinaryTransmission":true}})"s;
    Testing::Counted const counted;
    Element element;
    ReaderJson::Read(element, text);
    EXPECT_EQ(counted.allocations(), 5U) << "four containers and a key of more than 14 bytes";
}

TEST(ReaderJson, ARefusalLeavesNothingBehind) {
    for (auto const& row : refused) {
        // After more values than the reader's initial buffer holds.
        std::string text = "[\"a text of more than 14 bytes\",{\"b\":[[1]]},";
        for (int i = 0; i < 200; ++i)
            text += "[0],";
        text += "{\"c\":" + row.text;
        Testing::Counted const counted;
        EXPECT_NE(refusalOf(text), "accepted") << row.text;
        EXPECT_EQ(counted.blocks(), 0) << row.text << ": " << row.why;
    }
    // After a list that is closed, so that its entries have already moved into it.
    for (auto const* const key : {"abcde", "a key that is a text of its own"}) {
        auto const text =
            R"({"a":["a text of more than 14 bytes","another one of these"],")"s + key;
        Testing::Counted const counted;
        EXPECT_NE(refusalOf(text + "\":1}                ", {.keyBytes = 4}), "accepted");
        EXPECT_EQ(counted.blocks(), 0) << key;
    }
}

TEST(ReaderJson, RefersToATextThatIsShared) {
    std::string const umlauts = std::string(5000, 'x') + "\u00E4";
    struct {
        std::string text; ///< between the quotes
        std::string value;
        bool borrowed;
        char const* why;
    } const rows[] = {
        {std::string(4095, 'a'), std::string(4095, 'a'), false, "short enough for a copy"},
        {std::string(4096, 'a'), std::string(4096, 'a'), true, "the shortest that is not copied"},
        {umlauts, umlauts, true, "not ASCII"},
        {std::string(5000, 'a') + "\\n", std::string(5000, 'a') + '\n', false, "with an escape"},
    };
    for (auto const& row : rows) {
        auto text = std::make_shared<std::string const>("[\"" + row.text + "\"]");
        auto const* const begin = text->data();
        std::weak_ptr<std::string const> const alive = text;
        Element element;
        ReaderJson::Read(element, text);
        text.reset();
        Element copy = element;
        element.setNull();
        EXPECT_EQ(alive.expired(), !row.borrowed) << row.why;
        auto const& read = static_cast<Array const&>(copy)[0];
        EXPECT_EQ(read.asStringView(), row.value) << row.why;
        EXPECT_EQ(read.asStringView().data() == begin + 2, row.borrowed) << row.why;
        EXPECT_EQ(parsed(textOf(copy)), copy) << row.why;
        copy.setNull();
        EXPECT_TRUE(alive.expired()) << row.why;
    }
    Element element;
    EXPECT_THROW(ReaderJson::Read(element, std::shared_ptr<std::string const>()),
                 Exception::InvalidParameter);
    auto const broken =
        std::make_shared<std::string const>('"' + std::string(5000, 'x') + "\xFF\"");
    EXPECT_THROW(ReaderJson::Read(element, broken), Exception::InvalidParameter);
    EXPECT_EQ(broken.use_count(), 1);
}

// ---- Duplicate keys --------------------------------------------------------------------------

TEST(ReaderJson, RefusesAKeyThatStandsTwice) {
    std::string const longKey(50, 'k');
    auto const manyKeys = [](int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += "\"key" + std::to_string(i) + "\":" + std::to_string(i) + ',';
        return text;
    };
    struct {
        std::string before; ///< up to the second of the two keys
        std::string after;
        char const* why;
    } const rows[] = {
        {R"({"a":1,)", R"("a":2})", "short"},
        {R"({"a":1,)", R"("a":1})", "with one value"},
        {R"({"":1,)", R"("":2})", "empty"},
        {R"({"a":1,)", R"("\u0061":2})", "written in another way"},
        {"{\"" + longKey + "\":1,", '"' + longKey + "\":2}", "long"},
        {R"( [ 1 , { "x" : "}{\"" , "a" : [ {"a":1} , "a" ] , "b" : {"a":2} , )", R"("a" : 3 } ])",
         "deep, among other objects with this key"},
        {R"({"\u0000":1,)", R"("\u0000":2})", "NUL, which must not end the message"},
        {"{" + manyKeys(32), "\"key5\":0}", "the first object with an index"},
        {"{" + manyKeys(31), "\"key5\":0}", "the last one without"},
        {"{" + manyKeys(100), "\"key5\":0}", "many"},
        {"{" + manyKeys(100), "\"key99\":0," + manyKeys(0) + "\"end\":1}", "many, not the last"},
    };
    for (auto const& row : rows) {
        auto const refusal = refusalOf(row.before + row.after);
        EXPECT_TRUE(refusal.ends_with(" in an object at byte " + std::to_string(row.before.size())))
            << row.why << "\n  expected byte " << row.before.size() << "\n  " << refusal;
    }
    auto const umlauts = "\"" + std::string(59, 'x') + "\u00E4" + std::string(1000, 'y') + "\"";
    EXPECT_EQ(refusalOf("{" + umlauts + ":1," + umlauts + ":2}").substr(0, 110),
              "JSON text refused: duplicate key \"" + std::string(59, 'x') + "...\" in an object")
        << "a long key is cut between two characters";
}

// ---- Depth -----------------------------------------------------------------------------------

std::string nested(std::string const& open, std::string const& close, std::size_t depth) {
    std::string text;
    for (std::size_t i = 0; i < depth; ++i)
        text += open;
    if (open.back() == ':')
        text += '0';
    for (std::size_t i = 0; i < depth; ++i)
        text += close;
    return text;
}

TEST(ReaderJson, Depth) {
    struct {
        char const* open;
        char const* close;
        std::size_t levels; ///< of one such piece
    } const rows[] = {{"[", "]", 1}, {"{\"a\":", "}", 1}, {"[{\"a\":", "}]", 2}};
    for (auto const& row : rows) {
        auto const most = 256 / row.levels;
        auto const text = nested(row.open, row.close, most);
        EXPECT_EQ(refusalOf(text), "accepted") << row.open;
        EXPECT_EQ(textOf(parsed(text)), text) << row.open;
        EXPECT_EQ(refusalOf('[' + text + ']'),
                  row.levels == 2 || row.open[0] == '{'
                      ? "JSON text refused: more than 256 nested arrays and objects at byte " +
                            std::to_string(1 + text.find_last_of('{'))
                      : "JSON text refused: more than 256 nested arrays and objects at byte 256");
        EXPECT_EQ(refusalOf('[' + text + ",1]", {.depth = 257}), "accepted") << row.open;
        EXPECT_NE(refusalOf(nested(row.open, row.close, 1'000'000)).find("nested arrays"),
                  std::string::npos);
        EXPECT_EQ(refusalOf(nested(row.open, row.close, 200'000),
                            {.depth = std::numeric_limits<std::size_t>::max()}),
                  "accepted")
            << "depth costs no stack";
    }
    EXPECT_EQ(refusalOf("[[],[],{}]", {.depth = 2}), "accepted") << "siblings are not deeper";
    EXPECT_EQ(refusalOf("1", {.depth = 0}), "accepted");
    EXPECT_NE(refusalOf("[]", {.depth = 0}), "accepted");
}

TEST(WriterJson, Depth) {
    for (bool const objects : {false, true}) {
        Element tree;
        for (int depth = 1; depth <= 257; ++depth) {
            if (objects) {
                Object object;
                object["a"] = std::move(tree);
                tree = Element(std::move(object));
            } else {
                Array array;
                array.push_back(std::move(tree));
                tree = Element(std::move(array));
            }
            std::string text;
            if (depth <= 256)
                EXPECT_NO_THROW(WriterJson::Write(tree, text)) << depth;
            else
                EXPECT_THROW(WriterJson::Write(tree, text), Exception::InvalidParameter) << depth;
        }
    }
}

// ---- Numbers ---------------------------------------------------------------------------------

TEST(Json, IntegersStayExact) {
    constexpr auto p53 = std::int64_t{1} << 53;
    constexpr auto p63 = std::uint64_t{1} << 63U;
    for (auto const value :
         {std::int64_t{0}, std::int64_t{1}, std::int64_t{-1}, p53 - 1, p53, p53 + 1, -p53 - 1,
          std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}) {
        Element element;
        element.setSigned(value);
        auto const back = parsed(textOf(element));
        EXPECT_EQ(textOf(element), std::to_string(value));
        ASSERT_TRUE(back.isSigned()) << value;
        EXPECT_EQ(back.signedNumber(), value);
    }
    for (auto const value : {p63, p63 + 1, std::numeric_limits<std::uint64_t>::max()}) {
        Element element;
        element.setUnsigned(value);
        auto const back = parsed(textOf(element));
        EXPECT_EQ(textOf(element), std::to_string(value));
        ASSERT_TRUE(back.isUnsigned()) << value;
        EXPECT_EQ(back.unsignedNumber(), value);
    }
    std::mt19937_64 random(1);
    for (int i = 0; i < 100'000; ++i) {
        auto const value =
            static_cast<std::int64_t>(random() >> (random() % 64)) * (random() % 2 == 0 ? 1 : -1);
        // On its own and followed by more text: the parser has two code paths.
        auto const digits = std::to_string(value);
        ASSERT_EQ(parsed(digits).signedNumber(), value);
        auto const tree = parsed("[" + digits + std::string(40, ' ') + "]");
        ASSERT_EQ(tree.array().begin()->signedNumber(), value);
    }
}

void checkDouble(double value) {
    Element element;
    element.setFloating(value);
    auto const text = textOf(element);
    auto const back = parsed(text);
    ASSERT_TRUE(back.isFloating()) << text << ": the kind must be readable";
    ASSERT_EQ(std::bit_cast<std::uint64_t>(back.floatingNumber()),
              std::bit_cast<std::uint64_t>(value))
        << text;
    ASSERT_EQ(std::strtod(text.c_str(), nullptr), value) << text;
}

TEST(Json, DoublesStayTheSameToTheBit) {
    for (auto const value : {0.0,
                             -0.0,
                             1.0,
                             -1.0,
                             0.1,
                             1.0 / 3,
                             5e-324,
                             -5e-324,
                             2.2250738585072014e-308,
                             2.2250738585072009e-308,
                             1.7976931348623157e308,
                             -1.7976931348623157e308,
                             9007199254740992.0,
                             9007199254740994.0,
                             1e22,
                             1e23,
                             9.5367431640625e-07,
                             0x1p63,
                             -0x1p63,
                             0x1p64,
                             1e15,
                             1e16,
                             1e17,
                             123456789012345680.0,
                             4.35,
                             2e-44})
        checkDouble(value);
    std::mt19937_64 random(2);
    for (int i = 0; i < 200'000; ++i)
        if (auto const value = std::bit_cast<double>(random()); std::isfinite(value))
            checkDouble(value);
    for (int i = 0; i < 20'000; ++i)
        checkDouble(std::bit_cast<double>(random() & 0x800FFFFFFFFFFFFFULL)); // denormal
    for (int i = 0; i < 20'000; ++i)
        checkDouble(static_cast<double>(random() >> (random() % 64))); // integral
}

TEST(ReaderJson, DoublesAreTheNearestOnes) {
    ASSERT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C"); // strtod is the second opinion
    std::string const rows[] = {
        "1.00000000000000011102230246251565404236316680908203125", // halfway: to even
        "1.00000000000000011102230246251565404236316680908203126", // a little more
        "1.00000000000000011102230246251565404236316680908203124", // a little less
        "1.00000000000000033306690738754696212708950042724609375", // halfway: to even, upwards
        "2.4703282292062327208e-324",                              // half of the smallest: zero
        "2.4703282292062327209e-324",                              // a little more
        "2.2250738585072011e-308",                                 // next to the denormals
        "2.2250738585072012e-308",
        "1.7976931348623158e308", // still the largest
        "1.797693134862315807e308",
        "0." + std::string(400, '0') + "1e401",
        "1" + std::string(400, '0') + "e-400",
        "123456789012345678901234567890e-30",
        "8.41e21",
        "9.0e-265",
        "3.4e38",
        "6.02e23",
        "5e-324",
        "4.9e-324",
        "1e-323",
        "1e-5000",
        "-1e-5000",
        "0e5000",
        "0.0e-5000",
        "1e-999999999",
        "0e999999999",
    };
    for (auto const& text : rows) {
        for (auto const& surrounded : {text, " " + text + std::string(40, ' ')}) {
            auto const value = parsed(surrounded).floatingNumber();
            EXPECT_EQ(std::bit_cast<std::uint64_t>(value),
                      std::bit_cast<std::uint64_t>(std::strtod(text.c_str(), nullptr)))
                << text;
        }
    }
    std::mt19937_64 random(3);
    auto const digits = [&](std::size_t most) {
        std::string text;
        for (auto i = random() % most + 1; i > 0; --i)
            text += static_cast<char>('0' + random() % 10);
        return text;
    };
    for (int i = 0; i < 100'000; ++i) {
        auto text = std::to_string(random() % 9 + 1) + digits(25) + '.' + digits(30);
        if (random() % 2 == 0)
            text += 'e' + std::to_string(static_cast<int>(random() % 700) - 400);
        auto const expected = std::strtod(text.c_str(), nullptr);
        if (std::isinf(expected))
            ASSERT_NE(refusalOf(text), "accepted") << text;
        else
            ASSERT_EQ(parsed(text).floatingNumber(), expected) << text;
    }
}

using boost::multiprecision::cpp_int;

/// Whether the decimal `mantissa` times 10 to the `exponent` is far below the range of a
/// double or 0 (-1), near or within that range (0), or far beyond it (1). Exponents are unbounded.
int magnitude(std::string const& mantissa, std::string const& exponent) {
    auto const first = mantissa.find_first_of("123456789");
    if (first == std::string::npos)
        return -1;
    auto const point = std::min(mantissa.find('.'), mantissa.size());
    cpp_int const place =
        first < point ? cpp_int(point - first) : cpp_int(-cpp_int(first - point - 1));
    auto const negative = exponent.starts_with('-');
    auto const digits = exponent.find_first_not_of("-0"); // a leading 0 would mean octal
    cpp_int const size(digits == std::string::npos ? "0" : exponent.substr(digits));
    cpp_int const decade = place + (negative ? cpp_int(-size) : size);
    return decade > 400 ? 1 : decade < -400 ? -1 : 0;
}

TEST(ReaderJson, ExponentsOfAnySize) {
    std::vector<std::string> exponents{"0"};
    for (unsigned int const bits : {31U, 32U, 63U, 64U, 65U})
        for (int const distance : {-401, -2, -1, 0, 1, 2, 401})
            exponents.push_back(cpp_int((cpp_int(1) << bits) + distance).str());
    exponents.push_back(std::string(40, '9'));
    exponents.push_back(std::string(40, '0') + '1');
    std::string const zeros(400, '0');
    for (std::string const& mantissa :
         {"0"s, "0.0"s, "1"s, "0.1"s, "0.01"s, "9.9"s, "10"s, "0." + zeros, "0." + zeros + '1',
          '1' + zeros, '1' + zeros + ".0", '1' + zeros + '.' + zeros + '1',
          "0." + zeros + "1" + zeros, "123456789012345678901234567890"s,
          "12345678901234567890.12345678901234567890"s}) {
        for (auto const& digits : exponents) {
            for (auto const& exponent : {digits, '-' + digits}) {
                for (auto const sign : {"", "-"}) {
                    auto const text = sign + mantissa + 'e' + exponent;
                    auto const expected = magnitude(mantissa, exponent);
                    auto const value =
                        expected > 0   ? HUGE_VAL
                        : expected < 0 ? 0.0
                                       : std::strtod((mantissa + 'e' + exponent).c_str(), nullptr);
                    if (std::isinf(value))
                        ASSERT_NE(refusalOf(text).find("out of range"), std::string::npos) << text;
                    else
                        ASSERT_EQ(std::bit_cast<std::uint64_t>(parsed(text).floatingNumber()),
                                  std::bit_cast<std::uint64_t>(*sign != 0 ? -value : value))
                            << text;
                }
            }
        }
    }
}

TEST(WriterJson, NumbersThatJsonHasNot) {
    struct {
        double value;
        char const* text;
    } const rows[] = {{std::numeric_limits<double>::quiet_NaN(), "\"NaN\""},
                      {-std::numeric_limits<double>::quiet_NaN(), "\"NaN\""},
                      {std::numeric_limits<double>::infinity(), "\"Infinity\""},
                      {-std::numeric_limits<double>::infinity(), "\"-Infinity\""},
                      {3.0, "3.0"},
                      {-0.0, "-0.0"},
                      {1e22, "1e+22"},
                      {1e-7, "1e-07"},
                      {0.25, "0.25"},
                      {-2.2250738585072014e-308, "-2.2250738585072014e-308"}};
    for (auto const& row : rows) {
        Element element;
        element.setFloating(row.value);
        EXPECT_EQ(textOf(element), row.text);
    }
}

// ---- Strings ---------------------------------------------------------------------------------

TEST(Json, StringsOfAllLengthsAndCharacters) {
    // Where the writer switches code paths: steps of 16 bytes, its block of 4096 bytes, its pieces
    // of 16384 bytes.
    std::vector<std::size_t> sizes = {4094, 4095, 4096, 4097, 16383, 16384, 16385, 65'000};
    for (std::size_t size = 0; size <= 50; ++size)
        sizes.push_back(size);
    std::string const specials[] = {"",     "\"",   "\\",  "\n",     "\x01",
                                    "\x1F", "\x7F", "\0"s, "\u00E4", "\U0001F600"};
    for (auto const size : sizes) {
        for (auto const& special : specials) {
            for (auto const place : {std::size_t{0}, size / 2, size}) {
                std::string text(size, 'x');
                text.insert(place, special);
                Element element;
                element.setString(text);
                auto const written = textOf(element);
                ASSERT_EQ(parsed(written).asString(), text) << size << ' ' << written;
                Element object;
                object[text].setSigned(1);
                ASSERT_EQ(parsed(textOf(object)), object) << size;
            }
        }
    }
    // Only escapes, so that nothing is copied unchanged.
    std::string controls;
    for (int i = 0; i < 30'000; ++i)
        controls += static_cast<char>(i % 32);
    Element element;
    element.setString(controls);
    EXPECT_EQ(parsed(textOf(element)).asString(), controls);
    EXPECT_EQ(textOf(element).substr(0, 45), R"("\u0000\u0001\u0002\u0003\u0004\u0005\u0006\u)");
    EXPECT_NE(textOf(element).find(R"(\u000E\u000F\u0010\u0011)"), std::string::npos);
}

TEST(ReaderJson, LongTextsWithEscapes) {
    // The parser delivers such texts in pieces of its buffer: no character may be lost or cut.
    struct {
        char const* escaped;
        char const* plain;
    } const specials[] = {{"\\n", "\n"},
                          {"\\u20AC", "\u20AC"},
                          {"\\ud83d\\ude00", "\U0001F600"},
                          {"\U0001F600", "\U0001F600"},
                          {"\u20AC", "\u20AC"}};
    std::mt19937 random(4);
    for (int i = 0; i < 300; ++i) {
        std::string escaped;
        std::string plain;
        auto const size = random() % 20'000;
        while (plain.size() < size) {
            if (auto const which = random() % 8; which < std::size(specials)) {
                escaped += specials[which].escaped;
                plain += specials[which].plain;
            } else {
                std::string const run(random() % 300, 'x');
                escaped += run;
                plain += run;
            }
        }
        ASSERT_EQ(parsed('"' + escaped + '"').asString(), plain);
        auto const object = parsed("{\"" + escaped + "\":[\"" + escaped + "\"]}");
        ASSERT_EQ(object.object().begin()->key(), plain);
        ASSERT_EQ(object.object().begin()->value.array().begin()->asStringView(), plain);
    }
}

TEST(WriterJson, RefusesInvalidUtf8AndNamesThePath) {
    struct {
        char const* why;
        void (*build)(Element& tree);
        char const* message;
    } const rows[] = {
        {"the root", [](Element& t) { t.setString("ab\xFF"); },
         "the tree is not valid UTF-8 at byte 2 of the string"},
        {"below objects and arrays",
         [](Element& t) {
             static_cast<Array&>(t["Data"]["ComponentList"])[3]["Type"].setString("\xC3(");
         },
         "Data.ComponentList[3].Type is not valid UTF-8 at byte 0 of the string"},
        {"not the first member",
         [](Element& t) {
             t["a"]["b"].setString("\u00E4");
             t["c"].setString("a long text with \u00E4 and \xED\xA0\x80");
         },
         "c is not valid UTF-8 at byte 24 of the string"},
        {"array of arrays",
         [](Element& t) { static_cast<Array&>(static_cast<Array&>(t)[1])[2].setString("\x80"); },
         "[1][2] is not valid UTF-8 at byte 0 of the string"},
        {"key of the root", [](Element& t) { t["\xFF"].setSigned(1); },
         "a key in the tree is not valid UTF-8 at byte 0 of the key"},
        {"key further down", [](Element& t) { t["a"]["good"]["x\xE2\x82"].setSigned(1); },
         "a key in a.good is not valid UTF-8 at byte 1 of the key"},
        {"cut at the end of a piece",
         [](Element& t) { t["a"].setString(std::string(16383, 'x') + "\xE2"); },
         "a is not valid UTF-8 at byte 16383 of the string"},
    };
    for (auto const& row : rows) {
        Element tree;
        row.build(tree);
        for (bool const compact : {true, false}) {
            std::ostringstream stream;
            std::string text;
            try {
                WriterJson::Write(tree, text, compact);
                ADD_FAILURE() << row.why;
            } catch (Exception::InvalidParameter const& e) {
                EXPECT_STREQ(e.what(), row.message) << row.why;
            }
            EXPECT_THROW(WriterJson::Write(tree, stream, compact), Exception::InvalidParameter);
            EXPECT_EQ(stream.str(), "") << row.why;
        }
    }
}

// ---- Forms -----------------------------------------------------------------------------------

TEST(WriterJson, IndentedForm) {
    auto const tree = parsed(R"({"a":{},"b":[],"c":{"d":[1,{"e":"f"},[]],"g":null},"h":2.0})");
    EXPECT_EQ(textOf(tree, false), R"({
  "a": {},
  "b": [],
  "c": {
    "d": [
      1,
      {
        "e": "f"
      },
      []
    ],
    "g": null
  },
  "h": 2.0
})");
    EXPECT_EQ(parsed(textOf(tree, false)), tree);
    EXPECT_EQ(textOf(parsed("1"), false), "1");
    EXPECT_EQ(textOf(parsed(" [ ] "), false), "[]");
    auto const deep = parsed(nested("[{\"a\":", "}]", 128));
    EXPECT_EQ(parsed(textOf(deep, false)), deep) << "more white space than the writer's block";
}

TEST(WriterJson, ReplacesTheText) {
    std::string text(100'000, 'x');
    auto const* const memory = text.data();
    WriterJson::Write(parsed("[1,2]"), text);
    EXPECT_EQ(text, "[1,2]");
    EXPECT_EQ(text.data(), memory) << "the memory is used again";
    auto const large = "[" + std::string(5000, ' ') + "\"" + std::string(20'000, 'y') + "\"]";
    WriterJson::Write(parsed(large), text);
    EXPECT_EQ(text, "[\"" + std::string(20'000, 'y') + "\"]");
}

// ---- Streams ---------------------------------------------------------------------------------

/// Delivers its text in small pieces, is not seekable, and may fail in the middle.
class Dripping : public std::streambuf {
public:
    Dripping(std::string text, bool fails) : text_(std::move(text)), fails_(fails) {}

protected:
    int_type underflow() override {
        if (at_ == text_.size()) {
            if (fails_)
                throw std::runtime_error("unplugged");
            return traits_type::eof();
        }
        auto const size = std::min<std::size_t>(7, text_.size() - at_);
        setg(text_.data() + at_, text_.data() + at_, text_.data() + at_ + size);
        at_ += size;
        return traits_type::to_int_type(*gptr());
    }

private:
    std::string text_;
    std::size_t at_ = 0;
    bool fails_;
};

TEST(Json, Streams) {
    auto const large = "[\"" + std::string(300'000, 'x') + "\",1]";
    for (auto const& text : {"{\"a\":1}"s, large}) {
        Element element;
        std::istringstream whole(text);
        ReaderJson::Read(element, whole);
        EXPECT_EQ(textOf(element), text);

        Dripping buffer(text, false);
        std::istream dripping(&buffer);
        Element other;
        ReaderJson::Read(other, dripping);
        EXPECT_EQ(textOf(other), text);

        std::ostringstream out;
        WriterJson::Write(element, out, true);
        EXPECT_EQ(out.str(), text);
    }

    std::istringstream rest("first line\n [1] ");
    std::string line;
    std::getline(rest, line);
    Element element;
    ReaderJson::Read(element, rest);
    EXPECT_EQ(textOf(element), "[1]") << "from the place where the stream stands";

    std::istringstream empty("");
    EXPECT_THROW(ReaderJson::Read(element, empty), Exception::InvalidParameter);
    std::istringstream failed("1");
    failed.setstate(std::ios_base::failbit);
    EXPECT_THROW(ReaderJson::Read(element, failed), Exception::InvalidParameter);
    std::istream none(nullptr);
    EXPECT_THROW(ReaderJson::Read(element, none), Exception::InvalidParameter);
    Dripping buffer("[1,2]", true);
    std::istream broken(&buffer);
    EXPECT_THROW(ReaderJson::Read(element, broken), Exception::InvalidParameter)
        << "a text that may be cut is not accepted, even if it looks whole";
    EXPECT_EQ(textOf(element), "[1]") << "all failures leave it as it was";
}

// ---- Second opinion --------------------------------------------------------------------------

/// @return  why the trees differ, or an empty text
std::string difference(Element const& mine, simdjson::dom::element const& other) {
    using Type = simdjson::dom::element_type;
    auto const fail = [&](char const* what) { return what + (": " + textOf(mine)); };
    switch (other.type()) {
    case Type::NULL_VALUE:
        return mine.isNull() ? "" : fail("null");
    case Type::BOOL:
        return mine.isBoolean() && mine.boolean() == bool(other) ? "" : fail("boolean");
    case Type::INT64:
        if (mine.isFloating()) // the sign of "-0", which an integer cannot hold
            return mine.floatingNumber() == 0 && std::int64_t(other) == 0 ? "" : fail("zero");
        return mine.isSigned() && mine.signedNumber() == std::int64_t(other) ? "" : fail("int64");
    case Type::UINT64:
        return mine.isUnsigned() && mine.unsignedNumber() == std::uint64_t(other) ? ""
                                                                                  : fail("uint64");
    case Type::DOUBLE:
        return mine.isFloating() && std::bit_cast<std::uint64_t>(mine.floatingNumber()) ==
                                        std::bit_cast<std::uint64_t>(double(other))
                   ? ""
                   : fail("double");
    case Type::STRING:
        return mine.isString() && mine.text() == std::string_view(other) ? "" : fail("string");
    case Type::ARRAY: {
        simdjson::dom::array const array = other;
        if (!mine.isArray() || mine.array().size() != array.size())
            return fail("array");
        auto element = mine.array().begin();
        for (auto const child : array)
            if (auto why = difference(*element++, child); !why.empty())
                return why;
        return "";
    }
    case Type::OBJECT: {
        simdjson::dom::object const object = other;
        if (!mine.isObject() || mine.object().size() != object.size())
            return fail("object");
        auto member = mine.object().begin();
        for (auto const field : object) {
            if (member->key() != field.key)
                return fail("key");
            if (auto why = difference(member->value, field.value); !why.empty())
                return why;
            ++member;
        }
        return "";
    }
    }
    return fail("kind");
}

/// Compares both readers. The intended differences: duplicate keys, depth, integers of more than 64
/// bits (refused there, doubles here), exponents of more than 31 bits.
void compare(std::string const& text) {
    simdjson::dom::parser parser;
    simdjson::dom::element other;
    auto const error = parser.parse(simdjson::padded_string(text)).get(other);
    auto const refusal = refusalOf(text);
    if (refusal.find("duplicate key") != std::string::npos ||
        refusal.find("nested arrays") != std::string::npos)
        return;
    if (refusal == "accepted") {
        if (error == simdjson::NUMBER_ERROR) {
            // Is there an integer of 19 digits or more?
            std::size_t run = 0;
            std::size_t longest = 0;
            for (char const c : text) {
                run = c >= '0' && c <= '9' ? run + 1 : 0;
                longest = std::max(run, longest);
            }
            EXPECT_GE(longest, 19U) << text;
            return;
        }
        ASSERT_FALSE(error) << text << "\nrefused by the other: " << error;
        EXPECT_EQ(difference(parsed(text), other), "") << text;
    } else if (!error) {
        EXPECT_NE(refusal.find("out of range"), std::string::npos) << text << '\n' << refusal;
        EXPECT_NE(text.find("e-"), std::string::npos) << text << '\n' << refusal;
    }
}

TEST(ReaderJson, AgreesWithAnotherReader) {
    for (auto const& row : accepted)
        compare(row.text);
    for (auto const& row : refused)
        compare(row.text);
}

TEST(ReaderJson, AgreesWithAnotherReaderOnRandomTexts) {
    std::vector<std::string> const seeds = {
        R"({"MessageID":844424930131969,"Sender":["client","ui"],"Destination":)"
        R"(["instrument","service"],"Data":{"MaxVersion":1,"MinVersion":1,"On":true}})",
        R"([0,-0,1,-1,1.5,-2.25e-3,1E+10,18446744073709551615,9223372036854775808,1e308,5e-324])",
        R"(["","\"\\\/\b\f\n\r\t","\u0041\u00e4\u20ac\ud83d\ude00\uFFFF","ä€😀",)"
        R"("long enough for two steps of 16 bytes: ä"])",
        R"( { "a" : [ ] , "b" : { } , "c" : [ [ { "d" : null } ] , true , false ] } )",
        "{\"\":0,\"\\u0000\":1,\"key of more than 14 bytes\":[1,2,3]}",
    };
    auto const alphabet =
        "{}[]:,\"\\/ \t\n\r0123456789+-.eEtrufalsnbx\x01\x1F\x7F\x80\xC3\xA4\xED\xA0\xFF\0"sv;
    std::mt19937 random(5);
    for (int i = 0; i < 60'000; ++i) {
        auto text = seeds[random() % seeds.size()];
        for (auto changes = random() % 3 + 1; changes > 0; --changes) {
            auto const place = random() % (text.size() + 1);
            auto const letter = alphabet[random() % alphabet.size()];
            switch (random() % 6) {
            case 0:
            case 1:
                if (place < text.size())
                    text[place] = letter;
                break;
            case 2:
                text.insert(place, 1, letter);
                break;
            case 3:
                text.erase(place, random() % 3 + 1);
                break;
            case 4:
                text.insert(place, text.substr(random() % text.size(), random() % 20));
                break;
            default:
                text.resize(place);
                break;
            }
            if (text.empty())
                text = " ";
        }
        compare(text);
        if (::testing::Test::HasFailure())
            FAIL() << text;
    }
}

} // namespace
} // namespace Tolv::MetaData
