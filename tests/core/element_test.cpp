#include <tolv/core/metadata/element.h>

#include <cmath>
#include <limits>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <support/counters.h>
#include <support/trees.h>

namespace Tolv::MetaData {
namespace {

using namespace std::string_literals;
using Testing::parsed;
using Testing::textOf;

Element number(std::int64_t value) {
    Element element;
    element.setSigned(value);
    return element;
}

Element string(std::string_view value) {
    Element element;
    element.setString(value);
    return element;
}

/// Two elements with one content, so that neither may change it in place.
bool sharesArray(Element const& left, Element const& right) {
    return left.array().begin() == right.array().begin();
}

bool sharesObject(Element const& left, Element const& right) {
    return &*left.object().begin() == &*right.object().begin();
}

TEST(Element, KindNumbersAreThoseOfTheWire) {
    Element boolean{Trivial_T<bool>(false)};
    Element signedOne;
    signedOne.setSigned(-1);
    Element unsignedOne;
    unsignedOne.setUnsigned(1);
    Element floating;
    floating.setFloating(1);
    struct {
        Element element;
        int number;
        char const* why;
    } const rows[] = {
        {Element(), 0, "a new element is null"},
        {Element(Null()), 0, "null by its tag"},
        {boolean, 1, "false is not null"},
        {signedOne, 2, "signed"},
        {unsignedOne, 3, "unsigned"},
        {floating, 4, "floating"},
        {Element(Array()), 5, "an array without content is one"},
        {Element(Object()), 6, "an object without content is one"},
        {Element(Trivial_T<std::string>("")), 7, "an empty string is one"},
        {string("12345678901234"), 7, "the longest text inside the element"},
        {string("123456789012345"), 7, "the shortest text outside of it"},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.element.GetElementType(), row.number) << row.why;
        Element const copy(row.element);
        EXPECT_EQ(copy.GetElementType(), row.number) << row.why;
    }
}

TEST(Element, ConstLookupOfAnAbsentKeyThrows) {
    auto const object = parsed(R"({"a":1})");
    try {
        static_cast<void>(object["missing"]);
        FAIL();
    } catch (Exception::InvalidParameter const& e) {
        EXPECT_NE(std::string(e.what()).find("missing"), std::string::npos) << e.what();
    }
    Element const null;
    EXPECT_THROW(static_cast<void>(null["a"s]), Exception::InvalidParameter);
    EXPECT_THROW(static_cast<void>(object["a"]["b"]), Exception::InvalidParameter);
    EXPECT_EQ(object["a"].signedNumber(), 1);
    EXPECT_EQ(textOf(object), R"({"a":1})");
}

TEST(Element, LookupCreatesANullChildAndTurnsNullIntoAnObject) {
    Element element;
    EXPECT_TRUE(element["a"]["b"].isNull());
    EXPECT_EQ(textOf(element), R"({"a":{"b":null}})");
    auto array = parsed("[1]");
    EXPECT_THROW(array["a"], Exception::InvalidParameter);
    EXPECT_EQ(textOf(array), "[1]");
}

TEST(Element, HasElementNeverThrows) {
    struct {
        char const* text;
        bool has;
    } const rows[] = {{"null", false},          {"1", false},  {"\"key\"", false},
                      {R"(["key"])", false},    {"{}", false}, {R"({"Key":1})", false},
                      {R"({"key":null})", true}};
    for (auto const& row : rows) {
        EXPECT_EQ(HasElement(parsed(row.text), "key"s), row.has) << row.text;
        EXPECT_EQ(HasElement(parsed(row.text), "key"), row.has) << row.text;
        EXPECT_EQ(HasElement(parsed(row.text), "key"_key), row.has) << row.text;
    }
    EXPECT_FALSE(HasElement(Element(), "key"s));
}

TEST(Element, AccessToAnotherKindThrowsAndNamesBoth) {
    auto const array = parsed("[]");
    try {
        static_cast<void>(array.asString());
        FAIL();
    } catch (Exception::InvalidParameter const& e) {
        EXPECT_STREQ(e.what(), "expected a string, found an array");
    }
    EXPECT_THROW(static_cast<void>(array.asBoolean()), Exception::InvalidParameter);
    EXPECT_THROW(static_cast<void>(static_cast<Object const&>(array)), Exception::InvalidParameter);
    auto object = parsed("{}");
    EXPECT_THROW(static_cast<void>(static_cast<Array const&>(std::as_const(object))),
                 Exception::InvalidParameter);
    EXPECT_THROW(static_cast<void>(static_cast<Array&>(object)), Exception::InvalidParameter);
    EXPECT_TRUE(object.isObject());
    // Read access must not turn null into anything.
    Element const null;
    EXPECT_THROW(static_cast<void>(static_cast<Array const&>(null)), Exception::InvalidParameter);
    EXPECT_TRUE(null.isNull());
}

TEST(Element, TextsKeepEveryByte) {
    for (std::size_t size : {0U, 1U, 7U, 8U, 9U, 13U, 14U, 15U, 16U, 255U, 256U, 70000U}) {
        std::string text(size, 'x');
        for (std::size_t i = 0; i < size; ++i)
            text[i] = static_cast<char>(i * 37); // NUL among them
        auto element = string(text);
        EXPECT_EQ(element.asString(), text) << size;
        Element const copy(element);
        element.setString("other");
        EXPECT_EQ(copy.asStringView(), text) << size;
    }
    auto own = string("a text that is kept outside");
    own.setString(own.text().substr(2, 20)); // a part of itself, which it is about to release
    EXPECT_EQ(own.asString(), "text that is kept ou");
    own.setString(own.text().substr(0, 4));
    EXPECT_EQ(own.asString(), "text");
    own.setString(std::string_view()); // its data is null
    EXPECT_EQ(own.asString(), "");
}

// ---- Arrays ----------------------------------------------------------------------------------

TEST(Array, IndexBeyondTheEndGrows) {
    Element element;
    Array& array = element;
    array[2].setSigned(7);
    EXPECT_EQ(textOf(element), "[null,null,7]");
    array[3].setSigned(8);
    array[0].setSigned(6);
    EXPECT_EQ(textOf(element), "[6,null,7,8]");
    for (unsigned int i = 0; i < 1000; ++i)
        array[i].setSigned(i);
    EXPECT_EQ(array.size(), 1000U);
    EXPECT_EQ(std::as_const(array)[999].signedNumber(), 999);
    EXPECT_THROW(static_cast<void>(std::as_const(array)[1000]), Exception::InvalidParameter);
    EXPECT_THROW(array[std::numeric_limits<unsigned int>::max()], Exception::InvalidParameter);
    EXPECT_EQ(array.size(), 1000U);
}

TEST(Array, EmptyIsNotNull) {
    Element element;
    static_cast<Array&>(element).resize(0);
    EXPECT_EQ(textOf(element), "[]");
    static_cast<Array&>(element).resize(2);
    EXPECT_EQ(textOf(element), "[null,null]");
    static_cast<Array&>(element).clear();
    EXPECT_EQ(textOf(element), "[]");
    EXPECT_EQ(textOf(Element(Array())), "[]");
    EXPECT_EQ(textOf(Element(Object())), "{}");
    EXPECT_NE(Element(Array()), Element());
    EXPECT_NE(Element(Array()), Element(Object()));
}

TEST(Array, ResizeCutsAndFills) {
    auto element = parsed(R"([1,"a text of more than 14 bytes",[2],{"a":3}])");
    auto const before = element;
    static_cast<Array&>(element).resize(1);
    static_cast<Array&>(element).resize(3);
    EXPECT_EQ(textOf(element), "[1,null,null]") << "what was cut off must not come back";
    EXPECT_EQ(before.array().size(), 4U) << "the copy keeps its elements";
    static_cast<Array&>(element).push_back(before);
    EXPECT_EQ(element.array()[3], before);
}

TEST(Array, ReferencesToEntriesStayValidWhileItGrows) {
    Element element;
    Array& array = element;
    std::vector<Element*> entries;
    for (unsigned int i = 0; i < 1000; ++i) {
        entries.push_back(&array[i]);
        entries.back()->setUnsigned(i);
        if (i % 100 == 7)
            array.push_back(number(0));
        array.resize(i + 1);
    }
    unsigned int i = 0;
    for (auto const& entry : std::as_const(array)) {
        ASSERT_EQ(&entry, entries[i]);
        ASSERT_EQ(entry.unsignedNumber(), i++);
    }
    EXPECT_EQ(i, 1000U);
    auto const copy = element;
    array.resize(500);
    array.resize(1000);
    EXPECT_TRUE(std::as_const(array)[500].isNull());
    EXPECT_EQ(copy.array()[999].unsignedNumber(), 999U);
}

TEST(Array, PushBackTakesItsOwnElement) {
    auto element = parsed(R"(["a text of more than 14 bytes"])");
    Array& array = element;
    for (int i = 0; i < 100; ++i)
        array.push_back(array[static_cast<unsigned int>(i)]); // grows on the way
    EXPECT_EQ(array.size(), 101U);
    EXPECT_EQ(array[100].asStringView(), "a text of more than 14 bytes");
}

TEST(Array, PushBackAfterACopyDoesNotUseRoomThatTheCopyLacks) {
    Array array;
    array.reserve(64);
    array.push_back(number(0));
    auto const copy = array;
    for (int i = 1; i < 64; ++i)
        array.push_back(number(i));
    ASSERT_EQ(array.size(), 64U);
    for (unsigned int i = 0; i < 64; ++i)
        EXPECT_EQ(std::as_const(array)[i].signedNumber(), i);
    EXPECT_EQ(copy.size(), 1U);
}

// ---- Copies are values -----------------------------------------------------------------------

/// A tree and a path to the value in it that is written; the value there must differ from 99.
struct Way {
    char const* why;
    char const* text;
    Element& (*reach)(Element& tree);
};

Way const ways[] = {
    {"child of an object", R"({"a":1,"b":2})", [](Element& t) -> Element& { return t["b"]; }},
    {"added child", R"({"a":1})", [](Element& t) -> Element& { return t["new"]; }},
    {"two objects down", R"({"a":{"b":1},"c":3})",
     [](Element& t) -> Element& { return t["a"]["b"]; }},
    {"three objects down", R"({"a":{"b":{"c":1}}})",
     [](Element& t) -> Element& { return t["a"]["b"]["c"]; }},
    {"child of an array", "[1,2]",
     [](Element& t) -> Element& { return static_cast<Array&>(t)[1]; }},
    {"array below an array", "[[1],[2]]",
     [](Element& t) -> Element& { return static_cast<Array&>(static_cast<Array&>(t)[1])[0]; }},
    {"object in an array in an object", R"({"a":[{"b":1}]})",
     [](Element& t) -> Element& { return static_cast<Array&>(t["a"])[0]["b"]; }},
    {"array through a reference that was taken before it grew", R"({"a":[1]})",
     [](Element& t) -> Element& {
         Array& array = t["a"];
         array.push_back(Element());
         array.reserve(100);
         return array[1];
     }},
    {"through makeObject", R"({"a":{"b":1}})",
     [](Element& t) -> Element& { return t["a"].makeObject(10)["b"]; }},
    {"null turned into an object", R"({"a":null})",
     [](Element& t) -> Element& { return t["a"]["b"]; }},
    {"an element with content of its own put into an array", "[]",
     [](Element& t) -> Element& {
         Element other;
         auto& inside = other["x"]["y"];
         static_cast<Array&>(t).push_back(std::move(other));
         return inside;
     }},
    {"an element with content of its own moved into an object", "{}",
     [](Element& t) -> Element& {
         Element other;
         auto& inside = static_cast<Array&>(other["x"])[3];
         t["a"]["b"] = std::move(other);
         return inside;
     }},
    {"an array moved into an element", "null",
     [](Element& t) -> Element& {
         Array array;
         auto& inside = array[0]["a"];
         t = Element(std::move(array));
         return inside;
     }},
    {"an object moved into an element", "null",
     [](Element& t) -> Element& {
         Object object;
         auto& inside = object["a"]["b"];
         t = Element(std::move(object));
         return inside;
     }},
    {"an object of more than 32 keys", "{}",
     [](Element& t) -> Element& {
         for (int i = 0; i < 40; ++i)
             t[std::to_string(i)].setSigned(i);
         return t["20"];
     }},
    {"after keys were taken away", R"({"a":{"b":1},"c":2})",
     [](Element& t) -> Element& {
         auto& inside = t["a"];
         static_cast<void>(inside["x"]);
         inside.makeObject(0).erase("x");
         return inside["b"];
     }},
};

TEST(Copies, AReferenceTakenBeforeACopyDoesNotWriteIntoIt) {
    for (auto const& way : ways) {
        auto original = parsed(way.text);
        auto& place = way.reach(original);
        auto const before = textOf(original);
        Element const copy(original);
        Element assigned;
        assigned = original;
        Element const copyOfCopy(copy);
        place.setSigned(99);
        EXPECT_NE(textOf(original), before) << way.why;
        EXPECT_EQ(textOf(copy), before) << way.why;
        EXPECT_EQ(textOf(assigned), before) << way.why;
        EXPECT_EQ(textOf(copyOfCopy), before) << way.why;
    }
}

TEST(Copies, WritingToACopyLeavesAllOthers) {
    for (auto const& way : ways) {
        auto const original = parsed(way.text);
        auto const before = textOf(original);
        Element first(original);
        Element const second(first);
        auto& place = way.reach(first);
        Element const third(first); // taken while the reference is held
        auto const reached = textOf(third);
        Element fourth(third);
        place.setSigned(99);
        way.reach(fourth).setSigned(98);
        EXPECT_EQ(textOf(original), before) << way.why;
        EXPECT_EQ(textOf(second), before) << way.why;
        EXPECT_EQ(textOf(third), reached) << way.why;
        EXPECT_NE(textOf(fourth), textOf(first)) << way.why;
    }
}

TEST(Copies, ReferencesFollowAMovedTree) {
    for (auto const& way : ways) {
        auto original = parsed(way.text);
        auto& place = way.reach(original);
        Element moved(std::move(original));
        EXPECT_TRUE(original.isNull()) << way.why; // NOLINT: what is left is promised
        auto const before = textOf(moved);
        Element const copy(moved);
        place.setSigned(99);
        EXPECT_NE(textOf(moved), before) << way.why;
        EXPECT_EQ(textOf(copy), before) << way.why;
        Element target = string("a text of more than 14 bytes");
        target = std::move(moved);
        Element const second(target);
        place.setSigned(100);
        EXPECT_NE(textOf(target), textOf(second)) << way.why;
    }
}

TEST(Copies, HandlesOfContainersAreValues) {
    auto element = parsed(R"({"list":[1,2],"map":{"a":1}})");
    Array& list = element["list"];
    Object& map = element["map"].makeObject(0);
    Array const listBefore(list);
    Object const mapBefore(map);
    auto const before = element;
    list.push_back(number(3));
    map["b"].setSigned(2);
    list[0].setSigned(9);
    map["a"].setSigned(9);
    EXPECT_EQ(textOf(Element(listBefore)), "[1,2]");
    EXPECT_EQ(textOf(Element(mapBefore)), R"({"a":1})");
    EXPECT_EQ(textOf(before), R"({"list":[1,2],"map":{"a":1}})");
    EXPECT_EQ(textOf(element), R"({"list":[9,2,3],"map":{"a":9,"b":2}})");
    Array assigned;
    assigned = list;
    assigned[1].setSigned(0);
    EXPECT_EQ(textOf(element["list"]), "[9,2,3]");
}

/// Moves the content of `element` out through `handle`, between two uses of the element. A compiler
/// that assumes that the two do not alias leaves the content in both.
[[gnu::noinline]] void moveOutThrough(Array& handle, Element& element, Array& content,
                                      Element& rest) {
    Element other;
    other.swap(element);
    element.swap(other);
    content.~Array();
    new (&content) Array(std::move(handle));
    rest.swap(element);
}

TEST(Copies, AnElementSeesWhatIsMovedOutOfItsHandle) {
    auto element = parsed("[1]");
    Array& handle = element;
    Array content;
    Element rest;
    moveOutThrough(handle, element, content, rest);
    EXPECT_EQ(content.size(), 1U);
    EXPECT_EQ(textOf(rest), "[]");
}

TEST(Copies, ParsedTreesAreShared) {
    auto const original = parsed(R"({"a":[1,2,3],"b":{"c":1},"d":"a text of more than 14 bytes"})");
    Testing::Counted const counted;
    Element copy(original);
    EXPECT_EQ(counted.allocations(), 0U) << "the copy is made in constant time";
    EXPECT_TRUE(sharesObject(original, copy));

    // Reading does not end the sharing.
    static_cast<void>(std::as_const(copy)["a"]);
    static_cast<void>(static_cast<Array const&>(std::as_const(copy)["a"])[1]);
    EXPECT_TRUE(HasElement(copy, "b"s));
    EXPECT_TRUE(sharesObject(original, Element(copy)));

    // A change copies the containers on its path and shares the others.
    copy["b"]["c"].setSigned(2);
    EXPECT_FALSE(sharesObject(original, copy));
    EXPECT_TRUE(sharesArray(original["a"], std::as_const(copy)["a"]));
    EXPECT_EQ(original["d"].asStringView().data(), std::as_const(copy)["d"].asStringView().data());
    EXPECT_EQ(original["b"]["c"].signedNumber(), 1);

    // A copy of what was written to has content of its own, and shares that again.
    Element const own(copy);
    EXPECT_FALSE(sharesObject(own, copy));
    EXPECT_TRUE(sharesObject(own, Element(own)));
    EXPECT_TRUE(sharesArray(own["a"], original["a"]));
}

// ---- Objects ---------------------------------------------------------------------------------

TEST(Object, ReferencesToChildrenStayValidWhileKeysAreAdded) {
    for (unsigned int const reserved : {0U, 1U, 100U, 2000U}) {
        Element element;
        auto& object = element.makeObject(reserved);
        std::vector<Element*> children;
        for (int i = 0; i < 1000; ++i) {
            children.push_back(&object["key" + std::to_string(i)]);
            children.back()->setSigned(i);
        }
        for (int i = 0; i < 1000; ++i) {
            EXPECT_EQ(children[static_cast<std::size_t>(i)]->signedNumber(), i);
            ASSERT_EQ(&object["key" + std::to_string(i)], children[static_cast<std::size_t>(i)]);
        }
    }
}

/// Keys in all forms of storage, each slightly different from another one.
std::string keyAt(int i) {
    auto const number = std::to_string(i);
    switch (i % 6) {
    case 0:
        return number;
    case 1:
        return std::string(14 - number.size(), 'k') + number; // the longest stored inline
    case 2:
        return std::string(15 - number.size(), 'k') + number; // the shortest on the heap
    case 3:
        return number + std::string(200, 'l');
    case 4:
        return number + "\0"s;
    default:
        return "\0"s + number;
    }
}

TEST(Object, FindsEveryKeyAndNoOther) {
    for (int const size : {0, 1, 2, 4, 5, 31, 32, 33, 34, 64, 65, 129, 1000}) {
        Element built;
        static_cast<void>(built.makeObject(0));
        for (int i = 0; i < size; ++i)
            built[keyAt(i)].setSigned(i);
        Element const copy(built);
        auto const read = parsed(textOf(built));
        for (auto const* const object : {&std::as_const(built), &copy, &read}) {
            ASSERT_EQ(object->object().size(), static_cast<unsigned int>(size));
            for (int i = 0; i < size; ++i) {
                auto const* const child = object->find(KeyView(keyAt(i)));
                ASSERT_NE(child, nullptr) << size << ' ' << i;
                EXPECT_EQ(child->signedNumber(), i) << size;
            }
            for (int i = size; i < size + 100; ++i)
                EXPECT_EQ(object->find(KeyView(keyAt(i))), nullptr) << size << ' ' << i;
            int next = 0;
            for (auto const& member : object->object())
                EXPECT_EQ(member.key(), keyAt(next++)) << "insertion order";
            EXPECT_EQ(next, size);
        }
        EXPECT_EQ(built, read);
    }
}

TEST(Object, KeysThatLookAlikeAreDistinct) {
    std::string const keys[] = {"",
                                "\0"s,
                                "\0\0"s,
                                "a",
                                "a\0"s,
                                "A",
                                "12345678",
                                "123456789",
                                "12345678901234",
                                "12345678901235",
                                "123456789012345",
                                "1234567890123\0"s,
                                "12345678901234\0"s,
                                std::string(300, 'x'),
                                std::string(299, 'x') + 'y',
                                'y' + std::string(299, 'x')};
    Element element;
    std::int64_t next = 0;
    for (auto const& key : keys)
        element[key].setSigned(next++);
    EXPECT_EQ(element.object().size(), std::size(keys));
    next = 0;
    for (auto const& key : keys) {
        EXPECT_EQ(element[key].signedNumber(), next) << key;
        EXPECT_EQ(element.find(KeyView(key))->signedNumber(), next++) << key;
    }
    EXPECT_EQ(element.find("12345678901234"_key)->signedNumber(), 8);
    EXPECT_EQ(element.find("123456789012345"_key)->signedNumber(), 10);
    EXPECT_EQ(element.find("1"_key), nullptr);
}

TEST(Object, Erase) {
    for (int const size : {1, 2, 32, 33, 34, 100}) {
        for (int const gone : {0, size / 2, size - 1}) {
            Element element;
            for (int i = 0; i < size; ++i)
                element[keyAt(i)].setSigned(i);
            Element const before(element);
            auto& object = element.makeObject(0);
            EXPECT_FALSE(object.erase("absent"));
            EXPECT_TRUE(object.erase(KeyView(keyAt(gone))));
            EXPECT_FALSE(object.erase(KeyView(keyAt(gone))));
            EXPECT_EQ(object.size(), static_cast<unsigned int>(size - 1));
            for (int i = 0; i < size; ++i)
                EXPECT_EQ(object.find(KeyView(keyAt(i))) != nullptr, i != gone) << size;
            object[KeyView(keyAt(gone))].setSigned(gone);
            EXPECT_EQ(element, before) << "order is no part of the value";
            auto last = object.begin();
            for (int i = 1; i < size; ++i)
                ++last;
            EXPECT_EQ(last->key(), keyAt(gone)) << "added again, it stands last";
        }
    }
    auto element = parsed(R"({"a key of more than 14 bytes":1,"b":2})");
    auto& object = element.makeObject(0);
    EXPECT_TRUE(object.erase(object.begin()->key())); // a text inside the erased member
    EXPECT_EQ(textOf(element), R"({"b":2})");
    EXPECT_TRUE(object.erase("b"));
    EXPECT_EQ(textOf(element), "{}");
}

// ---- Equality --------------------------------------------------------------------------------

TEST(Element, Equality) {
    auto const unsignedNumber = [](std::uint64_t value) {
        Element element;
        element.setUnsigned(value);
        return element;
    };
    auto const floating = [](double value) {
        Element element;
        element.setFloating(value);
        return element;
    };
    auto const nan = std::numeric_limits<double>::quiet_NaN();
    auto const infinity = std::numeric_limits<double>::infinity();
    constexpr auto least = std::numeric_limits<std::int64_t>::min();
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    struct {
        Element left;
        Element right;
        bool equal;
        char const* why;
    } const rows[] = {
        {number(5), unsignedNumber(5), true, "kinds of numbers do not matter"},
        {number(5), floating(5), true, "kinds of numbers do not matter"},
        {unsignedNumber(5), floating(5), true, "kinds of numbers do not matter"},
        {number(5), floating(5.5), false, "fraction"},
        {unsignedNumber(5), floating(5.5), false, "fraction"},
        {number(-5), floating(-5.5), false, "fraction"},
        {number(-5), unsignedNumber(5), false, "sign"},
        {number(-5), floating(-5), true, "negative integer"},
        {number(-1), unsignedNumber(most), false, "the same bits, not the same number"},
        {number(-1), floating(18446744073709551615.0), false, "the same bits once converted"},
        {number((1LL << 53) + 1), floating(0x1p53), false, "rounding must not make them equal"},
        {unsignedNumber((1ULL << 53) + 1), floating(0x1p53), false, "rounding"},
        {number(1LL << 53), floating(0x1p53), true, "exact"},
        {number(least), floating(-0x1p63), true, "the least of all"},
        {number(least + 1), floating(-0x1p63), false, "rounding at the lower end"},
        {unsignedNumber(1ULL << 63), floating(0x1p63), true, "exact"},
        {number(std::numeric_limits<std::int64_t>::max()), floating(0x1p63), false, "rounding"},
        {unsignedNumber(most), floating(0x1p64), false, "out of the range of the integer"},
        {unsignedNumber(0), floating(0x1p64), false, "must not wrap"},
        {number(0), floating(-0.0), true, "the zeros are one number"},
        {floating(0.0), floating(-0.0), true, "the zeros are one number"},
        {number(0), floating(5e-324), false, "small is not zero"},
        {floating(nan), floating(-nan), true, "NaN equals NaN, so that copies are equal"},
        {floating(nan), number(0), false, "NaN is no number"},
        {floating(infinity), floating(-infinity), false, "sign"},
        {floating(infinity), unsignedNumber(most), false, "infinity is no integer"},
        {Element(), Element(), true, "null"},
        {Element(), number(0), false, "null is not zero"},
        {parsed("true"), parsed("false"), false, "booleans"},
        {parsed("true"), number(1), false, "true is no number"},
        {parsed("\"1\""), number(1), false, "a string is no number"},
        {parsed("\"a\""), parsed("\"b\""), false, "text"},
        {string("a"), string("a\0"s), false, "NUL is a character"},
        {string(std::string(20, 'a')), string(std::string(20, 'a')), true, "text outside"},
        {string(std::string(14, 'a')), string(std::string(15, 'a')), false, "inside and outside"},
        {parsed("[1,2]"), parsed("[1,2]"), true, "array"},
        {parsed("[1,2]"), parsed("[2,1]"), false, "order of an array"},
        {parsed("[1,2]"), parsed("[1]"), false, "length of an array"},
        {parsed("[]"), parsed("{}"), false, "array and object"},
        {parsed(R"({"a":1,"b":2})"), parsed(R"({"b":2,"a":1})"), true, "order of keys"},
        {parsed(R"({"a":1,"b":2})"), parsed(R"({"a":1,"c":2})"), false, "keys"},
        {parsed(R"({"a":null})"), parsed("{}"), false, "a null child is a child"},
        {parsed(R"({"a":[{"b":1}]})"), parsed(R"({"a":[{"b":1.0}]})"), true, "deep"},
        {parsed(R"({"a":[{"b":1}]})"), parsed(R"({"a":[{"b":2}]})"), false, "deep"},
    };
    for (auto const& row : rows) {
        EXPECT_EQ(row.left == row.right, row.equal)
            << textOf(row.left) << ' ' << textOf(row.right) << ": " << row.why;
        EXPECT_EQ(row.right == row.left, row.equal)
            << textOf(row.right) << ' ' << textOf(row.left) << ": " << row.why;
        EXPECT_TRUE(row.left == row.left && row.right == row.right) << row.why;
    }
}

TEST(Element, ComparingCopiesNothing) {
    static_assert(noexcept(Element() == Element())&& noexcept(Array() == Array())&& noexcept(
        Object() == Object()));
    auto const text = R"({"k":[["a text of more than 14 bytes",1],{"a":[],"b":{}}],"m":0})";
    auto left = parsed(text);
    Element right;
    right["m"].setUnsigned(0);
    Array& entries = right["k"];
    for (auto const& entry : left["k"].array()) // exposed, in another order, and in chunks
        entries.push_back(entry);
    entries.reserve(100);
    for (unsigned int i = 2; i < 80; ++i) {
        entries[i] = entries[i % 2];
        static_cast<Array&>(left["k"])[i] = entries[i];
    }
    Element deep;
    for (int i = 0; i < 60; ++i) {
        Element outer;
        outer["k"] = std::move(deep);
        deep = std::move(outer);
    }
    auto const sameDeep = deep; // exposed, so a copy of its own
    Testing::Counted const counted;
    EXPECT_TRUE(left == right && left.object() == right.object());
    EXPECT_TRUE(left["k"].array() == right["k"].array());
    EXPECT_TRUE(deep == sameDeep && deep.object() == sameDeep.object());
    EXPECT_FALSE(deep == std::as_const(sameDeep)["k"]);
    EXPECT_EQ(counted.allocations(), 0U);
    static_cast<Array&>(right["k"])[79]["c"];
    EXPECT_FALSE(left == right || left["k"].array() == right["k"].array());
    EXPECT_FALSE(Array() == left["k"].array() || Object() == left.object());
}

// ---- Assignments within one tree -------------------------------------------------------------

TEST(Element, AssignmentWithinOneTree) {
    struct {
        char const* why;
        void (*assign)(Element& tree);
        char const* result;
    } const rows[] = {
        {"to itself",
         [](Element& t) {
             auto& same = t;
             t = same;
         },
         R"({"a":{"b":[1,2]},"c":3})"},
        {"child to parent", [](Element& t) { t = t["a"]; }, R"({"b":[1,2]})"},
        {"child to parent by a const way", [](Element& t) { t = std::as_const(t)["a"]; },
         R"({"b":[1,2]})"},
        {"grandchild to parent", [](Element& t) { t = t["a"]["b"]; }, "[1,2]"},
        {"element of an array to the root",
         [](Element& t) { t = static_cast<Array&>(t["a"]["b"])[1]; }, "2"},
        {"child moved to parent", [](Element& t) { t = std::move(t["a"]); }, R"({"b":[1,2]})"},
        {"parent to child", [](Element& t) { t["c"] = t; },
         R"({"a":{"b":[1,2]},"c":{"a":{"b":[1,2]},"c":3}})"},
        {"parent to grandchild", [](Element& t) { t["a"]["b"] = t["a"]; },
         R"({"a":{"b":{"b":[1,2]}},"c":3})"},
        {"sibling that is added meanwhile", [](Element& t) { t["d"] = t["a"]; },
         R"({"a":{"b":[1,2]},"c":3,"d":{"b":[1,2]}})"},
        {"array into itself",
         [](Element& t) { static_cast<Array&>(t["a"]["b"]).push_back(t["a"]["b"]); },
         R"({"a":{"b":[1,2,[1,2]]},"c":3})"},
        {"entry to one beyond the end",
         [](Element& t) {
             Array& array = t["a"]["b"];
             array[1] = t["a"];
             for (auto const index : {2U, 40U, 400U}) // each adds room
                 array[index] = array[1];
             array.resize(3);
         },
         R"({"a":{"b":[1,{"b":[1,2]},{"b":[1,2]}]},"c":3})"},
        {"entry moved to one beyond the end",
         [](Element& t) {
             Array& array = t["a"]["b"];
             array[0] = t["a"];
             array[9] = std::move(array[0]);
             t = array[9];
         },
         R"({"b":[1,2]})"},
        {"swap with an entry beyond the end",
         [](Element& t) {
             Array& array = t["a"]["b"];
             std::swap(array[0], array[5]);
         },
         R"({"a":{"b":[null,2,null,null,null,1]},"c":3})"},
        {"child to many keys that are added",
         [](Element& t) {
             for (int i = 0; i < 100; ++i)
                 t["new" + std::to_string(i)] = t["a"];
             t = t["new99"];
         },
         R"({"b":[1,2]})"},
        {"key from a text of the object",
         [](Element& t) {
             t["c"] = string("new");
             t[std::string(t["c"].text())] = t["c"];
             t["a"].setNull();
         },
         R"({"a":null,"c":"new","new":"new"})"},
        {"text from a part of itself",
         [](Element& t) {
             t = string(std::string(40, 'x') + "a text of more than 14 bytes");
             t.setString(t.text().substr(40));
             t.setString(t.text().substr(2, 4));
             t.setString(t.text().substr(1));
         },
         R"("ext")"},
        {"swap of parent and child",
         [](Element& t) {
             Element child(t["a"]);
             child.swap(t);
             t["b"] = std::move(child);
         },
         R"({"b":{"a":{"b":[1,2]},"c":3}})"},
    };
    for (auto const& row : rows) {
        auto const original = parsed(R"({"a":{"b":[1,2]},"c":3})");
        auto shared = original;
        row.assign(shared);
        EXPECT_EQ(textOf(shared), row.result) << row.why;
        EXPECT_EQ(textOf(original), R"({"a":{"b":[1,2]},"c":3})") << row.why;
        auto own = parsed(R"({"a":{"b":[1,2]},"c":3})");
        row.assign(own);
        EXPECT_EQ(textOf(own), row.result) << row.why;
    }
}

// ---- Depth -----------------------------------------------------------------------------------

constexpr int manyLevels = 1'000'000;

/// @param mixed  true: arrays and objects in turn, all with writable content; false: arrays only
Element deepTree(bool mixed) {
    Element element;
    for (int i = 0; i < manyLevels; ++i) {
        if (mixed && i % 2 == 0) {
            Object object;
            object["k"] = std::move(element);
            element = Element(std::move(object));
        } else if (mixed) {
            Array array;
            array[0] = std::move(element);
            element = Element(std::move(array));
        } else {
            Array array;
            array.push_back(std::move(element));
            element = Element(std::move(array));
        }
    }
    return element;
}

TEST(Element, TreesOfAMillionLevels) {
    for (bool const mixed : {false, true}) {
        auto tree = deepTree(mixed);
        Element copy(tree);
        EXPECT_TRUE(copy == tree) << mixed;
        auto const other = deepTree(mixed);
        EXPECT_TRUE(tree == other) << mixed;
        {
            Testing::FailingAllocation const failing(0);
            EXPECT_FALSE(tree == other) << "there is no memory for the walk";
        }
        EXPECT_FALSE(copy == Element()) << mixed;
        Array list;
        list.push_back(copy);
        list.push_back(tree);
        tree.setNull();
        EXPECT_TRUE(std::as_const(list)[0] == std::as_const(list)[1]) << mixed;
        std::string text;
        EXPECT_THROW(WriterJson::Write(copy, text), Exception::InvalidParameter) << mixed;
    }
}

// ---- Threads ---------------------------------------------------------------------------------

TEST(Element, ThreadsShareOneParsedTree) {
    auto const text =
        R"({"list":[1,[2,3],{"a":"a text of more than 14 bytes"}],"map":{"b":{"c":4}}})"s;
    auto const tree = parsed(text);
    std::vector<std::thread> threads;
    for (int t = 0; t < 2; ++t) {
        threads.emplace_back([mine = tree, &text, t]() mutable {
            for (int i = 0; i < 2000; ++i) {
                Element copy(mine);
                Element part(std::as_const(copy)["list"]);
                static_cast<Array&>(part)[1].setSigned(t);
                copy["map"]["b"]["c"].setSigned(i);
                EXPECT_EQ(copy["map"]["b"]["c"].signedNumber(), i);
                EXPECT_EQ(part.array()[1].signedNumber(), t);
                mine = Element(mine);
            }
            EXPECT_EQ(textOf(mine), text);
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(textOf(tree), text);
}

TEST(Element, TheLastCopyMayBeDroppedByAnyThread) {
    for (int i = 0; i < 200; ++i) {
        auto first = parsed(R"([[["a text of more than 14 bytes"],{"a":{}}],1])");
        auto second = first;
        std::thread other([mine = std::move(second)]() mutable {
            static_cast<Array&>(mine)[1].setSigned(2);
            mine.setNull();
        });
        first.setNull();
        other.join();
    }
}

} // namespace
} // namespace Tolv::MetaData
