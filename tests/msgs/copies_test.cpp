#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/captured_output.h"
#include "support/golden.h"
#include "support/message_classes.h"
#include "support/messages.h"

// The copies that the compiler makes of the records of all classes, beside default construction
// followed by assignment.
namespace Tolv::Msgs {
namespace {

using MetaData::Element;
using MetaData::MirroredObject;
using MetaData::ReflectorBase;
using namespace Testing;

/// What a record writes, and the state of each of its fields.
std::string told(MirroredObject const& record) {
    auto text = written(record);
    for (auto const* const field : record.members()) {
        text += field->initialized() ? " +" : " -";
        text += field->isRequired() ? "!" : "?";
        EXPECT_TRUE(field->isOwnedBy(record)) << field->name();
    }
    return text;
}

/// Takes keys out of the objects of `tree`, here and there.
void thinOut(Element& tree, std::mt19937& random) {
    if (tree.isArray()) {
        for (unsigned int i = 0; i < tree.array().size(); ++i)
            thinOut(static_cast<MetaData::Array&>(tree)[i], random);
    } else if (tree.isObject()) {
        std::vector<std::string> keys;
        for (auto const& member : tree.object())
            keys.emplace_back(member.key());
        for (auto const& key : keys) {
            if (random() % 6 == 0)
                tree.makeObject(0).erase(key);
            else
                thinOut(tree[key], random);
        }
    }
}

template <class Payload>
void expectCopies(Payload const& source) {
    std::optional<Payload> copy;
    try {
        copy.emplace(source);
    } catch (Exception::InvalidOperation const&) {
        return; // some classes refuse to be copied without a certain field
    }
    auto assigned = MetaData::DefaultOf<Payload>::make();
    assigned = source;
    if constexpr (requires { Payload::valMirrorName; })
        if (!source.value.initialized()) // a copy constructor with a rule of its own
            assigned.value.uninit();
    EXPECT_EQ(told(*copy), told(assigned));
    Payload const moved(std::move(*copy));
    EXPECT_EQ(told(moved), told(assigned));
    *copy = source; // a record that was moved from can still be assigned to
    copy.reset();
    EXPECT_EQ(told(moved), told(assigned));
}

TEST(Copies, OfEachPayloadAreWhatAssignmentMakes) {
    std::mt19937 random(18); // NOLINT(cert-msc51-cpp): the same trees each time
    int checked = 0;
    forEachMessageClass([&]<class M>(std::type_identity<M>) {
        if constexpr (requires(M message) { message.payload(); }) {
            using Payload = std::remove_cvref_t<decltype(std::declval<M const&>().payload())>;
            if constexpr (std::derived_from<Payload, MirroredObject>) {
                SCOPED_TRACE(findMessage(M::MsgID())->fullAlias());
                auto const golden = goldenOf(*findMessage(M::MsgID()));
                for (int round = 0; round < 20; ++round) {
                    auto payload = MetaData::DefaultOf<Payload>::make();
                    auto tree = golden["Data"];
                    if (round > 0)
                        thinOut(tree, random);
                    CapturedOutput const lines; // of corrupt arrays
                    try {
                        payload.copyFromMetaData(tree);
                    } catch (Exception::Base const&) {
                        // an encoded array that lacks a key: the fields before it were read
                    }
                    for (auto const* const field : payload.members()) {
                        auto& state = const_cast<ReflectorBase&>(*field);
                        if (round > 10 && random() % 4 == 0)
                            state.uninit();
                        if (round > 10 && random() % 4 == 0)
                            state.makeRequired();
                    }
                    expectCopies(payload);
                    ++checked;
                }
            }
        }
    });
    EXPECT_GT(checked, 100 * 10);
}

} // namespace
} // namespace Tolv::Msgs
