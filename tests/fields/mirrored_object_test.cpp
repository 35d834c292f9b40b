#include <tolv/core/metadata/mirrored_object.h>

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/fields/reflector.h>
#include <tolv/fields/reflector_array.h>
#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::MetaData {
namespace {

using Testing::Counted;
using Testing::parsed;
using Testing::readInto;
using Testing::textOf;
using Testing::written;

struct Pair : MirroredObject {
    Reflector<int> first{this, "first"_key, Required, 1};
    Reflector<int> second{this, "second"_key, Required, 2};
};

/// Any number of fields, each in a heap block of its own.
struct Fields {
    MirroredObject record;
    std::vector<std::unique_ptr<Reflector<int>>> fields;

    explicit Fields(int count) {
        for (int i = 0; i < count; ++i)
            fields.push_back(
                std::make_unique<Reflector<int>>(&record, 'f' + std::to_string(i), Required, i));
    }
};

std::string expectedText(int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += (i == 0 ? "" : ",") + std::string("\"f") + std::to_string(i) +
                "\":" + std::to_string(i);
    return '{' + text + '}';
}

TEST(MirroredObject, FieldsFollowInOrderOfConstruction) {
    for (int const count : {0, 1, 31, 32, 33, 100}) {
        SCOPED_TRACE(count);
        Fields source(count);
        EXPECT_EQ(written(source.record), expectedText(count));
        auto const members = source.record.members();
        ASSERT_EQ(members.size(), static_cast<std::size_t>(count));
        for (std::size_t i = 0; i < members.size(); ++i)
            EXPECT_EQ(members[i], source.fields[i].get());

        Fields target(count);
        for (auto& field : target.fields)
            field->reset();
        readInto(target.record, expectedText(count));
        EXPECT_EQ(written(target.record), expectedText(count));
    }
}

TEST(MirroredObject, FieldsLeaveInAnyOrder) {
    Fields some(4);
    some.fields[1].reset(); // from the middle
    EXPECT_EQ(written(some.record), R"({"f0":0,"f2":2,"f3":3})");
    some.fields[3].reset(); // the newest
    some.fields[0].reset(); // the oldest
    EXPECT_EQ(written(some.record), R"({"f2":2})");
    Reflector<int> const late{&some.record, "late"_key, Required};
    some.fields[2].reset();
    EXPECT_EQ(written(some.record), R"({"late":0})");
}

TEST(MirroredObject, MayDieBeforeItsFields) {
    auto record = std::make_unique<MirroredObject>();
    auto first = std::make_unique<Reflector<int>>(record.get(), "first"_key, Required, 1);
    auto second = std::make_unique<Reflector<int>>(record.get(), "second"_key, Optional, 2);
    second->makeRequired();
    record.reset();
    first.reset();
    *second = 3; // state and value are the field's own
    EXPECT_TRUE(second->isRequired());
    EXPECT_EQ((*second)(), 3);
    EXPECT_EQ(written(*second), R"({"second":3})");
}

TEST(MirroredObject, IsNotNeededByAField) {
    Reflector<int> field{nullptr, "k"_key, Required, 1};
    EXPECT_EQ(written(field), R"({"k":1})");
}

TEST(MirroredObject, CopiesHaveTheirOwnFields) {
    auto source = std::make_unique<Pair>();
    source->first = 5;
    Pair copy(*source);
    Pair assigned;
    assigned = *source;
    source->second = 6;
    EXPECT_EQ(written(*source), R"({"first":5,"second":6})");
    source.reset(); // nothing of it is in the copies

    for (auto* const record : {&copy, &assigned}) {
        EXPECT_EQ(record->members(),
                  (std::vector<ReflectorBase const*>{&record->first, &record->second}));
        EXPECT_EQ(written(*record), R"({"first":5,"second":2})");
    }
    std::vector<Pair> many(3, copy);
    many.resize(50, assigned); // moves them
    for (auto const& record : many)
        EXPECT_EQ(record.members(),
                  (std::vector<ReflectorBase const*>{&record.first, &record.second}));
}

TEST(MirroredObject, MemberListCostsNoMemory) {
    Counted const count;
    {
        Pair source;
        Pair copy(source);
        copy = source;
    }
    EXPECT_EQ(count.allocations(), 0U);
}

TEST(MirroredObject, WritesIntoNullOrAnObject) {
    Pair const record;
    Element tree = parsed(R"({"other":true,"second":"old"})");
    record.copyToMetaData(tree);
    EXPECT_EQ(textOf(tree), R"({"other":true,"second":2,"first":1})");

    EXPECT_EQ(written(MirroredObject()), "{}") << "without fields too it is an object";
    for (auto const* const text : {"3", "[]", "\"\"", "false"}) {
        Element element = parsed(text);
        EXPECT_THROW(record.copyToMetaData(element), Exception::InvalidParameter) << text;
        EXPECT_THROW(MirroredObject().copyToMetaData(element), Exception::InvalidParameter) << text;
        EXPECT_EQ(textOf(element), text);
    }
}

TEST(MirroredObject, ReadsFromWhatIsNoObject) {
    struct WithList : Pair {
        ReflectorArray<int> list{this, "list"_key, Required};
    };
    for (auto const* const text : {"3", "null", "[]"}) {
        SCOPED_TRACE(text);
        Pair record;
        readInto(record, text);
        EXPECT_EQ(written(record), "{}") << "value fields reset in silence";
        WithList withList;
        EXPECT_THROW(readInto(withList, text), Exception::InvalidParameter)
            << "array fields need an object";
    }
}

TEST(MirroredObject, SetAsCallsTheActualClass) {
    Pair const record;
    Element element;
    SetAs<PartiallySerializableInterface>(record, element);
    EXPECT_EQ(textOf(element), R"({"first":1,"second":2})");
}

TEST(Reflectors, KeepTheKeyThatTheyWereGiven) {
    MirroredObject owner;
    struct Case {
        char const* why;
        std::string key;
    };
    for (auto const& row : std::vector<Case>{{"empty", ""},
                                             {"14 bytes, the longest inline", "12345678901234"},
                                             {"15 bytes", "123456789012345"},
                                             {"a zero byte", std::string("a\0b", 3)},
                                             {"beyond ASCII", "µ"}}) {
        SCOPED_TRACE(row.why);
        auto given = std::make_unique<std::string>(row.key);
        Reflector<int> field{&owner, *given, Required, 3};
        ReflectorArray<int> list{&owner, *given + "s", Required};
        given.reset(); // the field no longer needs it
        auto const& name = field.name();
        EXPECT_EQ(name, row.key);
        EXPECT_EQ(&name, &field.name()) << "a reference that stays";
        Element element;
        field.copyToMetaData(element);
        EXPECT_TRUE(HasElement(element, row.key));
        field.reset();
        field.copyFromMetaData(element);
        EXPECT_EQ(field(), 3);
        EXPECT_EQ(list.name(), row.key + "s");
    }
    Reflector<int> literal{&owner, "literal"_key, Required};
    EXPECT_EQ(literal.name(), "literal");
}

} // namespace
} // namespace Tolv::MetaData
