#include <tolv/msgs/catalogue.h>

#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "support/captured_output.h"
#include "support/examples.h"
#include "support/golden.h"
#include "support/message_classes.h"
#include "support/messages.h"

// What each message class makes of its golden file, a message with all fields set
// (tests/golden/<family>/<alias>.json). introspection_test.cpp checks the list of classes.
namespace Tolv::Msgs {
namespace {

using MetaData::Element;
using namespace Tolv::Testing;

// ---- Ids and names, besides golden/catalogue.txt ------------------------------------------------

TEST(Catalogue, HasNothingElse) {
    for (unsigned long long const id : {
             0x0000000000000000ULL, 0x0000000000000001ULL, // no family
             0x0001000000000000ULL, 0x0001000000000003ULL, 0x000100000000FFFFULL,
             0x0002000000000007ULL, // sub2 is missing
             0x0002000000010001ULL, 0x0002000000010006ULL, 0x0002000000010008ULL,
             0x000200000001FFFFULL, 0x0002000100010007ULL, // sub1 is not ignored
             0x000300000000001DULL, 0x0003000000000FFFULL, // 29 to 4095
             0x0003000000002000ULL, 0x0003000000003000ULL, 0x000300000000A000ULL,
             0x000300000000FFFFULL, 0x0003000100000001ULL, 0x0005000000000000ULL,
             0x0005000000000002ULL, 0x000500000000FFFFULL, 0x0006000000000001ULL,
             0x0006000000000008ULL, // there is no 1
             0x0007000000010005ULL, 0x0007000000020005ULL, 0x0007000000030008ULL,
             0x0007000000000001ULL, 0x0007000000040001ULL, // no such category
             0x0007000100010001ULL, 0x0008000000000001ULL, // no family 8
             0x0009000000000001ULL,                        // sub1 is missing
             0x0009000100000000ULL, 0x000900010000000BULL, 0x000900010000FFFFULL,
             0x0009000100010001ULL, 0x0004000100000000ULL, 0x0004000100000015ULL,
             0x0004000100000018ULL, 0x000400010000001AULL, // no batch
             0x1007000000010001ULL, 0xFFFFFFFFFFFFFFFFULL,
         }) {
        SCOPED_TRACE(id);
        EXPECT_EQ(Message::CreateFromMetaData(parsed(messageText(id, "{}"))), nullptr);
        EXPECT_EQ(findMessage(id), nullptr);
    }
}

TEST(Catalogue, IsSearchedByName) {
    struct Lookup {
        char const* alias;
        unsigned long long id; ///< 0: nothing is found
    };
    for (auto const& [alias, id] : {
             Lookup{"App::ConnectMessage", 0x0003000000000001},
             Lookup{"ConnectMessage", 0x0003000000000001},
             Lookup{"Communications::Forwarder::AllServicesMessage", 0x0009000100000004},
             Lookup{"AllServicesMessage", 0x0009000100000004},
             Lookup{"Forwarder::AllServicesMessage", 0}, // half a family
             Lookup{"Errs::ConnectMessage", 0},          // of another family
             Lookup{"Connect", 0},                       // the beginning of one
             Lookup{"connectMessage", 0},                // case counts
             Lookup{"App::", 0},
             Lookup{"", 0},
         }) {
        auto const* const found = findMessage(alias);
        EXPECT_EQ(found != nullptr ? found->id : 0, id) << alias;
    }
}

// ---- What requires the class of a message to be known -----------------------------------------

/// All fields of a record are set; `record` names it in a failure.
void expectAllSet(MetaData::MirroredObject const& object, char const* record) {
    for (auto const* const field : object.members())
        EXPECT_TRUE(field->initialized()) << record << ": " << field->name();
}

template <class M>
void expectOfClass(Message const& message, std::string const& text) {
    ASSERT_EQ(typeid(message), typeid(M));
    auto const& typed = dynamic_cast<M const&>(message);
    expectAllSet(typed, "message");
    if constexpr (requires { typed.payload(); }) {
        auto const& payload = typed.payload();
        if constexpr (requires { payload.members(); })
            expectAllSet(payload, "payload");
        if constexpr (requires { payload.metaData(); })
            expectAllSet(payload.metaData(), "metadata");
    }
    M const copy(typed);
    EXPECT_EQ(written(copy), text) << "copied";
    M assigned;
    assigned = copy;
    EXPECT_EQ(written(assigned), text) << "assigned";
    readInto(assigned, written(M()));
    EXPECT_EQ(written(assigned), written(M())) << "read over what was there";
    assigned = copy;
    assigned = M();
    EXPECT_EQ(written(assigned), written(M())) << "a new one assigned";
    EXPECT_EQ(written(typed), text) << "the source of the copies";
}

using ExpectOfClass = void (*)(Message const&, std::string const&);
using ByClass = std::map<unsigned long long, ExpectOfClass>;

ByClass byClass() {
    ByClass all;
    forEachMessageClass(
        [&]<class M>(std::type_identity<M>) { all.emplace(M::MsgID(), expectOfClass<M>); });
    return all;
}

// ---- Golden files ------------------------------------------------------------------------------

unsigned long long idOf(Element const& message) {
    unsigned long long id = 0;
    MetaData::GetAs(message["MessageID"], id);
    return id;
}

/// A golden file proves something only if each of its values differs from that of a new message.
/// The entries of a list differ from each other instead.
class Differences {
public:
    /// `message` against a new message of its class.
    static void expectInMessage(Element const& message) {
        auto const* const row = findMessage(idOf(message));
        ASSERT_NE(row, nullptr) << textOf(message);
        auto const fresh = parsed(written(*row->make()));
        if (auto const* const data = fresh.find("Data"))
            expectInObject(message["Data"], *data, std::string(row->alias));
    }

private:
    static void expectInObject(Element const& full, Element const& fresh, std::string const& path) {
        for (auto const& member : fresh.object())
            EXPECT_NE(full.find(member.key()), nullptr) << path << " lacks " << member.key();
        for (auto const& member : full.object())
            expect(member.value, fresh.find(member.key()), path + '.' + std::string(member.key()));
    }

    static void expect(Element const& full, Element const* fresh, std::string const& path) {
        if (full.isArray()) {
            EXPECT_NE(full.array().size(), 0U) << path;
            expectInList(full.array(), path);
        }
        if (fresh == nullptr) {
            if (full.find("MessageID") != nullptr)
                expectInMessage(full);
        } else if (full.isObject() && fresh->isObject() && full.find("base64") == nullptr) {
            expectInObject(full, *fresh, path);
        } else {
            EXPECT_FALSE(full == *fresh) << path << " is " << textOf(full) << " before, too";
        }
    }

    static void expectInList(MetaData::Array const& list, std::string const& path) {
        Element const* before = nullptr;
        for (auto const& entry : list) {
            if (entry.find("MessageID") != nullptr) {
                expectInMessage(entry);
            } else if (before !=
                       nullptr) { // called both ways, so that each has all keys of the other
                expect(entry, before, path);
                expect(*before, &entry, path);
            }
            before = &entry;
        }
    }
};

TEST(Golden, OneFileAClass) {
    std::set<std::string> files;
    for (auto const& entry : std::filesystem::recursive_directory_iterator(goldenFolder))
        if (entry.path().extension() == ".json")
            files.insert(entry.path().lexically_relative(goldenFolder).string());
    std::set<std::string> expected;
    for (auto const& row : catalogue())
        expected.insert(pathOf(row).string());
    EXPECT_EQ(files, expected);
}

TEST(Golden, DiffersFromANewMessageInEveryKey) {
    for (auto const& row : catalogue()) {
        SCOPED_TRACE(row.fullAlias());
        auto const full = goldenOf(row);
        ASSERT_TRUE(full.isObject());
        EXPECT_EQ(idOf(full), row.id);
        EXPECT_FALSE(full["Sender"] == full["Destination"]);
        EXPECT_EQ(full.find("Data") == nullptr, row.payload.empty());
        Differences::expectInMessage(full);
        EXPECT_EQ(findMessage(row.id), &row);
        EXPECT_EQ(findMessage(row.fullAlias()), &row);
        EXPECT_FALSE(row.role.empty());
    }
}

// The order of the keys is that of the file too: two fields of the same type with swapped keys show
// there.
TEST(Golden, ReadIsWrittenAgain) {
    auto const expectations = byClass();
    ASSERT_EQ(expectations.size(), catalogue().size());
    for (auto const& row : catalogue()) {
        SCOPED_TRACE(row.fullAlias());
        auto const text = textOf(goldenOf(row));
        CapturedOutput const output;
        auto const message = received(text);
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(written(*message), text);
        expectations.at(row.id)(*message, text);
        EXPECT_EQ(output.text(), "");
    }
}

} // namespace
} // namespace Tolv::Msgs
