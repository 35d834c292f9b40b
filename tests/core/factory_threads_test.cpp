#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/msgs/message.h>
#include <tolv/msgs/message_helpers.h>

#include "support/threads.h"
#include "support/trees.h"

namespace Tolv::Msgs {
namespace {

constexpr unsigned int threads = 8;
constexpr unsigned short family = 0x7EAD;

constexpr unsigned long long idOf(unsigned int number) {
    return Identifier::toValue(family, 0, 0, static_cast<unsigned short>(number));
}

std::string textOf(unsigned int number) {
    return "{\"MessageID\":" + std::to_string(idOf(number)) + '}';
}

/// Whatever its id.
class Plain : public Message {
public:
    using Message::Message;
};

TEST(FactoryThreads, RegisterCreateAndDeregisterAtOnce) {
    auto& factory = Message::MsgFactory::Instance();
    auto const before = factory.size();
    constexpr unsigned int shared = 100; // registered all the time
    constexpr unsigned int fought = 101; // registered and released by all threads
    Message::Registrar<Plain> const registrar(idOf(shared));
    ASSERT_TRUE(registrar.registered());
    std::atomic<int> holders = 0;
    std::atomic<int> won = 0;
    std::atomic<int> faults = 0;

    Testing::inThreads(threads, [&](unsigned int number) {
        auto const own = Testing::parsed(textOf(number));
        auto const common = Testing::parsed(textOf(shared));
        auto const expect = [&](bool held) { faults += held ? 0 : 1; };
        for (int round = 0; round < 500; ++round) {
            {
                Message::Registrar<Plain> const mine(idOf(number));
                expect(mine.registered());
                auto const message = Message::CreateFromMetaData(own);
                expect(message != nullptr && message->id() == idOf(number));
            }
            expect(Message::CreateFromMetaData(own) == nullptr);
            expect(Message::CreateFromMetaData(common) != nullptr);
            expect(factory.find(idOf(200 + number * 500 + static_cast<unsigned int>(round))) ==
                   nullptr);
            Message::Registrar<Plain> const one(idOf(fought));
            if (one.registered()) {
                expect(++holders == 1);
                ++won;
                --holders;
            }
            auto const size = factory.size();
            expect(size > before && size <= before + threads + 2);
            if (round % 50 == 0)
                expect(factory.entries().size() > before);
        }
    });
    EXPECT_EQ(faults, 0);
    EXPECT_GT(won, 0);
    EXPECT_EQ(factory.size(), before + 1);
}

TEST(FactoryThreads, ManyNewIdsAtOnce) {
    auto& factory = Message::MsgFactory::Instance();
    auto const before = factory.size();
    constexpr unsigned int each = 500; // together more than there are buckets
    std::atomic<int> faults = 0;
    Testing::inThreads(threads, [&](unsigned int number) {
        std::vector<std::unique_ptr<Message::Registrar<Plain>>> mine;
        for (unsigned int i = 0; i < each; ++i) {
            auto const id = 1000 + number * each + i;
            mine.push_back(std::make_unique<Message::Registrar<Plain>>(idOf(id)));
            if (!mine.back()->registered() ||
                Message::CreateFromMetaData(Testing::parsed(textOf(id))) == nullptr)
                ++faults;
        }
    });
    EXPECT_EQ(faults, 0);
    EXPECT_EQ(factory.size(), before);
}

TEST(FactoryThreads, AChildOfAForkFindsNothingLocked) {
    auto& factory = Message::MsgFactory::Instance();
    std::atomic<bool> isOver = false;
    std::atomic<int> failed = 0;
    Testing::inThreads(threads, [&](unsigned int number) {
        if (number != 0) { // never without one of the locks for long
            for (unsigned int i = 0; !isOver; ++i) {
                Message::Registrar<Plain> const mine(idOf(number));
                (void)factory.entries();
                MetaData::Key::intern("fork " + std::to_string(i % 5000 * threads + number));
            }
            return;
        }
        for (int i = 0; i < 100; ++i) {
            auto const child = fork();
            if (child == 0) {
                alarm(20); // ends a child that hangs
                Message::Registrar<Plain> const own(idOf(60'000));
                auto const& key = MetaData::Key::intern("of the child");
                _exit(own.registered() && !factory.entries().empty() && key.name() == key.text()
                          ? 0
                          : 1);
            }
            int status = -1;
            if (child < 0 || waitpid(child, &status, 0) != child || status != 0) {
                ++failed;
                break;
            }
        }
        isOver = true;
    });
    EXPECT_EQ(failed, 0);
}

TEST(FactoryThreads, ANullCreatorIsRefused) {
    auto& factory = Message::MsgFactory::Instance();
    auto const before = factory.size();
    EXPECT_FALSE(factory.registerMessage(idOf(1), nullptr, "none"));
    EXPECT_EQ(factory.size(), before);
    EXPECT_TRUE(Message::Registrar<Plain>(idOf(1)).registered()) << "the id is still free";
}

/// Number `I` of a family that no other test has touched.
class Family : public Message {
public:
    using Message::Message;
    static Identifier idBuilder(unsigned short type, unsigned short sub1, unsigned short sub2) {
        return Identifier::toValue(family, sub1, sub2, type);
    }
};

template <unsigned short... I>
std::array<Identifier const*, sizeof...(I)> idsOf(std::integer_sequence<unsigned short, I...>) {
    return {&SimpleMessageHelper<Family, I>::MsgID()...};
}

TEST(FactoryThreads, FirstCallsOfMsgIdGiveOneObject) {
    using Numbers = std::make_integer_sequence<unsigned short, 32>;
    std::array<decltype(idsOf(Numbers())), threads> seen{};
    Testing::inThreads(threads, [&](unsigned int number) { seen[number] = idsOf(Numbers()); });
    for (auto const& ids : seen)
        EXPECT_EQ(ids, seen[0]);
    for (unsigned int i = 0; i < seen[0].size(); ++i)
        EXPECT_EQ(*seen[0][i], idOf(i));
}

TEST(FactoryThreads, KeysOfTheSameTextAreOne) {
    constexpr std::size_t keys = 200;
    std::array<std::vector<MetaData::Key const*>, threads> seen;
    Testing::inThreads(threads, [&](unsigned int number) {
        for (std::size_t i = 0; i < keys; ++i) {
            auto const& key = MetaData::Key::intern("threads " + std::to_string(i));
            seen[number].push_back(&key);
            (void)key.name();
        }
    });
    for (auto const& found : seen)
        EXPECT_EQ(found, seen[0]);
}

} // namespace
} // namespace Tolv::Msgs
