#include <gtest/gtest.h>

#include <limits>

#include <tolv/messages.h>

/// What can be written without thought does what it says. What does not compile is in
/// tests/refused.
namespace Tolv::Msgs {
namespace {

using MetaData::operator""_key;

TEST(NaturalUse, AssignAsksForTheValueOfIntegersOfOtherTypes) {
    MetaData::Reflector<unsigned char> field{nullptr, "small"_key, MetaData::Required};
    struct Row {
        long long given;
        bool fits;
    };
    for (auto const& [given, fits] : {Row{0, true}, Row{255, true}, Row{256, false}, Row{-1, false},
                                      Row{std::numeric_limits<long long>::min(), false}}) {
        field = 7;
        long long const constant = given;
        if (fits) {
            field.assign(constant);
            EXPECT_EQ(field(), given);
        } else {
            EXPECT_THROW(field.assign(constant), Exception::InvalidParameter) << given;
            EXPECT_EQ(field(), 7);
        }
    }
    MetaData::Reflector<unsigned long long> wide{nullptr, "wide"_key, MetaData::Required};
    EXPECT_THROW(wide.assign(-1), Exception::InvalidParameter);
    wide.assign(5);
    EXPECT_EQ(wide(), 5U);
}

TEST(NaturalUse, AssignmentsThroughABaseKeepTheId) {
    App::ConnectMessage target({"a"}, {"b"});
    App::ConnectedMessage const source({"c"}, {"d"});
    App::AppMessage& base = target;
    base = static_cast<App::AppMessage const&>(source);
    EXPECT_EQ(target.id(), App::ConnectMessage::MsgID());
    EXPECT_EQ(target.sender(), Address{"c"});

    // Of the same class the id is taken over: an entry of a batch keeps the one that was read.
    auto const foreign = Message::CreateFromText(R"({"MessageID":844424930131969,"Data":{}})");
    ASSERT_NE(foreign, nullptr);
    App::ConnectMessage other;
    MetaData::Element tree;
    source.copyToMetaData(tree);
    other.copyFromMetaData(tree); // now it has the id of another class
    target = other;
    EXPECT_EQ(target.id(), App::ConnectedMessage::MsgID());
}

TEST(NaturalUse, AttributesAreMadeOfTheirValue) {
    EXPECT_EQ(Attrs::StringMessage("x", {"from"}, {"to"}).payload().value(), "x");
    EXPECT_EQ(Attrs::DoubleMessage(3).payload().value(), 3.0);
    EXPECT_FALSE(Attrs::BoolMessage(false).payload().value());
    EXPECT_TRUE(Attrs::BoolMessage().payload().value());
    EXPECT_EQ(Attrs::StringMessage({"from"}, {"to"}).sender(), Address{"from"});
    EXPECT_FALSE(App::ConnectMessage({}, {"to"}).sender.initialized());
    EXPECT_EQ(App::ConnectMessage({}, {"to"}).destination(), Address{"to"});
    EXPECT_EQ(App::ConnectMessage({3, 1, false}, {}, {"to"}).payload().maxVersion(), 3);
}

TEST(NaturalUse, WhatATemporaryGivesOutLives) {
    auto const message = [] {
        Attrs::DoubleTraceMessage made;
        made.editPayload().trace = {1.5, 2.5};
        return made;
    };
    auto const& samples = message().payload().trace();
    EXPECT_EQ(samples, (std::vector<double>{1.5, 2.5}));
    auto const& id = message().id();
    EXPECT_EQ(id, Attrs::DoubleTraceMessage::MsgID());
    MetaData::Element const& child = [] {
        MetaData::Element tree;
        tree["k"].setString("a text that does not stand in the element");
        return tree;
    }()["k"];
    EXPECT_EQ(child.asString(), "a text that does not stand in the element");
    EXPECT_THROW(MetaData::Element()["k"], Exception::InvalidParameter);
    EXPECT_THROW(message().payload().attributeMetaData(), Exception::InvalidOperation);
}

TEST(NaturalUse, BracesAreListsWhereListsAreMeant) {
    MetaData::ReflectorArray<bool> const flags{nullptr, "k"_key, MetaData::Required, {true}};
    EXPECT_EQ(flags(), std::vector<bool>{true});
    EXPECT_FALSE(flags.encodeBinary());
    ReflectedAddress const address{nullptr, "k"_key, {"x"}};
    EXPECT_EQ(address(), Address{"x"});
    Attrs::DoubleTraceMessage trace;
    trace.editPayload().trace = {0, 0, 1};
    EXPECT_EQ(trace.payload().trace().size(), 3U);
}

} // namespace
} // namespace Tolv::Msgs
