#include <tolv/core/detail/type_name.h>
#include <tolv/fields/reflector_array.h>

#include <algorithm>
#include <complex>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/msgs/address.h>
#include <tolv/fields/reflector_lambda.h>
#include "support/captured_output.h"
#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::MetaData {
namespace {

using Testing::CapturedOutput;
using Testing::Counted;
using Testing::parsed;
using Testing::readInto;
using Testing::thrownBy;
using Testing::written;

constexpr auto corruptLine = "Exception MetaDat::ReflectorArray MetaData Array corrupt for a\n";
constexpr auto noArrayLine =
    "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n";
constexpr auto wrongTypeLine = "Exception MetaData::ReflectorArray wrong encoded type\n";

struct Point : MirroredObject {
    Reflector<int> x{this, "x"_key, Required, 7};
    Reflector<std::string> name{this, "name"_key, Optional};

    Point() = default;
    explicit Point(int at) { x = at; }
};

template <class T>
struct Sample {
    std::vector<T> values;
    char const* plain;     ///< as a JSON array
    char const* corrupt;   ///< an array whose last entry is invalid
    char const* tag = "";  ///< of the encoded form
    char const* text = ""; ///< in base64
};

using Strings = std::vector<std::string>;

template <class T>
struct Of {};
Sample<bool> sample(Of<bool>) {
    return {{true, false, true}, "[true,false,true]", "[true,1]", "1", "BQ=="};
}
Sample<std::complex<bool>> sample(Of<std::complex<bool>>) {
    return {{{true, false}, {false, true}},
            "[[true,false],[false,true]]",
            "[[true,false],[true]]",
            "2",
            "CQ=="};
}
Sample<double> sample(Of<double>) { return {{0.5}, "[0.5]", R"([0.5,"x"])", "3", "AAAAAAAA4D8="}; }
Sample<std::complex<double>> sample(Of<std::complex<double>>) {
    return {{{0.5, -0.5}}, "[[0.5,-0.5]]", "[[0.5,-0.5],[1]]", "4", "AAAAAAAA4D8AAAAAAADgvw=="};
}
Sample<int> sample(Of<int>) { return {{1, -2}, "[1,-2]", "[1,2.5]", "9", "AQAAAP7///8="}; }
Sample<std::string> sample(Of<std::string>) { return {{"", "b"}, R"(["","b"])", R"(["",null])"}; }
Sample<Strings> sample(Of<Strings>) {
    return {{{}, {"a", "b"}}, R"([[],["a","b"]])", R"([["a"],"a"])"};
}

template <class T>
class ArrayOf : public testing::Test {
protected:
    static std::string object(std::string const& child) { return "{\"a\":" + child + '}'; }
    std::string plain() const { return object(known.plain); }
    /// The encoded form with this many elements, as "len" says, and this text.
    std::string encoded(std::string const& len, std::string const& text) const {
        return object("{\"type\":" + std::string(known.tag) + ",\"len\":" + len + ",\"base64\":\"" +
                      text + "\"}");
    }
    std::string encoded() const { return encoded(std::to_string(known.values.size()), known.text); }

    MirroredObject owner;
    Sample<T> const known = sample(Of<T>());
    std::vector<T> const values = known.values; ///< not the zero
};

using Types = testing::Types<bool, std::complex<bool>, double, std::complex<double>, int,
                             std::string, Strings>;
TYPED_TEST_SUITE(ArrayOf, Types);

TYPED_TEST(ArrayOf, PlainFormThereAndBack) {
    ReflectorArray<TypeParam> field{&this->owner, "a"_key, Optional};
    EXPECT_EQ(written(this->owner), "{}");
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { (void)field(); }),
              "Tolv::MetaData::ReflectorArray::operator()(): a is not initialized");
    readInto(this->owner, this->plain());
    EXPECT_EQ(field(), this->values);
    EXPECT_EQ(written(this->owner), this->plain());
    field = std::vector<TypeParam>();
    EXPECT_EQ(written(field), this->object("[]"));
    field = this->values;
    readInto(field, this->object("[]"));
    EXPECT_TRUE(field.initialized());
    EXPECT_TRUE(field().empty());
}

TYPED_TEST(ArrayOf, AMissingKeyEmptiesInSilence) {
    CapturedOutput const output;
    for (auto const* const text : {"{}", R"({"A":[]})"}) {
        ReflectorArray<TypeParam> field{&this->owner, "a"_key, Required, this->values, true};
        auto const tree = parsed(text);
        Counted const count;
        field.copyFromMetaData(tree);
        EXPECT_EQ(count.exceptions(), 0U);
        EXPECT_FALSE(field.initialized());
        EXPECT_EQ(written(field), "null");
        field.init();
        EXPECT_TRUE(field().empty());
    }
    EXPECT_EQ(output.text(), "");
}

TYPED_TEST(ArrayOf, ACorruptArrayKeepsContentAndState) {
    for (bool const set : {true, false}) {
        ReflectorArray<TypeParam> field{&this->owner, "a"_key, set, this->values, true};
        CapturedOutput const output;
        readInto(field, this->object(this->known.corrupt));
        EXPECT_EQ(output.text(), corruptLine);
        EXPECT_EQ(field.initialized(), set);
        EXPECT_FALSE(field.encodeBinary()) << "the form of what came in counts all the same";
        field.init();
        EXPECT_EQ(field(), this->values);
    }
}

TYPED_TEST(ArrayOf, TheParentMustBeAnObject) {
    ReflectorArray<TypeParam> field{&this->owner, "a"_key, Required, this->values};
    for (auto const* const text : {"null", "3", "[]", R"("a")"})
        EXPECT_THROW(readInto(field, text), Exception::InvalidParameter) << text;
    EXPECT_EQ(field(), this->values);
    field.assign(Element()); // checks only whether the key exists
    EXPECT_FALSE(field.initialized());
}

TYPED_TEST(ArrayOf, AssignsFieldToFieldMemberByMember) {
    for (bool const required : {true, false}) {
        for (bool const set : {true, false}) {
            SCOPED_TRACE((required ? "required = " : "optional = ") +
                         std::string(set ? "set" : "unset"));
            ReflectorArray<TypeParam> target{&this->owner, "t"_key, required};
            ReflectorArray<TypeParam> source{&this->owner, "s"_key, !required, this->values, true};
            if (set)
                source.init();
            else
                source.uninit();
            target = source;
            EXPECT_EQ(target.initialized(), set) << "there is no case for a required target";
            EXPECT_EQ(target.isRequired(), required);
            EXPECT_EQ(target.name(), "t");
            EXPECT_EQ(target.encodeBinary(), source.encodeBinary());
            target.init();
            EXPECT_EQ(target(), this->values);
        }
    }
}

TYPED_TEST(ArrayOf, OnlyEncodableTypesHaveTheEncodedForm) {
    constexpr bool encodable = Detail::encodedTag<TypeParam> != 0;
    ReflectorArray<TypeParam> field{&this->owner, "a"_key, Required, this->values, true};
    EXPECT_EQ(field.encodeBinary(), encodable);
    if (encodable)
        return;
    EXPECT_EQ(written(field), this->plain());
    for (auto const* const child : {"null", "3", R"("a")", R"({"type":9,"len":0})"}) {
        SCOPED_TRACE(child);
        CapturedOutput const output;
        readInto(field, this->object(child));
        EXPECT_EQ(output.text(), noArrayLine);
        EXPECT_TRUE(field.initialized());
        EXPECT_EQ(field(), this->values);
    }
}

// The encoded form.

template <class T>
class EncodedArrayOf : public ArrayOf<T> {};

using EncodableTypes = testing::Types<bool, std::complex<bool>, double, std::complex<double>, int>;
TYPED_TEST_SUITE(EncodedArrayOf, EncodableTypes);

TYPED_TEST(EncodedArrayOf, ThereAndBack) {
    ReflectorArray<TypeParam> source{&this->owner, "a"_key, Required, this->values, true};
    EXPECT_EQ(written(source), this->encoded());
    ReflectorArray<TypeParam> target{&this->owner, "a"_key, Optional};
    readInto(target, this->encoded());
    EXPECT_TRUE(target.initialized()) << "else an optional list would not survive a round trip";
    EXPECT_FALSE(target.encodeBinary()) << "reading the encoded form leaves the flag alone";
    EXPECT_EQ(target(), this->values);
}

TYPED_TEST(EncodedArrayOf, EmptyHasNoText) {
    auto const empty = this->object("{\"type\":" + std::string(this->known.tag) + ",\"len\":0}");
    ReflectorArray<TypeParam> field{&this->owner, "a"_key, Required, true};
    EXPECT_EQ(written(field), empty);
    field = this->values;
    readInto(field, empty);
    EXPECT_TRUE(field().empty());
    EXPECT_TRUE(field.encodeBinary());
}

TYPED_TEST(EncodedArrayOf, APlainArrayClearsTheFlag) {
    ReflectorArray<TypeParam> field{&this->owner, "a"_key, Required, true};
    readInto(field, this->plain());
    EXPECT_FALSE(field.encodeBinary());
    EXPECT_EQ(written(field), this->plain());
    readInto(field, this->encoded());
    EXPECT_EQ(written(field), this->plain());
}

TYPED_TEST(EncodedArrayOf, TheEncoderIsTheSameForm) {
    Base64Encoder<TypeParam> encoder;
    encoder.encode(this->values);
    EXPECT_EQ(this->object(written(encoder)), this->encoded());
    std::vector<TypeParam> decoded;
    encoder.decode(decoded);
    EXPECT_EQ(decoded, this->values);
    encoder.encode({});
    encoder.decode(decoded);
    EXPECT_TRUE(decoded.empty());
    EXPECT_FALSE(encoder.base64.initialized());
}

TYPED_TEST(EncodedArrayOf, LetsExceptionsThroughAndKeepsItsContent) {
    auto const uninitialized = [](std::string const& key) {
        return "Tolv::MetaData::Reflector::operator()(): " + key + " is not initialized in " +
               Tolv::Detail::nameOf(typeid(Base64Encoder<TypeParam>));
    };
    std::string const type = "{\"type\":" + std::string(this->known.tag);
    std::string const text = R"("base64":")" + std::string(this->known.text) + "\"}";
    struct Case {
        char const* why;
        std::string child;
        std::string missing;
    };
    for (auto const& row : std::vector<Case>{
             {"no object at all", "3", "type"},
             {"null", "null", "type"},
             {"no type", R"({"len":1,)" + text, "type"},
             {"type of the wrong kind", R"({"type":"9","len":1,)" + text, "type"},
             {"type beyond its range", R"({"type":4294967305,"len":1,)" + text, "type"},
             {"no len", type + ',' + text, "len"},
             {"negative len", type + R"(,"len":-1,)" + text, "len"},
             {"len but no text", type + R"(,"len":2})", "base64"},
             {"text of the wrong kind", type + R"(,"len":2,"base64":[]})", "base64"},
         }) {
        SCOPED_TRACE(row.why);
        ReflectorArray<TypeParam> field{&this->owner, "a"_key, Required, this->values, true};
        auto const tree = parsed(this->object(row.child));
        EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { field.assign(tree); }),
                  uninitialized(row.missing));
        EXPECT_TRUE(field.initialized());
        EXPECT_EQ(field(), this->values);
    }
    for (auto const* const malformed : {"A", "AQ=", "AQ==AQ==", "AQA\\n", "A*==", "AR=="}) {
        SCOPED_TRACE(malformed);
        ReflectorArray<TypeParam> field{&this->owner, "a"_key, Optional, this->values};
        EXPECT_THROW(readInto(field, this->encoded("1", malformed)), Exception::InvalidParameter);
        EXPECT_FALSE(field.initialized());
        field.init();
        EXPECT_EQ(field(), this->values);
    }
}

TYPED_TEST(EncodedArrayOf, AnotherTypeIsRefused) {
    // Numbers print a line; booleans are converted by libTolvCore and throw.
    ReflectorArray<TypeParam> field{&this->owner, "a"_key, Required, this->values, true};
    for (auto const* const tag : {"0", "1", "2", "3", "4", "9", "4294967295"}) {
        if (tag == std::string(this->known.tag))
            continue;
        SCOPED_TRACE(tag);
        auto const text = this->object("{\"type\":" + std::string(tag) + R"(,"len":0})");
        CapturedOutput const output;
        if (Detail::isPacked<TypeParam>)
            EXPECT_THROW(readInto(field, text), Exception::InvalidParameter);
        else
            readInto(field, text);
        EXPECT_EQ(output.text(), Detail::isPacked<TypeParam> ? "" : wrongTypeLine);
        EXPECT_EQ(field(), this->values);
    }
}

TYPED_TEST(EncodedArrayOf, ALyingLenTakesNoMemory) {
    for (auto const* const len : {"9", "4294967296", "18446744073709551615"}) {
        SCOPED_TRACE(len);
        ReflectorArray<TypeParam> field{&this->owner, "a"_key, Required, true};
        auto const tree = parsed(this->encoded(len, this->known.text));
        Counted const count;
        if (Detail::isPacked<TypeParam>) {
            EXPECT_THROW(field.assign(tree), Exception::InvalidParameter);
        } else {
            field.assign(tree);
            EXPECT_EQ(field(), this->values) << "the number of elements comes from the text";
        }
        EXPECT_LT(count.largestAllocation(), 4096U);
    }
}

TEST(PlainArray, OneEntryInBracesIsAListAndNoFlag) {
    ReflectorArray<int> const number{nullptr, "a"_key, Required, {1}};
    EXPECT_EQ(number(), std::vector{1});
    EXPECT_FALSE(number.encodeBinary());
    ReflectorArray<std::string> const text{nullptr, "a"_key, Required, {"b"}};
    EXPECT_EQ(text(), std::vector<std::string>{"b"});
}

TEST(EncodedArray, CountsByTheText) {
    struct Case {
        char const* why;
        char const* len;
        char const* text;
        std::vector<double> expected;
    };
    MirroredObject owner;
    for (auto const& row : std::vector<Case>{
             {"len more than there are", "5", "AAAAAAAA4D8AAAAAAADgvwAAAAAAAABA", {0.5, -0.5, 2}},
             {"len less than there are", "1", "AAAAAAAA4D8AAAAAAADgvwAAAAAAAABA", {0.5, -0.5, 2}},
             {"a last element that is not whole", "2", "AAAAAAAA4D8AAA==", {0.5}},
             {"an empty text", "2", "", {}},
             {"len 0 wins over the text", "0", "AAAAAAAA4D8=", {}},
         }) {
        SCOPED_TRACE(row.why);
        ReflectorArray<double> field{&owner, "a"_key, Required, {9, 9}};
        readInto(field, std::string(R"({"a":{"type":3,"len":)") + row.len + R"(,"base64":")" +
                            row.text + "\"}}");
        EXPECT_EQ(field(), row.expected);
    }
}

TEST(EncodedArray, AFaultResetsTheRecordAroundIt) {
    struct Trace : MirroredObject {
        Reflector<int> unit{this, "unit"_key, Required};
        ReflectorArray<double> trace{this, "trace"_key, Required, true};
    };
    MirroredObject owner;
    Reflector<Trace> field{&owner, "t"_key, Required};
    readInto(field, R"({"t":{"unit":1,"trace":{"type":3,"len":1,"base64":"AAAAAAAA4D8="}}})");
    EXPECT_EQ(field().trace(), std::vector{0.5});
    readInto(field, R"({"t":{"unit":2,"trace":{"type":3,"len":1}}})");
    EXPECT_FALSE(field.initialized());
    field.init();
    EXPECT_EQ(field().unit(), 0);
    EXPECT_EQ(written(field), R"({"t":{"unit":0,"trace":{"type":3,"len":0}}})");
}

TEST(EncodedArray, TracesAreNotConvertedElementByElement) {
    MirroredObject owner;
    ReflectorArray<double> source{&owner, "a"_key, Required, std::vector(100000, 0.5), true};
    Element tree;
    Counted writing;
    source.copyToMetaData(tree);
    EXPECT_LT(writing.allocations(), 10U);
    ReflectorArray<double> target{&owner, "a"_key, Required};
    Counted const reading;
    target.copyFromMetaData(tree);
    EXPECT_LT(reading.allocations(), 10U);
    EXPECT_EQ(target(), source());
}

// Records in lists.

TEST(ArrayOfRecords, EntriesAreCopiesOfWhatWasRead) {
    MirroredObject owner;
    ReflectorArray<Point> field{&owner, "a"_key, Required};
    readInto(field, R"({"a":[{"x":1,"name":"n"},{"x":"no"},{},3,null]})");
    ASSERT_EQ(field().size(), 5U);
    EXPECT_EQ(written(field), R"({"a":[{"x":1,"name":"n"},{"x":0},{"x":0},{"x":0},{"x":0}]})")
        << "a required scalar that did not read comes out as the type's zero, initialized";

    field.edit().insert(field.edit().begin(), Point(5)); // moves the other entries
    EXPECT_EQ(written(field().at(1)), R"({"x":1,"name":"n"})");
}

/// Refuses a negative number once it has been read.
struct Refusing : MirroredObject {
    Reflector<int> n{this, "n"_key, Required, 7};

    void copyFromMetaData(Element const& element) override {
        MirroredObject::copyFromMetaData(element);
        if (n.initialized() && n() < 0)
            n.reset();
    }
};

/// Refuses a number inside of what has been read, and what comes from an older record.
struct RefusingInside : MirroredObject {
    Reflector<Refusing> one{this, "one"_key, Required};
    ReflectorArray<Refusing> list{this, "list"_key, Optional};
    Reflector<int> late{this, "late"_key, Optional};

    void copyFromMetaData(Element const& element) override {
        one.copyFromMetaData(element);
        list.copyFromMetaData(element);
        late.copyFromMetaData(element);
        if (one.initialized() && one().n.initialized() && one().n() > 100)
            one.edit().n.uninit();
        if (list.initialized() && !list().empty())
            list.edit().front().n.uninit();
        late.makeRequired();
    }
};

/// Reads nothing, and so has no value from the start.
struct Lacking : MirroredObject {
    Reflector<int> n{this, "n"_key, Required, 7};

    Lacking() { n.uninit(); }
    void copyFromMetaData(Element const& /*element*/) override {}
};

/// Takes any value from a tree, and only positive ones from a program.
struct Lenient : MirroredObject {
    ReflectorLambda<int> n{this, "n"_key,
                           7,    [](int value) { return value > 0; },
                           {},   [](Element const& /*parent*/) { return true; }};

    Lenient() = default;
    Lenient(Lenient const& other) : Lenient() { *this = other; }
    Lenient& operator=(Lenient const&) = default;
};

template <class R>
void expectCopies(char const* entry) {
    MirroredObject owner;
    ReflectorArray<R> field{&owner, "a"_key, Required};
    R single;
    readInto(single, entry);
    readInto(field, R"({"a":[)" + std::string(entry) + "]}");
    EXPECT_EQ(written(field().at(0)), written(R(single))) << entry;
}

TEST(ArrayOfRecords, AnEntryIsACopyOfWhatWasRead) {
    for (auto const* const entry : {R"({"n":1})", R"({"n":-1})", "{}"})
        expectCopies<Refusing>(entry);
    for (auto const* const entry :
         {R"({"one":{"n":1},"late":1})", R"({"one":{"n":-1},"late":1})", R"({"one":{"n":101}})",
          R"({"one":{"n":1}})", R"({"one":{"n":1},"late":2,"list":[{"n":1},{"n":-1}]})", "{}"})
        expectCopies<RefusingInside>(entry);
    expectCopies<Lacking>("{}");
    expectCopies<Lenient>(R"({"n":-1})");
    MirroredObject owner;
    ReflectorArray<Refusing> field{&owner, "l"_key, Required};
    readInto(field, R"({"l":[{"n":1},{"n":-1},{}]})");
    EXPECT_EQ(written(field), R"({"l":[{"n":1},{"n":0},{"n":0}]})");
}

/// Reads anything, but like a message can be copied only if it parsed.
struct Uncopyable {
    bool good = true;
    Uncopyable() = default;
    Uncopyable(Uncopyable const& other) : good(other.good) {
        if (!good)
            throw std::runtime_error("no copy");
    }
    Uncopyable& operator=(Uncopyable const&) = default;
    void copyToMetaData(Element& element) const { element.setBoolean(good); }
    void copyFromMetaData(Element const& element) {
        if (element.isNull())
            throw 42;
        good = element.asBoolean();
    }
};

TEST(ArrayOfRecords, AnEntryThatThrowsOrCannotBeCopiedIsCorrupt) {
    MirroredObject owner;
    ReflectorArray<Uncopyable> field{&owner, "a"_key, Required};
    readInto(field, R"({"a":[true]})");
    for (auto const* const text :
         {R"({"a":[true,false,true]})", R"({"a":[false]})", R"({"a":[null]})", R"({"a":[3]})"}) {
        SCOPED_TRACE(text);
        CapturedOutput const output;
        readInto(field, text);
        EXPECT_EQ(output.text(), corruptLine);
        EXPECT_EQ(written(field), R"({"a":[true]})");
    }
}

// A program's own format does not reach the lines, and waits for the program's next output.
TEST(ArrayLines, AreNotFormatted) {
    MirroredObject owner;
    std::string const longKey(300, 'k');
    ReflectorArray<int> numbers{&owner, "a"_key, Required};
    ReflectorArray<int> others{&owner, longKey, Required};
    ReflectorArray<std::string> texts{&owner, "a"_key, Required};
    struct {
        ReflectorBase& field;
        std::string text;
        std::string line;
    } const rows[] = {
        {numbers, R"({"a":["x"]})", corruptLine},
        {others, "{\"" + longKey + R"(":["x"]})",
         "Exception MetaDat::ReflectorArray MetaData Array corrupt for " + longKey + '\n'},
        {texts, R"({"a":1})", noArrayLine},
        {numbers, R"({"a":{"type":3,"len":0}})", wrongTypeLine},
    };
    for (auto const& row : rows) {
        CapturedOutput const output;
        std::ios before(nullptr);
        before.copyfmt(std::cout);
        std::cout << std::setw(400) << std::setfill('*') << std::left << std::hex << std::showbase;
        readInto(row.field, row.text);
        EXPECT_EQ(std::cout.width(), 400);
        std::cout.copyfmt(before);
        EXPECT_EQ(output.text(), row.line);
    }
}

// What derived classes do.

TEST(ArrayOverrides, OfAssigningAreHonouredByReading) {
    struct Refusing : ReflectorArray<std::string> {
        using ReflectorArray<std::string>::ReflectorArray;
        using ReflectorArray<std::string>::assign;
        void assign(Strings const& values) override {
            if (values.size() > 1)
                throw std::length_error("too many");
            ReflectorArray<std::string>::assign(values);
        }
    };
    MirroredObject owner;
    Refusing field{&owner, "a"_key, Optional};
    readInto(owner, R"({"a":["one"]})");
    CapturedOutput const output;
    readInto(owner, R"({"a":["one","two"]})");
    EXPECT_EQ(output.text(), corruptLine);
    EXPECT_EQ(field(), Strings{"one"});
}

TEST(ArrayOverrides, OfReadingAreHonoured) {
    struct Sorted : ReflectorArray<int> {
        using ReflectorArray<int>::ReflectorArray;
        using ReflectorArray<int>::assign;
        void assign(Element const& parent) override {
            ReflectorArray<int>::assign(parent);
            std::sort(edit().begin(), edit().end());
        }
    };
    MirroredObject owner;
    Sorted field{&owner, "a"_key, Optional};
    readInto(owner, R"({"a":[3,1,2]})");
    EXPECT_EQ(field(), (std::vector{1, 2, 3}));
}

TEST(Address, WithContentIsSet) {
    MirroredObject owner;
    Msgs::ReflectedAddress const given{&owner, std::string("to"), Msgs::Address{"a", "b"}};
    Msgs::ReflectedAddress const empty{&owner, std::string("from"), Msgs::Address{}};
    EXPECT_FALSE(given.isRequired());
    EXPECT_EQ(written(owner), R"({"to":["a","b"],"from":[]})");
}

} // namespace
} // namespace Tolv::MetaData
