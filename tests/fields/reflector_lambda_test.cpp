#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/fields/reflector_lambda.h>

#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::MetaData {
namespace {

using namespace Tolv::Testing;

/// Refuses 5, throws at 6, and counts its calls.
class Guarded : public MirroredObject {
public:
    int asked = 0;
    int told = 0;
    ReflectorLambda<int> field{this, "n"_key, 1,
                               [this](int const& value) {
                                   ++asked;
                                   if (value == 6)
                                       throw std::range_error("six");
                                   return value != 5;
                               },
                               [this](ReflectorLambda<int> const& changed) {
                                   EXPECT_EQ(&changed, &field);
                                   EXPECT_TRUE(changed.initialized());
                                   ++told;
                                   return false; // of no effect
                               }};

    Guarded() = default;
    Guarded(Guarded const& other) : Guarded() { *this = other; }
    Guarded& operator=(Guarded const& other) {
        MirroredObject::operator=(other);
        field = other.field;
        return *this;
    }
};

TEST(ReflectorLambda, InitialValueIsNotChecked) {
    MirroredObject owner;
    auto const never = [](int const&) { return false; };
    ReflectorLambda<int> const field(&owner, "n"_key, 5, never);
    EXPECT_TRUE(field.isRequired());
    EXPECT_EQ(field(), 5);
}

TEST(ReflectorLambda, WithoutInitialValueStartsUninitialized) {
    MirroredObject owner;
    ReflectorLambda<int> field(&owner, std::string("n"));
    EXPECT_FALSE(field.initialized());
    EXPECT_EQ(written(owner), "{}");
    readInto(owner, R"({"n":"seven"})");
    EXPECT_FALSE(field.initialized()) << "a refused read changes nothing";
    field = 7;
    EXPECT_EQ(written(owner), R"({"n":7})");
}

TEST(ReflectorLambda, RefusedAssignmentChangesNothing) {
    Guarded record;
    record.field = 5;
    EXPECT_EQ(record.field(), 1);
    EXPECT_EQ(thrownBy<std::range_error>([&] { record.field = 6; }), "six");
    EXPECT_EQ(record.field(), 1);
    EXPECT_EQ(record.told, 0);

    record.field.reset();
    record.field = 5;
    EXPECT_FALSE(record.field.initialized()) << "the state stays too";

    record.field = 7;
    EXPECT_EQ(record.field(), 7);
    EXPECT_EQ(record.told, 1);
}

TEST(ReflectorLambda, ReadsWhatTheCheckAccepts) {
    struct {
        char const* json;
        int value;
        int asked; ///< how often the value check is called
        char const* why;
    } const rows[] = {
        {R"({"n":7})", 7, 1, "accepted"},
        {R"({"n":-3.0})", -3, 1, "a number that fits"},
        {R"({"n":5})", 1, 1, "refused"},
        {R"({"n":6})", 1, 1, "a check that throws refuses in silence"},
        {R"({"m":7})", 1, 0, "no such key"},
        {R"({"n":"7"})", 1, 0, "wrong kind"},
        {R"({"n":null})", 1, 0, "wrong kind"},
        {R"({"n":3e10})", 1, 0, "doesn't fit"},
        {R"([7])", 1, 0, "the parent is no object"},
    };
    for (auto const& row : rows) {
        Guarded record;
        readInto(record, row.json);
        EXPECT_EQ(record.field(), row.value) << row.json << ": " << row.why;
        EXPECT_TRUE(record.field.initialized()) << row.json;
        EXPECT_EQ(record.told, row.value == 1 ? 0 : 1) << row.json;
        EXPECT_EQ(record.asked, row.asked) << row.json;
    }
}

TEST(ReflectorLambda, OrdinaryFailuresCostNoThrow) {
    Guarded record;
    auto const absent = parsed("{}");
    auto const wrong = parsed(R"({"n":"seven"})");
    Counted const counted;
    record.copyFromMetaData(absent);
    record.copyFromMetaData(wrong);
    EXPECT_EQ(counted.exceptions(), 0U);
}

TEST(ReflectorLambda, OwnPreMetaReplacesTheCheckOfValues) {
    MirroredObject owner;
    int told = 0;
    bool open = false;
    ReflectorLambda<int> field(
        &owner, "n"_key, 1, [](int const&) { return false; },
        [&told](ReflectorLambda<int> const&) { return ++told > 0; },
        [&open](Element const&) { return open; });

    readInto(owner, R"({"n":7})");
    EXPECT_EQ(field(), 1);
    EXPECT_EQ(told, 0);

    open = true;
    readInto(owner, R"({"n":7})");
    EXPECT_EQ(field(), 7) << "the check of values is not asked";
    readInto(owner, "{}");
    EXPECT_FALSE(field.initialized()) << "an accepted read fails as that of a plain field";
    EXPECT_EQ(told, 2);
}

TEST(ReflectorLambda, CopyKeepsItsOwnFunctions) {
    auto source = std::make_unique<Guarded>();
    source->field = 7;
    Guarded copy(*source);
    EXPECT_EQ(copy.field(), 7);
    EXPECT_EQ(copy.told, 1);
    source.reset(); // copied functions would now refer to freed memory

    copy.field = 8;
    readInto(copy, R"({"n":9})");
    EXPECT_EQ(copy.told, 3);

    Guarded unset;
    unset.field.reset();
    copy = unset;
    EXPECT_EQ(copy.field(), 0) << "a required field takes its type's default";

    Guarded held;
    held.field.edit() = 5;
    copy = held;
    EXPECT_EQ(copy.field(), 0) << "copying goes through the check";
}

} // namespace
} // namespace Tolv::MetaData
