#include <algorithm>
#include <iostream>
#include <map>
#include <memory>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include <tolv/core/metadata/read_report.h>

#include "../fuzz/message_checks.h"
#include "../fuzz/tree_mutations.h"
#include "support/counters.h"
#include "support/examples.h"
#include "support/message_classes.h"
#include "support/messages.h"

namespace Tolv::Msgs {
namespace {

using MetaData::Element;
using namespace Testing;

/// Discards output during its lifetime, without allocations.
class Silence {
public:
    Silence() : before_(std::cout.rdbuf(nullptr)) {}
    Silence(Silence const&) = delete;
    Silence& operator=(Silence const&) = delete;
    ~Silence() { std::cout.rdbuf(before_); }

private:
    std::streambuf* before_;
};

// Each value of each golden file in turn is removed, and replaced by a fifth of the strange values,
// not the same fifth as its neighbour. Then the message is read, written, and read back the same
// (see checkMessage, which aborts).
TEST(HostileMessages, EveryFieldInTurn) {
    Silence const silence;
    std::size_t checked = 0;
    for (auto const& example : examples()) {
        auto root = example;
        auto const count = Fuzzing::placesIn(root).size();
        for (std::size_t i = 0; i < count; ++i) {
            auto lacking = example;
            Fuzzing::placesIn(lacking)[i].remove();
            Fuzzing::checkMessage(lacking);
            auto const places = Fuzzing::placesIn(root);
            auto& value = places[i].value();
            auto const before = value;
            auto const& strange = Fuzzing::strangeValues();
            for (auto at = i % 5; at < strange.size(); at += 5, ++checked) {
                value = strange[at];
                Fuzzing::checkMessage(root);
            }
            value = before;
        }
    }
    EXPECT_GT(checked, 20'000U);
}

// The memory of a message per byte of its text, for the most expensive lists, and that of a report
// on how it was read.
TEST(HostileMessages, MemoryOfAList) {
    Silence const silence;
    double most = 0;
    double mostReported = 0;
    std::string where;
    for (auto const& example : examples()) {
        auto root = example;
        auto const count = Fuzzing::placesIn(root).size();
        for (std::size_t i = 0; i < count; ++i) {
            auto const places = Fuzzing::placesIn(root);
            auto& value = places[i].value();
            if (!value.isArray())
                continue;
            auto const before = value;
            for (auto const* const entry : {"{}", "[]", "0", R"("")", "false"}) {
                value = Element(MetaData::Array());
                MetaData::Array& list = value;
                for (int entries = 0; entries < 500; ++entries)
                    list.push_back(parsed(entry));
                auto const text = textOf(root);
                auto const perByte = [&](std::ptrdiff_t bytes) {
                    return static_cast<double>(bytes) / static_cast<double>(text.size());
                };
                auto const counted = std::make_unique<Counted>();
                Message::CreateFromMetaData(root);
                if (perByte(counted->peakBytes()) > most) {
                    most = perByte(counted->peakBytes());
                    where = textOf(example).substr(0, 40) + " with " + entry;
                }
                Counted const again;
                MetaData::ReadReport const report;
                Message::CreateFromMetaData(root);
                mostReported = std::max(mostReported, perByte(again.bytes()));
            }
            value = before;
        }
    }
    std::cerr << "most bytes of memory for a byte of text: " << most << ": " << where
              << ", of a report: " << mostReported << '\n';
    EXPECT_LT(most, 500) << where;
    EXPECT_LE(mostReported, 64);
}

// ---- Allocations that fail ---------------------------------------------------------------------

/// Runs `action` with one failing allocation. @return whether that allocation was reached
template <class Action>
bool withFailure(std::size_t number, Action const& action) {
    FailingAllocation const failing(number);
    try {
        action();
    } catch (std::bad_alloc const&) {
    } catch (Exception::Base const&) { // wrapped in another exception
    }
    return FailingAllocation::happened();
}

/// Runs `action` repeatedly, each time with another failing allocation, until none fails; returns
/// how many failed. Nothing may leak except what is created once per process, such as the names of
/// keys: so each failure is tried twice, and the second one is checked.
template <class Action>
std::size_t withEachFailure(Action const& action) {
    for (std::size_t number = 0;; ++number) {
        withFailure(number, action);
        Counted const counted;
        auto const happened = withFailure(number, action);
        EXPECT_EQ(counted.blocks(), 0) << "allocation " << number;
        if (!happened || ::testing::Test::HasFailure())
            return number;
    }
}

/// The operations that require the class of a message.
struct ByClass {
    std::unique_ptr<Message> (*copy)(Message const&);
    void (*assign)(Message& target, Message const& source);
};

std::map<unsigned long long, ByClass> byClass() {
    std::map<unsigned long long, ByClass> all;
    forEachMessageClass([&]<class M>(std::type_identity<M>) {
        all[M::MsgID()] = {
            [](Message const& message) -> std::unique_ptr<Message> {
                return std::make_unique<M>(static_cast<M const&>(message));
            },
            [](Message& target, Message const& source) {
                static_cast<M&>(target) = static_cast<M const&>(source);
            },
        };
    });
    return all;
}

/// The same for an action on an existing message, which must stay usable.
template <class Action>
void withEachFailureOn(Message const& original, ByClass const& its, Action const& action) {
    auto const text = written(original);
    auto const& row = *findMessage(original.id());
    auto happened = true;
    for (std::size_t number = 0; happened && !::testing::Test::HasFailure(); ++number) {
        Counted const counted;
        {
            auto const message = row.make();
            {
                FailingAllocation const failing(number);
                try {
                    action(*message);
                } catch (std::bad_alloc const&) {
                } catch (Exception::Base const&) {
                }
                happened = FailingAllocation::happened();
            }
            (void)written(*message);
            its.assign(*message, original);
            EXPECT_EQ(written(*message), text) << "allocation " << number;
        }
        EXPECT_EQ(counted.blocks(), 0) << "allocation " << number;
    }
}

TEST(AllocationFailures, OfEveryClass) {
    Silence const silence;
    auto const classes = byClass();
    std::size_t failures = 0;
    for (auto const& tree : examples()) {
        auto const text = textOf(tree);
        SCOPED_TRACE(text.substr(0, 60));
        auto const original = received(text);
        ASSERT_NE(original, nullptr);
        auto const& its = classes.at(original->id());
        auto const& row = *findMessage(original->id());
        (void)written(*its.copy(*original)); // creates what exists once per process

        failures += withEachFailure([&] { (void)row.make(); });
        failures += withEachFailure([&] { (void)its.copy(*original); });
        failures += withEachFailure([&] { (void)written(*original); });
        failures += withEachFailure([&] {
            auto const message = received(text);
            if (message != nullptr)
                (void)written(*message);
        });
        withEachFailureOn(*original, its,
                          [&](Message& message) { its.assign(message, *original); });
        withEachFailureOn(*original, its,
                          [&](Message& message) { message.copyFromMetaData(tree); });
        EXPECT_EQ(written(*original), text);
        if (HasFailure())
            break;
    }
    EXPECT_EQ(classes.size(), examples().size());
    EXPECT_GT(failures, 5'000U);
}

} // namespace
} // namespace Tolv::Msgs
