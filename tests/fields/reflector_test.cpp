#include <tolv/fields/reflector.h>

#include <algorithm>
#include <complex>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/core/msgs/identifier.h>
#include <tolv/msgs/app/connection.h>
#include <tolv/msgs/engine/transition_data.h>
#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::MetaData {
namespace {

using Testing::Counted;
using Testing::parsed;
using Testing::readInto;
using Testing::thrownBy;
using Testing::written;

/// Written as a literal.
enum class Colour { none, red };

bool TryGetAs(Element const& element, Colour& colour) {
    auto const word = element.isString() ? element.asString() : "";
    if (word == "red")
        colour = Colour::red;
    else if (word == "none")
        colour = Colour::none;
    else
        return false;
    return true;
}

void SetAs(Colour const& colour, Element& element) {
    element.setString(colour == Colour::red ? "red" : "none");
}

template <bool IsRecord, class... T>
constexpr bool areFieldsOf = (std::is_same_v<Reflector<T>, Reflector<T, IsRecord, true>> && ...);
static_assert(areFieldsOf<false, bool, unsigned long long, std::string, std::complex<double>,
                          std::vector<int>, Colour, Msgs::Identifier>);
static_assert(areFieldsOf<true, Msgs::App::Connect, Msgs::App::PingData,
                          Msgs::Engine::TransitionData::ParamList>);

/// The properties of a type that the typed tests need.
template <class T>
struct Sample {
    T value;          ///< not the zero
    char const* text; ///< of the value
    char const* zero; ///< text of the type's zero
    char const* bad;  ///< an element of the right kind, or the closest one, that does not fit
};

template <class T>
struct Of {};
Sample<bool> sample(Of<bool>) { return {true, "true", "false", "1"}; }
Sample<unsigned char> sample(Of<unsigned char>) { return {255, "255", "0", "256"}; }
Sample<unsigned short> sample(Of<unsigned short>) { return {65535, "65535", "0", "-1"}; }
Sample<int> sample(Of<int>) { return {-7, "-7", "0", "2147483648"}; }
Sample<unsigned int> sample(Of<unsigned int>) {
    return {4294967295U, "4294967295", "0", "4294967296"};
}
Sample<long long> sample(Of<long long>) {
    return {-9007199254740993, "-9007199254740993", "0", "0.5"};
}
Sample<unsigned long long> sample(Of<unsigned long long>) {
    return {18446744073709551615U, "18446744073709551615", "0", "-1"};
}
Sample<double> sample(Of<double>) { return {0.1, "0.1", "0.0", R"("0.1")"}; }
Sample<std::string> sample(Of<std::string>) {
    return {"a text beyond 14 bytes", R"("a text beyond 14 bytes")", R"("")", "3"};
}
Sample<std::complex<double>> sample(Of<std::complex<double>>) {
    return {{0.5, -2.5}, "[0.5,-2.5]", "[0.0,0.0]", "[0.5]"};
}
Sample<std::vector<int>> sample(Of<std::vector<int>>) {
    return {{1, -2}, "[1,-2]", "[]", "[1,true]"};
}
Sample<Msgs::Identifier> sample(Of<Msgs::Identifier>) {
    return {0x0003000000000001, "844424930131969", "0", "-1"};
}
Sample<Colour> sample(Of<Colour>) { return {Colour::red, R"("red")", R"("none")", R"("pink")"}; }

template <class T>
class FieldOf : public testing::Test {
protected:
    static std::string object(std::string const& key, std::string const& child) {
        return "{\"" + key + "\":" + child + '}';
    }

    MirroredObject owner;
    Sample<T> const known = sample(Of<T>());
};

using Scalars = testing::Types<bool, unsigned char, unsigned short, int, unsigned int, long long,
                               unsigned long long, double, std::string, std::complex<double>,
                               std::vector<int>, Msgs::Identifier, Colour>;
TYPED_TEST_SUITE(FieldOf, Scalars);

TYPED_TEST(FieldOf, OptionalHasNoKeyUntilItIsSet) {
    Reflector<TypeParam> field{&this->owner, "k"_key, Optional, this->known.value};
    EXPECT_FALSE(field.initialized());
    EXPECT_EQ(written(this->owner), "{}");
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { (void)field(); }),
              "Tolv::MetaData::Reflector::operator()(): k is not initialized");

    field = this->known.value;
    EXPECT_EQ(field(), this->known.value);
    EXPECT_EQ(written(this->owner), this->object("k", this->known.text));
    field.reset();
    readInto(this->owner, this->object("k", this->known.text));
    EXPECT_EQ(field(), this->known.value);
}

TYPED_TEST(FieldOf, ResetsInSilenceWhenItDoesNotRead) {
    std::string const bad = this->known.bad;
    std::vector<std::pair<char const*, std::string>> const cases{
        {"the key is absent", "{}"},
        {"another key", this->object("K", this->known.text)},
        {"the parent is null", "null"},
        {"the parent is no object but the very value", this->known.text},
        {"the element is null", this->object("k", "null")},
        {"the element is an object", this->object("k", "{}")},
        {"the element doesn't fit", this->object("k", bad)},
    };
    for (auto const& [why, text] : cases) {
        SCOPED_TRACE(why);
        // Both the earlier value and that of the constructor must be gone.
        Reflector<TypeParam> field{&this->owner, "k"_key, Required, this->known.value};
        readInto(field, text);
        EXPECT_FALSE(field.initialized());
        EXPECT_TRUE(field.isRequired());
        EXPECT_EQ(written(field), "null");
        field.init();
        EXPECT_EQ(field(), TypeParam());
    }
}

TYPED_TEST(FieldOf, ResetForgetsTheInitialValue) {
    Reflector<TypeParam> field{&this->owner, "k"_key, Required, this->known.value};
    field.reset();
    EXPECT_FALSE(field.initialized());
    field.edit() = this->known.value;
    field.reset(); // a second time, after a change in place
    field.init();
    EXPECT_EQ(field(), TypeParam());
}

TYPED_TEST(FieldOf, AssignsFieldToFieldInAllStates) {
    for (bool const required : {true, false}) {
        for (bool const set : {true, false}) {
            SCOPED_TRACE((required ? "required = " : "optional = ") +
                         std::string(set ? "set" : "unset"));
            Reflector<TypeParam> target{&this->owner, "target"_key, required, this->known.value};
            Reflector<TypeParam> source{&this->owner, "source"_key, !required, this->known.value};
            if (set)
                source.init();
            else
                source.uninit(); // its value is still there, and must not be copied
            target = source;
            EXPECT_EQ(target.initialized(), set || required);
            EXPECT_EQ(target.isRequired(), required);
            EXPECT_EQ(target.name(), "target");
            EXPECT_EQ(source.initialized(), set);
            target.init();
            EXPECT_EQ(target(), set ? this->known.value : TypeParam());
            EXPECT_EQ(written(target),
                      this->object("target", set ? this->known.text : this->known.zero));
        }
    }
}

TYPED_TEST(FieldOf, AnAbsentKeyCostsNoThrowAndNoMemory) {
    Reflector<TypeParam> field{&this->owner, "k"_key, Optional};
    auto const empty = parsed("{}");
    auto const other = parsed(R"({"a":1})");
    Counted const count;
    field.copyFromMetaData(empty);
    field.copyFromMetaData(other);
    EXPECT_EQ(count.exceptions(), 0U);
    EXPECT_EQ(count.allocations(), 0U);
}

TYPED_TEST(FieldOf, AWrongKindCostsNoThrow) {
    constexpr std::size_t expected = Record<TypeParam> ? 1 : 0; // an Identifier reads itself
    Reflector<TypeParam> field{&this->owner, "k"_key, Optional};
    auto const wrong = parsed(this->object("k", this->known.bad));
    Counted const count;
    field.copyFromMetaData(wrong);
    EXPECT_EQ(count.exceptions(), expected);
    EXPECT_FALSE(field.initialized());
}

// Fields of records.

/// A record whose default arguments are not zero.
struct FanBank : MirroredObject {
    Reflector<int> bank{this, "bank"_key, Required};
    Reflector<int> speed{this, "speed"_key, Required};
    Reflector<std::string> label{this, "label"_key, Optional};

    explicit FanBank(int bankNumber = -1, int percent = -1) {
        bank = bankNumber;
        speed = percent;
    }
};

/// A record that has no default constructor.
struct Limit : MirroredObject {
    Reflector<double> bound{this, "bound"_key, Required};

    explicit Limit(double value) { bound = value; }
};

/// A record with a record and a list in it.
struct Chassis : MirroredObject {
    Reflector<FanBank> fans{this, "fans"_key, Required};
    Reflector<Limit> limit{this, "limit"_key, Optional, Limit(5)};
};

} // namespace

template <>
struct DefaultOf<Limit> {
    static Limit make() { return Limit(100); }
};

namespace {

TEST(RecordField, ResetRestoresTheDefaultRecordWithItsStates) {
    MirroredObject owner;
    Reflector<FanBank> field{&owner, "f"_key, Required, FanBank(3, 50)};
    field.edit().label = "upper";
    field.edit().speed.uninit();
    field.reset();
    EXPECT_FALSE(field.initialized());
    EXPECT_EQ(written(owner), "{}");
    field.init();
    EXPECT_EQ(written(owner), R"({"f":{"bank":-1,"speed":-1}})");
}

TEST(RecordField, ResetUndoesAChangeThroughAReferenceThatWasKept) {
    MirroredObject owner;
    Reflector<FanBank> field{&owner, "f"_key, Required};
    auto& kept = field.edit();
    readInto(field, "{}");
    kept.label = "upper";
    readInto(field, "{}");
    field.init();
    EXPECT_EQ(written(owner), R"({"f":{"bank":-1,"speed":-1}})");
}

TEST(RecordField, WithoutDefaultConstructorHasADefaultForm) {
    MirroredObject owner;
    Reflector<Limit> field{&owner, "l"_key, Required};
    EXPECT_EQ(written(field), R"({"l":{"bound":100.0}})");
    field = Limit(2);
    field.reset();
    field.init();
    EXPECT_EQ(written(field), R"({"l":{"bound":100.0}})");

    Reflector<Limit> unset{&owner, "u"_key, Optional};
    field = Limit(2);
    field = unset;
    EXPECT_TRUE(field.initialized());
    EXPECT_EQ(field().bound(), 100);
}

TEST(RecordField, ReadsFieldByField) {
    struct Case {
        char const* why;
        char const* text;
        bool initialized;
        char const* after; ///< what the field writes then
    };
    for (Case const& row : {
             Case{"all there", R"({"f":{"bank":1,"speed":2,"label":"x"}})", true,
                  R"({"f":{"bank":1,"speed":2,"label":"x"}})"},
             Case{"a field that fails leaves the rest", R"({"f":{"bank":"no","speed":2}})", true,
                  R"({"f":{"speed":2}})"},
             Case{"fields swallow that there is no object", R"({"f":7})", true, R"({"f":{}})"},
             Case{"nor null", R"({"f":null})", true, R"({"f":{}})"},
             Case{"an absent key resets the whole", "{}", false, "null"},
         }) {
        SCOPED_TRACE(row.why);
        MirroredObject owner;
        Reflector<FanBank> field{&owner, "f"_key, Optional};
        field = FanBank(8, 9);
        readInto(field, row.text);
        EXPECT_EQ(field.initialized(), row.initialized);
        EXPECT_EQ(written(field), row.after);
    }
}

TEST(RecordField, AssignCopiesAndLeavesEachFieldWithItsOwner) {
    Chassis target;
    {
        FanBank fans(3, 50);
        target.fans = fans;
        fans.bank = 4;
        fans.label = "changed afterwards";
        EXPECT_EQ(written(fans), R"({"bank":4,"speed":50,"label":"changed afterwards"})");
    }
    EXPECT_EQ(written(target), R"({"fans":{"bank":3,"speed":50}})");
    readInto(target, R"({"fans":{"bank":5,"label":"read"},"limit":{"bound":1}})");
    EXPECT_EQ(written(target), R"({"fans":{"bank":5,"label":"read"},"limit":{"bound":1.0}})");
}

TEST(RecordField, CopiesApplyTheRulesOfEachField) {
    Chassis source;
    readInto(source, R"({"fans":{"bank":5,"label":"x"}})"); // no speed
    Chassis target;
    target.fans.edit().label = "old";
    target = source;
    EXPECT_EQ(written(target), R"({"fans":{"bank":5,"speed":0,"label":"x"}})")
        << "a required target of an unset source is the type's zero, not the record's default";
    source.fans.edit().label.reset();
    target = source;
    EXPECT_EQ(written(target), R"({"fans":{"bank":5,"speed":0}})");
}

TEST(RecordField, HandWrittenPayloadResetsAsAWhole) {
    MirroredObject owner;
    Reflector<Msgs::App::PingData> field{&owner, "p"_key, Required};
    readInto(field,
             R"({"p":{"MaxVersion":3,"MinVersion":2,"MessageType":1,"SupportsBinary":true}})");
    EXPECT_EQ(field().maxVersion(), 3U);
    readInto(field, R"({"p":{"MaxVersion":9,"MinVersion":9,"MessageType":9}})");
    EXPECT_FALSE(field.initialized());
    field.init();
    EXPECT_EQ(field().maxVersion(), 0U) << "read before the throw, and reset with the rest";
    EXPECT_EQ(field().supportsBinary(), false);
}

// What derived classes and odd payloads do.

struct Doubling : Reflector<int> {
    using Reflector<int>::Reflector;
    void assign(Element const& parent) override {
        Reflector<int>::assign(parent);
        if (initialized())
            Reflector<int>::assign((*this)() * 2);
    }
    using Reflector<int>::assign;
};

struct Capped : Reflector<int> {
    using Reflector<int>::Reflector;
    void assign(int const& value) override { Reflector<int>::assign(std::min(value, 10)); }
    using Reflector<int>::assign;
};

TEST(Overrides, OfReadingAreHonoured) {
    MirroredObject owner;
    Doubling field{&owner, "n"_key, Optional};
    readInto(owner, R"({"n":21})");
    EXPECT_EQ(field(), 42);
}

TEST(Overrides, OfAssigningAreHonouredByFieldToField) {
    MirroredObject owner;
    Capped target{&owner, "t"_key, Optional};
    Reflector<int> source{&owner, "s"_key, Required, 11};
    static_cast<ReflectorNoWriteParend<int>&>(target) = source;
    EXPECT_EQ(target(), 10);
}

/// Throws something other than an exception class.
struct Unreadable {
    int state = 0;
    void copyToMetaData(Element& element) const { element.setSigned(state); }
    void copyFromMetaData(Element const&) {
        state = 1;
        throw 42;
    }
};

TEST(RecordField, SwallowsWhateverIsThrown) {
    MirroredObject owner;
    Reflector<Unreadable> field{&owner, "u"_key, Required};
    readInto(field, R"({"u":1})");
    EXPECT_FALSE(field.initialized());
    field.init();
    EXPECT_EQ(field().state, 0);
}

TEST(Reflector, MakeRequiredLeavesValueAndState) {
    MirroredObject owner;
    Reflector<int> field{&owner, "k"_key, Optional, 3};
    field.makeRequired();
    EXPECT_TRUE(field.isRequired());
    EXPECT_FALSE(field.initialized());
    field.init();
    EXPECT_EQ(field(), 3);
}

} // namespace
} // namespace Tolv::MetaData
