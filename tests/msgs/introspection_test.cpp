#include <tolv/msgs/introspection/description.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/messages.h>
#include <tolv/msgs/introspection/types.h>

#include "support/golden.h"
#include "support/messages.h"

namespace Tolv::Msgs::Introspection {
namespace {

using MetaData::Element;
using namespace Tolv::Testing;
using namespace std::string_literals;

// ---- All classes, against what the classes themselves write and read ---------------------------

using Visit = std::function<void(std::string const& path, FieldDescription const& field)>;

void forEach(std::vector<FieldDescription> const& fields, std::string const& path,
             Visit const& visit) {
    for (auto const& field : fields) {
        auto const here = path.empty() ? field.key : path + '.' + field.key;
        visit(here, field);
        auto const* type = field.type;
        while (type != nullptr && type->element != nullptr)
            type = type->element;
        if (type != nullptr)
            forEach(type->fields(), here, visit);
    }
}

TEST(Introspection, KnowsEveryFieldOfEveryClass) {
    std::size_t fields = 0;
    for (auto const& row : catalogue()) {
        auto const message = describe(row.id);
        ASSERT_TRUE(message) << row.fullAlias();
        EXPECT_EQ(message->alias, row.fullAlias());
        EXPECT_EQ(message->payload().empty(), row.payload.empty());
        forEach(message->fields, row.fullAlias(), [&](auto const& path, auto const& field) {
            ++fields;
            ASSERT_NE(field.type, nullptr) << path;
            auto const& type = *field.type;
            EXPECT_FALSE(type.name.empty()) << path;
            EXPECT_EQ(type.kind == TypeKind::list || type.kind == TypeKind::pair,
                      type.element != nullptr)
                << path;
            EXPECT_EQ(type.kind == TypeKind::record, !type.fields().empty()) << path;
            EXPECT_EQ(type.kind == TypeKind::message, type.admits != nullptr) << path;
            EXPECT_EQ(type.kind == TypeKind::word, !type.literals.empty()) << path;
            for (auto const* foreign : {"Tolv::", "__cxx11", "allocator"})
                EXPECT_EQ(type.name.find(foreign), std::string::npos) << path << ' ' << type.name;
        });
    }
    EXPECT_GT(fields, 1000U);
}

/// What a message writes as it is built is what the description says, key by key and in order.
void expectDefaults(std::vector<FieldDescription> const& fields, Element const& written,
                    std::string const& path) {
    std::vector<std::string> keys;
    for (auto const& field : fields) {
        auto const* const value = written.find(field.key);
        ASSERT_EQ(field.defaultValue.has_value(), value != nullptr) << path << '.' << field.key;
        EXPECT_TRUE(value != nullptr || !field.required) << path << '.' << field.key;
        if (value == nullptr)
            continue;
        keys.push_back(field.key);
        EXPECT_TRUE(*field.defaultValue == *value) << path << '.' << field.key;
        if (field.type->kind == TypeKind::record)
            expectDefaults(field.type->fields(), *value, path + '.' + field.key);
    }
    std::vector<std::string> inOrder;
    for (auto const& member : written.object())
        inOrder.emplace_back(member.key());
    EXPECT_EQ(keys, inOrder) << path;
}

TEST(Introspection, DefaultsAreWhatAMessageWritesAsItIsBuilt) {
    for (auto const& row : catalogue()) {
        auto fields = describe(row.id)->fields;
        for (auto& field : fields) // where the address is required, only the sender knows it
            field.required = field.required && field.key != "Destination";
        expectDefaults(fields, parsed(written(*row.make())), row.fullAlias());
    }
}

/// The value is one that the type takes.
void expectFits(Element const& value, FieldDescription const* field, Type const& type,
                std::string const& path);

void expectObjectFits(Element const& tree, std::vector<FieldDescription> const& fields,
                      std::string const& path) {
    ASSERT_TRUE(tree.isObject()) << path;
    for (auto const& member : tree.object()) {
        auto const here = path + '.' + std::string(member.key());
        auto const* const field = findField(fields, member.key());
        ASSERT_NE(field, nullptr) << here;
        expectFits(member.value, field, *field->type, here);
    }
}

void expectFits(Element const& value, FieldDescription const* field, Type const& type,
                std::string const& path) {
    switch (type.kind) {
    case TypeKind::boolean:
        EXPECT_TRUE(value.isBoolean()) << path;
        break;
    case TypeKind::integer:
        EXPECT_TRUE(value.isUnsigned() ? value.unsignedNumber() <= type.maximum
                                       : value.isSigned() && value.signedNumber() >= type.minimum)
            << path << ' ' << textOf(value);
        break;
    case TypeKind::number:
        EXPECT_TRUE(value.isFloating() || value.isSigned() || value.isUnsigned()) << path;
        break;
    case TypeKind::word:
        EXPECT_TRUE(std::any_of(
            type.literals.begin(), type.literals.end(),
            [&](auto const& one) { return value.isString() && one.word == value.text(); }))
            << path << ' ' << textOf(value);
        [[fallthrough]];
    case TypeKind::text:
        EXPECT_TRUE(value.isString()) << path;
        break;
    case TypeKind::pair:
        ASSERT_TRUE(value.isArray() && value.array().size() == 2) << path;
        for (auto const& part : value.array())
            expectFits(part, nullptr, *type.element, path);
        break;
    case TypeKind::list:
        if (value.isObject()) {
            ASSERT_NE(type.encodedTag, 0U) << path;
            EXPECT_EQ(MetaData::GetAs<unsigned int>(value["type"]), type.encodedTag) << path;
            break;
        }
        ASSERT_TRUE(value.isArray()) << path;
        for (auto const& entry : value.array())
            expectFits(entry, field, *type.element, path + "[]");
        break;
    case TypeKind::record:
        expectObjectFits(value, type.fields(), path);
        break;
    case TypeKind::message: {
        unsigned long long id = 0;
        MetaData::GetAs(value["MessageID"], id);
        EXPECT_TRUE(type.admits(*findMessage(id)->make())) << path;
        EXPECT_EQ(type.messageId.value_or(id), id) << path;
        expectObjectFits(value, describe(id)->fields, path);
        break;
    }
    }
}

TEST(Introspection, KnowsEveryKeyOfTheGoldenFiles) {
    for (auto const& row : catalogue())
        expectObjectFits(goldenOf(row), describe(row.id)->fields, row.fullAlias());
}

// ---- Single fields -----------------------------------------------------------------------------

/// "type; required; default; unit; literals" of the field at `path`, lists left out.
std::string told(unsigned long long id, std::string const& path) {
    auto result = "no such field"s;
    forEach(describe(id)->fields, "", [&](auto const& here, FieldDescription const& field) {
        if (here != path)
            return;
        result = field.type->name + (field.required ? "; required" : "; optional");
        if (field.defaultValue)
            result += "; " + textOf(*field.defaultValue);
        if (field.type->encodedTag != 0)
            result += "; base64 " + std::to_string(field.type->encodedTag);
        if (!field.unit.empty())
            result += "; " + field.unit;
        if (!field.literals.empty())
            result += (field.closed ? "; one of " : "; as ") + field.literals.front().word +
                      " to " + field.literals.back().word + '=' +
                      std::to_string(field.literals.back().value);
    });
    return result;
}

TEST(Introspection, TellsOfAField) {
    using namespace Attrs;
    struct Case {
        unsigned long long id;
        char const* path;
        char const* expected;
        char const* why;
    };
    for (auto const& [id, path, expected, why] : std::vector<Case>{
             {DeregisterMessage::MsgID(), "Destination", "std::vector<std::string>; required",
              "a required address, which has no default"},
             {LongMessage::MsgID(), "Destination", "std::vector<std::string>; optional", "usual"},
             {LongMessage::MsgID(), "MessageID", "Identifier; required; 1125899906842625", "own"},
             {App::ConnectMessage::MsgID(), "Data.MaxVersion", "int; required; 1", "plain"},
             {App::PingAnswerMessage::MsgID(), "Data.MaxVersion", "unsigned int; required; 0",
              "written by hand"},
             {TriggerPulseOffsetMessage::MsgID(), "Data.offset", "double; required; 0.0; ms",
              "with a unit"},
             {TriggerRouteMessage::MsgID(), "Data.output",
              R"(std::string; required; "unknown"; as trig0 to exttrig=18)", "words, but any text"},
             {FruMessage::MsgID(), "Data.slot",
              R"(Structs::Slot; required; "esm"; one of esm to ipass=254)", "an enumeration"},
             {FruMessage::MsgID(), "Data.deviceId", "unsigned char; required; 0", "a byte"},
             {SelftestMessage::MsgID(), "Data.state",
              "int; required; 3; one of passed to not run=3", "checked by a function"},
             {DoubleTraceMessage::MsgID(), "Data.trace",
              R"(std::vector<double>; required; {"type":3,"len":0}; base64 3)", "encoded"},
             {ComplexMessage::MsgID(), "Data.AttributeMetaData.Minimum",
              "std::complex<double>; optional", "nested and left out"},
             {PcieDomainMessage::MsgID(), "Data.endpoints.deviceId", "unsigned char; required; 1",
              "in a list of records"},
             {Communications::Forwarder::ServiceAddedMessage::MsgID(), "Data.MsgKey.Sender",
              "std::vector<std::string>; optional; []", "a record without default constructor"},
             {EnumBatchMessage::MsgID(), "Data.Messages",
              "std::vector<Attrs::EnumMessage>; required; []", "messages of one class"},
             {AttrListMessage::MsgID(), "Data.Attributes",
              "std::vector<Attrs::AttrMessage>; required; []", "messages of a family"},
             {App::RestartAppResultMessage::MsgID(), "Data.Error", "Errs::ErrorMessage; optional",
              "a message inside"},
             {Engine::TransitionMessage::MsgID(), "Data.param",
              "std::vector<Message>; required; []", "any messages"},
         })
        EXPECT_EQ(told(id, path), expected) << why;
}

// ---- Classes that are not of this library
// --------------------------------------------------------

class Probe : public MirroredObject {
public:
    Reflector<int> depth{this, "depth"_key, Required, 7};

    Probe() = default;
    Probe(Probe const& other) : Probe() { *this = other; }
    Probe& operator=(Probe const&) = default;
};

using ProbeMessage = PayloadMessageHelper<Attrs::AttrMessage, Probe, 60000>;

TEST(Introspection, KnowsClassesOfOthers) {
    EXPECT_FALSE(describe(ProbeMessage::MsgID())) << "not registered";
    Message::Registrar<ProbeMessage> const registrar(ProbeMessage::MsgID());
    auto const* const unknown = findField(describe(ProbeMessage::MsgID())->fields, "Data");
    ASSERT_NE(unknown, nullptr);
    add<Probe>();
    EXPECT_EQ(told(ProbeMessage::MsgID(), "Data.depth"), "int; required; 7");
}

} // namespace
} // namespace Tolv::Msgs::Introspection
