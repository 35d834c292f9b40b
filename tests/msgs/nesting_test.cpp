#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include <tolv/core/metadata/read_report.h>
#include <tolv/messages.h>

#include "support/messages.h"
#include "support/small_stack.h"

// Nested messages, which no record limits on its own.
namespace Tolv::Msgs {
namespace {

using MetaData::Element;
using namespace Testing;

constexpr auto most = Limits{}.messageNesting;

/// A tree with this many nested messages, which no reader has limited.
template <class M>
Element nested(std::size_t messages, char const* key) {
    Element inner;
    for (std::size_t i = 0; i < messages; ++i) {
        Element message;
        message["MessageID"].setUnsigned(M::MsgID());
        auto& data = message["Data"];
        MetaData::Array& list = data[key];
        if (i != 0)
            list[0].swap(inner);
        inner.swap(message);
    }
    return inner;
}

/// The number of nested messages, and whether the list of the innermost was read.
struct Depth {
    std::size_t messages = 0;
    bool isWhole = false;
};

/// @param listOf gives the list in a payload, or null when it did not read
template <class M, class ListOf>
Depth depthOf(std::shared_ptr<Message const> message, ListOf const& listOf) {
    for (Depth depth{1, false};; ++depth.messages) {
        auto const* const typed = dynamic_cast<M const*>(message.get());
        auto const* const list = typed->Data.initialized() ? listOf(typed->payload()) : nullptr;
        if (list == nullptr || list->empty())
            return {depth.messages, list != nullptr};
        message = list->front();
    }
}

auto const* paramOf(Engine::TransitionData const& data) {
    return data.param.initialized() ? &data.param() : nullptr;
}
auto const* attributesOf(Attrs::ArrayDataPolymorphic<Attrs::AttrMessage> const& data) {
    return &data.attributes;
}

template <class M, class ListOf>
void expectBounded(char const* key, ListOf const& listOf, bool isReported) {
    onSmallStack(1024, [&] {
        std::optional<MetaData::ReadReport> report;
        if (isReported)
            report.emplace();
        for (auto const& [messages, expected] :
             {std::pair{most - 1, Depth{most - 1, true}}, std::pair{most, Depth{most, true}},
              std::pair{most + 1, Depth{most, false}},
              std::pair{std::size_t{300'000}, Depth{most, false}}}) {
            auto const message = Message::CreateFromMetaData(nested<M>(messages, key));
            auto const depth = depthOf<M>(message, listOf);
            EXPECT_EQ(depth.messages, expected.messages) << messages;
            EXPECT_EQ(depth.isWhole, expected.isWhole) << messages;
            Element again;
            message->copyToMetaData(again); // which the bound of the reader lets pass
        }
    });
}

TEST(Nesting, ReadsSoManyMessagesInOneAnother) {
    for (bool const isReported : {false, true}) {
        expectBounded<Engine::TransitionMessage>("param", paramOf, isReported);
        expectBounded<Attrs::AttrListMessage>("Attributes", attributesOf, isReported);
    }
}

TEST(Nesting, EveryTextThatIsReadIsWithin) {
    auto const deepest = Limits{}.depth / 3; // message, "Data", list
    auto const text = textOf(nested<Engine::TransitionMessage>(deepest, "param"));
    EXPECT_TRUE(depthOf<Engine::TransitionMessage>(received(text), paramOf).isWhole);
    EXPECT_THROW((void)textOf(nested<Engine::TransitionMessage>(deepest + 1, "param")),
                 Exception::InvalidParameter);
}

template <class M, class List>
void expectRefusesItself(List const& listOf) {
    onSmallStack(1024, [&] {
        auto const message = std::make_shared<M>();
        auto& list = listOf(message->editPayload());
        list.push_back(message);
        for (int again = 0; again < 2; ++again) // the first failure leaves no trace
            EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { (void)written(*message); }),
                      "more than 512 nested messages");
        list.clear();
        EXPECT_NE(written(*message), "");
    });
}

TEST(Nesting, AMessageThatHoldsItselfIsNotWritten) {
    expectRefusesItself<Engine::TransitionMessage>(
        [](auto& data) -> auto& { return data.param.edit(); });
    expectRefusesItself<Attrs::AttrListMessage>(
        [](auto& data) -> auto& { return data.attributes; });
}

} // namespace
} // namespace Tolv::Msgs
