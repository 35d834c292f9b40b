#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/fields/reflector.h>
#include <tolv/fields/reflector_array.h>
#include <tolv/fields/reflector_lambda.h>
#include "support/trees.h"

// Copies that the compiler makes of records: whose fields they are, and in which state.
namespace Tolv::MetaData {
namespace {

using Testing::readInto;
using Testing::thrownBy;
using Testing::written;

struct Inner : MirroredObject {
    Reflector<int> number{this, field<"number">, Required, 7};
    Reflector<std::string> text{this, field<"text">, Optional};
};

struct Route : MirroredObject {
    Reflector<int> output{this, field<"output">, Required, 1};
    Inner plain; ///< a record that is no field, copied between two fields
    Reflector<Inner> inner{this, field<"inner">, Required};
    ReflectorArray<Inner> list{this, field<"list">, Required};
    std::vector<Inner> plainList;
    Reflector<double> last{this, field<"last">, Optional};
};

struct WideRoute : Route { // the fields of a base come first
    Reflector<bool> isWide{this, field<"isWide">, Required, true};
};

struct Node : MirroredObject { // a tree of its own kind, with a field behind its children
    ReflectorArray<Node> children{this, field<"children">, Required};
    Reflector<int> after{this, field<"after">, Required};
};

// Records have many fields, and batches many records.
static_assert(sizeof(ReflectorBase) == (sizeof(void*) == 8 ? 24 : 16));
static_assert(sizeof(MirroredObject) == sizeof(void*) + 8);

/// The fields of `record` are its own: parts of the object, in this number, listed once.
template <class Record>
void expectOwn(Record const& record, std::size_t count) {
    auto const members = record.members();
    ASSERT_EQ(members.size(), count);
    auto const* const begin = reinterpret_cast<char const*>(&record);
    char const* before = nullptr;
    for (auto const* const field : members) {
        auto const* const at = reinterpret_cast<char const*>(field);
        EXPECT_TRUE(at >= begin && at < begin + sizeof(Record)) << field->name();
        EXPECT_LT(before, at) << field->name();
        EXPECT_TRUE(field->isOwnedBy(record)) << field->name();
        before = at;
    }
}

TEST(RecordCopies, OwnTheirFields) {
    auto source = std::make_unique<WideRoute>();
    source->output = 2;
    source->inner.edit().text = "of the source";
    source->list.edit().resize(3);
    source->list.edit()[1].number = 9;
    source->plainList.resize(20);
    source->last = 0.5;
    auto const text = written(*source);

    WideRoute copy(*source);
    WideRoute moved(WideRoute{*source});
    std::vector<WideRoute> many(3, copy);
    for (int i = 0; i < 20; ++i)
        many.push_back(many[0]); // grows
    source->output = 3;
    source->list.edit().clear();
    source.reset();
    many.push_back(copy);
    many.push_back(std::move(moved));
    for (auto const& one : many) {
        expectOwn(one, 5);
        expectOwn(one.inner(), 2);
        expectOwn(one.plain, 2);
        for (auto const& entry : one.list())
            expectOwn(entry, 2);
        for (auto const& entry : one.plainList)
            expectOwn(entry, 2);
        EXPECT_EQ(written(one), text);
    }
    expectOwn(moved, 5); // still a record, with any values
    moved = copy;
    EXPECT_EQ(written(moved), text);
}

TEST(RecordCopies, FindTheirRecordInTreesOfAnyDepth) {
    Node root;
    auto* node = &root;
    for (int depth = 0; depth < 40; ++depth) { // deeper than the list of copies starts with
        node->after = depth;
        node->children.edit().resize(2);
        node = &node->children.edit()[0];
    }
    Node const copy(root);
    EXPECT_EQ(written(copy), written(root));
    auto const* one = &copy;
    for (; !one->children().empty(); one = &one->children()[0])
        expectOwn(*one, 2);
}

TEST(RecordCopies, HaveTheStateThatAssignmentGives) {
    struct States : MirroredObject {
        Reflector<int> required{this, field<"required">, Required, 5};
        Reflector<int> failed{this, field<"failed">, Required, 5};
        Reflector<int> optional{this, field<"optional">, Optional, 5};
        Reflector<int> set{this, field<"set">, Optional};
        Reflector<Inner> record{this, field<"record">, Required};
        Reflector<int> demanded{this, field<"demanded">, Optional};
        ReflectorArray<int> list{this, field<"list">, Required, {1}};
    };
    States source;
    source.failed.uninit();
    source.set = 3;
    source.record.edit().number = 1;
    source.record.uninit();
    source.demanded.makeRequired();
    source.list.uninit();
    States assigned;
    assigned = source;
    States const copy(source);
    for (States const* const one : {static_cast<States const*>(&assigned), &copy}) {
        EXPECT_EQ(written(*one), R"({"required":5,"failed":0,"set":3,"record":{"number":7}})");
        EXPECT_TRUE(one->failed.initialized());
        EXPECT_FALSE(one->optional.initialized());
        EXPECT_FALSE(one->demanded.isRequired()) << "as the record declares it";
        EXPECT_FALSE(one->list.initialized()) << "lists have no rule for required ones";
    }
}

TEST(RecordCopies, OfABaseOnlyHaveTheFieldsOfTheBase) {
    WideRoute const wide;
    std::vector<Route> bases;
    for (int i = 0; i < 20; ++i)
        bases.emplace_back(wide);
    for (auto const& base : bases)
        expectOwn(base, 4);
    auto const alone = wide.isWide; // where the field of a whole copy would be, or anywhere
    EXPECT_EQ(written(alone), R"({"isWide":true})");
    for (auto const& base : bases)
        EXPECT_EQ(written(base), R"({"output":1,"inner":{"number":7},"list":[]})");
    WideRoute const whole(wide);
    expectOwn(whole, 5);
}

TEST(RecordCopies, OfAFieldOnItsOwnBelongToNobody) {
    WideRoute route;
    auto const alone = route.inner;
    auto const again = alone;
    EXPECT_FALSE(again.isOwnedBy(route));
    EXPECT_EQ(written(again), R"({"inner":{"number":7}})");
    expectOwn(again(), 2);
    expectOwn(route, 5);
}

/// A copy constructor may also build its fields as new ones, and assign.
struct Old : Inner {
    Reflector<int> more{this, field<"more">, Required};

    Old() = default;
    Old(Old const& other) : Inner(other) { more = other.more; }
    Old& operator=(Old const&) = default;
};

/// It may also copy some of them.
struct Mixed : Inner {
    Reflector<int> one{this, field<"one">, Required};
    Reflector<int> two{this, field<"two">, Required};

    Mixed() = default;
    Mixed(Mixed const& other) : Inner(other), one(other.one) { two = other.two; }
    Mixed& operator=(Mixed const&) = default;
};

/// A field with functions: the record default-constructs itself and assigns.
struct Checked : MirroredObject {
    Reflector<int> first{this, field<"first">, Required};
    ReflectorLambda<int> second{this, field<"second">, 4, [](int value) { return value != 5; }};

    Checked() = default;
    Checked(Checked const& other) : Checked() { *this = other; }
    Checked& operator=(Checked const&) = default;
};

TEST(RecordCopies, ByConstructorsOfTheirOwn) {
    Old old;
    old.more = 8;
    expectOwn(Old(old), 3);
    EXPECT_EQ(written(Old(old)), R"({"number":7,"more":8})");
    Mixed mixed;
    mixed.one = 8;
    expectOwn(Mixed(mixed), 4);
    EXPECT_EQ(written(Mixed(mixed)), R"({"number":7,"one":8,"two":0})");
    struct Holder : MirroredObject {
        Reflector<Checked> checked{this, field<"checked">, Required};
        Reflector<Old> old{this, field<"old">, Required};
        Reflector<int> last{this, field<"last">, Required};
    };
    Holder holder;
    Holder copy(holder);
    copy.checked.edit().second = 5; // refused by the function of the copy
    copy.checked.edit().second = 6;
    expectOwn(copy, 3);
    expectOwn(copy.checked(), 2);
    EXPECT_EQ(written(copy), R"({"checked":{"first":0,"second":6},)"
                             R"("old":{"number":7,"more":0},"last":0})");
}

/// A class that takes its owner as a record of unknown size.
struct Forwarded : Reflector<int> {
    explicit Forwarded(MirroredObject* owner) : Reflector(owner, field<"forwarded">, Required) {}
};
struct HasForwarded : MirroredObject {
    Reflector<int> first{this, field<"first">, Required};
    Forwarded second{this};
    Reflector<int> third{this, field<"third">, Required};
};

TEST(RecordCopies, AreRefusedWithFieldsThatLieOutside) {
    Inner host;
    Reflector<int> guest{&host, field<"guest">, Required, 3};
    EXPECT_EQ(written(host), R"({"number":7,"guest":3})");
    EXPECT_NE(thrownBy<Exception::InvalidOperation>([&] {
                  (void)Inner(host);
              }).find("its field guest lies outside of it"),
              std::string::npos);
    Inner target;
    target = host; // assigns the fields inside
    EXPECT_EQ(written(target), R"({"number":7})");

    HasForwarded const has;
    EXPECT_EQ(written(has), R"({"first":0,"forwarded":0,"third":0})") << "in order";
    EXPECT_NE(thrownBy<Exception::InvalidOperation>([&] {
                  (void)HasForwarded(has);
              }).find("its field forwarded"),
              std::string::npos);
}

/// Throws when the copy is half done.
struct Bomb {
    bool isLive = false;
    Bomb() = default;
    Bomb(Bomb const& other) {
        if (other.isLive)
            throw Exception::InvalidOperation("bomb");
    }
    Bomb& operator=(Bomb const&) = default;
};
struct Fragile : MirroredObject {
    Reflector<int> first{this, field<"first">, Required};
    Bomb bomb;
    Reflector<int> second{this, field<"second">, Required};
};

TEST(RecordCopies, MayFailHalfWay) {
    Fragile fragile;
    fragile.bomb.isLive = true;
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { (void)Fragile(fragile); }), "bomb");
    fragile.bomb.isLive = false;
    expectOwn(Fragile(fragile), 2);
}

TEST(RecordCopies, OfOneSourceOnManyThreads) {
    WideRoute const source;
    std::vector<std::thread> threads;
    std::atomic<int> wrong = 0;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < 500; ++round)
                wrong += WideRoute(source).members().size() == 5 ? 0 : 1;
        });
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace Tolv::MetaData
