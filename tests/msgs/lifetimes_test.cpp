// Objects that are gone, or that change, while something is written from them or read into them.

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/msgs/identifier.h>
#include <tolv/fields/polymorphic_reflector.h>
#include <tolv/fields/reflector_array.h>
#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/attrs/messages.h>
#include <tolv/msgs/engine/messages.h>
#include <tolv/msgs/message_helpers.h>
#include <tolv/msgs/payload_interface.h>

#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::Msgs {
namespace {

using namespace MetaData;
using namespace Testing;

// ---- Records that are written by way of objects that do not last -----------------------------

constexpr std::size_t manySamples = 1000; ///< enough to be encoded straight into the text

struct Samples : MirroredObject {
    ReflectorArray<double> samples{this, "Samples"_key, Required, true};

    Samples() = default;
    explicit Samples(double value) { samples = std::vector(manySamples, value); }
};

/// Writes a local object and has its memory used for something else.
template <class Local>
void writeLocal(Local&& local, Element& element) {
    std::make_unique<std::decay_t<Local>>(local)->copyToMetaData(element);
    std::vector<std::vector<double>> const others(4, std::vector(manySamples, -1.0));
    EXPECT_EQ(others.back().back(), -1);
}

struct ByHand : SerializablePayloadInterface {
    void copyToMetaData(Element& element) const override {
        writeLocal(Samples(1), element["first"]);
        writeLocal(Samples(2), element["second"]);
    }
    void copyFromMetaData(Element const& /*element*/) override {}
};

struct WithLocalMessage : SerializablePayloadInterface {
    void copyToMetaData(Element& element) const override {
        Attrs::DoubleTraceMessage message;
        message.editPayload().trace = std::vector(manySamples, 3.0);
        writeLocal(message, element["message"]);
    }
    void copyFromMetaData(Element const& /*element*/) override {}
};

struct Overriding : MirroredObject {
    mutable Reflector<Samples> scratch{this, "Scratch"_key, Required};
    mutable ReflectorArray<double> samples{this, "Samples"_key, Required, true};

    void copyToMetaData(Element& element) const override {
        scratch = Samples(4);
        samples = scratch().samples();
        MirroredObject::copyToMetaData(element);
        scratch.edit().samples.edit().assign(manySamples, -1);
        samples.edit().assign(manySamples, -1);
        writeLocal(Samples(5), element["local"]);
    }
};

struct WithOwnField : MirroredObject {
    struct Changing : ReflectorArray<double> {
        using ReflectorArray::ReflectorArray;
        void copyToMetaData(Element& parent) const override {
            Changing field(nullptr, key(), Required, true);
            static_cast<ReflectorArray<double>&>(field) = std::vector(manySamples, 6.0);
            field.ReflectorArray::copyToMetaData(parent);
        }
    };
    Changing samples{this, "Samples"_key, Required, true};
};

struct Everything : MirroredObject {
    Reflector<Samples> plain{this, "Plain"_key, Required, Samples(7)};
    Reflector<ByHand> byHand{this, "ByHand"_key, Required};
    Reflector<Overriding> overriding{this, "Overriding"_key, Required};
    Reflector<WithOwnField> withOwnField{this, "WithOwnField"_key, Required};
    ReflectorArray<Overriding> list{this, "List"_key, Required, std::vector<Overriding>(2)};
    Reflector<Samples> last{this, "Last"_key, Required, Samples(8)};
};

template <class Payload>
using MessageOf = PayloadMessageHelper<App::AppMessage, Payload, 4000>;

template <class Root>
class WrittenToText : public testing::Test {};
using Roots = testing::Types<Samples, Overriding, WithOwnField, Everything, MessageOf<Samples>,
                             MessageOf<ByHand>, MessageOf<WithLocalMessage>, MessageOf<Overriding>,
                             MessageOf<WithOwnField>, MessageOf<Everything>>;
TYPED_TEST_SUITE(WrittenToText, Roots);

TYPED_TEST(WrittenToText, EqualsWhatTheTreeGives) {
    TypeParam const byTree;
    TypeParam const atOnce;
    std::string text;
    atOnce.copyToText(text);
    EXPECT_TRUE(text == written(byTree)) << text.substr(0, 300);
}

TEST(WrittenToText, LargeArraysOfAMessageTakeNoBlockOfTheirOwn) {
    Attrs::DoubleTraceMessage message;
    message.editPayload().trace = std::vector(100'000, 0.5);
    std::string text;
    message.copyToText(text);
    Counted const counted;
    message.copyToText(text);
    EXPECT_LT(counted.largestAllocation(), 4096U);
}

// ---- Sources within their own target ---------------------------------------------------------

struct Node : MirroredObject {
    Reflector<std::string> text{this, "text"_key, Optional};
    ReflectorArray<std::string> list{this, "list"_key, Required};
    ReflectorArray<Node> children{this, "children"_key, Required};
};

Node nodeOf(std::string_view text) {
    Node node;
    readInto(node, text);
    return node;
}

TEST(OwnContent, IsReadIntoTheRecordItself) {
    for (std::size_t const size : {1, 20, 10'000}) {
        auto const letters = [size](char letter) { return '"' + std::string(size, letter) + '"'; };
        // What is read last stands first, where the texts that are read before would overwrite it.
        auto const json = "{\"children\":[{\"list\":[" + letters('c') + "]}],\"list\":[" +
                          letters('b') + "],\"text\":" + letters('a') + '}';
        auto const expected = written(nodeOf(json));
        Node node;
        node.text = json;
        node.copyFromText(node.text());
        EXPECT_EQ(written(node), expected);
        node.list = std::vector{json, json};
        node.copyFromText(node.list()[1]);
        EXPECT_EQ(written(node), expected);
        node.copyToText(node.text.edit());
        EXPECT_EQ(node.text(), expected);
    }
}

TEST(OwnContent, IsAssigned) {
    auto const json = R"({"text":"a","list":["d"],"children":[)"
                      R"({"list":["e"],"children":[{"text":"b"},{"list":["f"]}]},{},{}]})";
    struct {
        char const* why;
        void (*assign)(Node& node);
        char const* result;
    } const rows[] = {
        {"the whole list", [](Node& n) { n.children.assign(n.children()); }, json},
        {"the list of an entry", [](Node& n) { n.children.assign(n.children()[0].children()); },
         R"({"text":"a","list":["d"],"children":[{"text":"b"},{"list":["f"]}]})"},
        {"the field of an entry", [](Node& n) { n.children = n.children()[0].children; },
         R"({"text":"a","list":["d"],"children":[{"text":"b"},{"list":["f"]}]})"},
        {"the texts of an entry", [](Node& n) { n.list.assign(n.children()[0].list()); },
         R"({"text":"a","list":["e"],"children":[)"
         R"({"list":["e"],"children":[{"text":"b"},{"list":["f"]}]},{},{}]})"},
        {"an entry as another", [](Node& n) { n.children.edit()[0] = n.children()[1]; },
         R"({"text":"a","list":["d"],"children":[{},{},{}]})"},
        {"the record itself", [](Node& n) { n = std::as_const(n); }, json},
    };
    for (auto const& row : rows) {
        auto node = nodeOf(json);
        row.assign(node);
        EXPECT_EQ(written(node), written(nodeOf(row.result))) << row.why;
    }
    MessageOf<Node> message(nodeOf(json));
    auto const before = written(message);
    message.setPayload(message.payload());
    message.Data = std::as_const(message.Data);
    message = std::as_const(message);
    EXPECT_EQ(written(message), before);
}

struct Wide;

struct Inner : MirroredObject {
    ReflectorArray<Wide> list{this, "list"_key, Required};

    Inner();
    Inner(Inner const&);
    Inner& operator=(Inner const&);
};

/// All kinds of fields that may own another record of their own class, and last what is copied when
/// they have been replaced.
struct Wide : MirroredObject {
    ReflectorArray<Wide> children{this, "children"_key, Required};
    Reflector<Inner> inner{this, "inner"_key, Required};
    PolymorphicReflector<Message> cause{this, "cause"_key, Optional};
    Reflector<Engine::TransitionData::ParamList> param{this, "param"_key, Required};
    Reflector<std::string> text{this, "text"_key, Required};
};

Inner::Inner() = default;
Inner::Inner(Inner const&) = default;
Inner& Inner::operator=(Inner const&) = default;

using WideMessage = MessageOf<Wide>;

Wide wideOf(std::string const& text) {
    Wide wide;
    wide.text = text + " is too long to be stored in place";
    return wide;
}

/// Owns other records in each of its fields, and these own others in turn.
Wide wideTree(std::string const& text, int levels = 2) {
    auto wide = wideOf(text);
    if (levels == 0)
        return wide;
    auto const below = [&](char const* which) { return wideTree(text + which, levels - 1); };
    wide.children = std::vector{below(" child"), below(" second child")};
    wide.inner.edit().list = std::vector{below(" in inner")};
    wide.cause = std::make_shared<WideMessage>(below(" cause"));
    wide.param.edit() = {std::make_shared<WideMessage>(below(" param")),
                         std::make_shared<WideMessage>(below(" second param"))};
    return wide;
}

TEST(OwnContent, IsAssignedToTheFieldThatOwnsIt) {
    auto const messageIn = [](Message const& message) -> WideMessage const& {
        return dynamic_cast<WideMessage const&>(message);
    };
    using Part = std::function<Wide const&(Wide const&)>;
    Part const parts[] = {
        [](Wide const& wide) -> Wide const& { return wide.children()[0]; },
        [](Wide const& wide) -> Wide const& { return wide.inner().list()[0]; },
        [&](Wide const& wide) -> Wide const& { return messageIn(wide.cause()).payload(); },
        [&](Wide const& wide) -> Wide const& { return messageIn(*wide.param()[0]).payload(); },
    };
    struct {
        char const* name;
        std::function<void(WideMessage&, Wide const&)> run;
    } const roads[] = {
        {"assign", [](WideMessage& m, Wide const& part) { m.Data.assign(part); }},
        {"=", [](WideMessage& m, Wide const& part) { m.Data = part; }},
        {"setPayload", [](WideMessage& m, Wide const& part) { m.setPayload(part); }},
    };
    // A copy would share the messages in it, and keep them alive.
    auto const fill = [](WideMessage& message) {
        message.Data.reset();
        message.setPayload(wideTree("root"));
    };
    for (auto const& road : roads) {
        for (std::size_t outer = 0; outer < std::size(parts); ++outer) {
            WideMessage message;
            fill(message);
            auto const& part = parts[outer](message.payload());
            auto expected = written(part);
            road.run(message, part);
            EXPECT_EQ(written(message.payload()), expected) << road.name << ' ' << outer;
            for (std::size_t inner = 0; inner < std::size(parts); ++inner) {
                fill(message);
                auto const& deeper = parts[inner](parts[outer](message.payload()));
                expected = written(deeper);
                road.run(message, deeper);
                EXPECT_EQ(written(message.payload()), expected)
                    << road.name << ' ' << outer << ' ' << inner;
            }
        }
    }
    WideMessage message;
    fill(message);
    auto const expected = written(messageIn(message.payload().cause()));
    message = messageIn(message.payload().cause());
    EXPECT_EQ(written(message), expected);

    Reflector<Engine::TransitionData::ParamList> list{nullptr, "param"_key, Required};
    auto outer = std::make_shared<Engine::TransitionMessage>();
    outer->editPayload().param.edit() = {std::make_shared<WideMessage>(wideOf("a")),
                                         std::make_shared<WideMessage>(wideOf("b"))};
    list.edit() = {outer, nullptr};
    auto const& part = outer->payload().param();
    outer.reset();
    list = part;
    ASSERT_EQ(list().size(), 2U);
    EXPECT_EQ(messageIn(*list()[1]).payload().text(), wideOf("b").text());
}

TEST(OwnContent, IsReleasedAfterTheAssignment) {
    auto const cause = std::make_shared<WideMessage>();
    WideMessage message;
    message.editPayload().cause = cause;
    message.setPayload(Wide());
    EXPECT_EQ(cause.use_count(), 1);
}

// ---- Trees that hold something already -------------------------------------------------------

struct OptionalKeys : SerializablePayloadInterface {
    void copyToMetaData(Element& element) const override { element["n"].setSigned(1); }
    void copyFromMetaData(Element const& /*element*/) override {}
};

/// Writes `field`, whose key is "k", over all kinds of older content.
template <class Field>
void checkOverOlderContent(char const* name, Field const& field, bool needsArray = false) {
    Element fresh;
    field.copyToMetaData(fresh);
    for (auto const* const older :
         {"null", "true", "1", "\"text\"", "\"a text of more than 14 bytes\"", "[]",
          R"([{"text":"old","old":1},[1],"old",4])", "{}",
          R"({"text":"old","old":1,"n":{"old":1}})",
          R"({"type":3,"len":1,"base64":"AAAAAAAA4D8=","old":1})",
          R"({"MessageID":1,"Sender":["old"],"Data":{"old":1}})"}) {
        Element tree;
        tree["k"] = parsed(older);
        if (needsArray && !tree["k"].isArray() && !tree["k"].isNull()) {
            EXPECT_THROW(field.copyToMetaData(tree), Exception::InvalidParameter);
            EXPECT_EQ(textOf(tree["k"]), older) << name;
        } else {
            field.copyToMetaData(tree);
            EXPECT_EQ(textOf(tree), textOf(fresh)) << name << " over " << older;
        }
    }
}

TEST(UsedTree, GetsWhatAFreshOneGets) {
    auto const& key = "k"_key;
    using Doubles = std::vector<double>;
    auto const over = [](char const* name, auto const& field, bool needsArray = false) {
        checkOverOlderContent(name, field, needsArray);
    };
    over("number", Reflector<int>(nullptr, key, Required));
    over("text", Reflector<std::string>(nullptr, key, Required));
    over("list of numbers as a value", Reflector<std::vector<int>>(nullptr, key, Required));
    over("complex", Reflector<std::complex<double>>(nullptr, key, Required));
    over("identifier", Reflector<Identifier>(nullptr, key, Required));
    over("record", Reflector<Node>(nullptr, key, Required));
    over("hand-written payload", Reflector<OptionalKeys>(nullptr, key, Required));
    over("encoded", ReflectorArray<double>(nullptr, key, Required, Doubles{0.5, 1}, true));
    over("empty encoded", ReflectorArray<double>(nullptr, key, Required, true));
    over("encoded bits", ReflectorArray<bool>(nullptr, key, Required, {true, false}, true));
    over("plain", ReflectorArray<double>(nullptr, key, Required, Doubles{0.5, 1}), true);
    over("empty plain", ReflectorArray<double>(nullptr, key, Required), true);
    over("texts", ReflectorArray<std::string>(nullptr, key, Required, {"a"}), true);
    over("records", ReflectorArray<Node>(nullptr, key, Required, std::vector<Node>(2)), true);
    PolymorphicReflector<Message> message(nullptr, key, Optional);
    message = std::make_shared<App::ConnectMessage>();
    over("message", message);
}

} // namespace
} // namespace Tolv::Msgs
