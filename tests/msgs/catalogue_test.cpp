#include <tolv/msgs/catalogue.h>

#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "support/captured_output.h"
#include "support/examples.h"
#include "support/golden.h"
#include "support/message_classes.h"
#include "support/messages.h"

// All message classes of the library: which ids there are, and what each class makes of its golden
// file, one message with all fields set (tests/golden/<family>/<alias>.json).
namespace Tolv::Msgs {
namespace {

using MetaData::Element;
using namespace Tolv::Testing;

// ---- Ids -------------------------------------------------------------------------------------

TEST(Catalogue, HasTheseIds) {
    struct Family {
        char const* name;
        std::size_t size;
        unsigned long long prefix;
        std::vector<unsigned short> types;
    };
    std::vector<Family> const families = {
        {"Sys", 2, 0x0001000000000000, {1, 2}},
        {"Engine", 1, 0x0002000000010000, {7}},
        {"App", 35, 0x0003000000000000, {1,  2,    3,     4,     5,     6,     7,     8,    9,
                                         10, 11,   12,    13,    14,    15,    16,    17,   18,
                                         19, 20,   21,    22,    23,    24,    25,    26,   27,
                                         28, 4096, 16384, 20480, 24576, 28672, 32768, 36864}},
        {"Attrs", 50, 0x0004000000000000, {1,  2,  3,  4,  6,  7,  8,  9,  10, 11, 12, 13, 14,
                                           16, 17, 18, 19, 20, 21, 23, 24, 25, 26, 27, 28, 29,
                                           30, 31, 32, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42,
                                           43, 45, 47, 48, 49, 50, 52, 53, 54, 55, 56}},
        {"Attrs", 23, 0x0004000100000000, {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12,
                                           13, 14, 15, 16, 17, 18, 19, 20, 22, 23, 25}},
        {"Errs", 1, 0x0005000000000000, {1}},
        {"Excepts", 6, 0x0006000000000000, {2, 3, 4, 5, 6, 7}},
        {"Notifs", 4, 0x0007000000010000, {1, 2, 3, 4}},
        {"Notifs", 4, 0x0007000000020000, {1, 2, 3, 4}},
        {"Notifs", 7, 0x0007000000030000, {1, 2, 3, 4, 5, 6, 7}},
        {"Communications::Forwarder", 10, 0x0009000100000000, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
    };
    std::vector<std::pair<unsigned long long, std::string>> expected;
    for (auto const& family : families) {
        EXPECT_EQ(family.types.size(), family.size) << family.name;
        for (auto const type : family.types)
            expected.emplace_back(family.prefix | type, family.name);
    }
    std::vector<std::pair<unsigned long long, std::string>> found;
    for (auto const& row : catalogue())
        found.emplace_back(row.id, row.family);
    EXPECT_EQ(found, expected);
    EXPECT_EQ(found.size(), 143U);
}

// ---- What can be asked of a message only when its class is known ------------------------------

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

/// A golden file is worth something only where it differs from a message as it is built: in each
/// value. The entries of a list differ from one another instead.
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
            } else if (before != nullptr) { // either way: each has all keys of the other
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
    }
}

// Also the order of the keys is that of the file: two fields that took each other's keys show
// there, when they have one type.
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
