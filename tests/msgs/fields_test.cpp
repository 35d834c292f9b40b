#include <algorithm>
#include <concepts>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/msgs/introspection/description.h>

#include "support/captured_output.h"
#include "support/golden.h"
#include "support/message_classes.h"
#include "support/messages.h"

// What a message of each class makes of a golden file in which one value is missing or of a kind
// that no field accepts, and whether its records compare all of their fields.
namespace Tolv::Msgs {
namespace {

using Introspection::FieldDescription;
using Introspection::Type;
using Introspection::TypeKind;
using MetaData::Element;
using namespace Testing;

/// A key of a record, with the path to it from the message.
using Path = std::vector<std::string>;

Element const* at(Element const& tree, Path const& path) {
    auto const* found = &tree;
    for (auto key = path.begin(); found != nullptr && key != path.end(); ++key)
        found = found->find(*key);
    return found;
}

/// `tree` with `value` at that path; null removes the key.
Element with(Element tree, Path const& path, Element const* value) {
    auto* parent = &tree;
    for (std::size_t i = 0; i + 1 < path.size(); ++i)
        parent = &(*parent)[path[i]];
    if (value != nullptr)
        (*parent)[path.back()] = *value;
    else
        parent->makeObject(0).erase(path.back());
    return tree;
}

class BadValues {
public:
    explicit BadValues(MessageDescription const& row)
        : row_(row), full_(goldenOf(row)), fresh_(parsed(written(*row.make()))) {}

    void expect() {
        auto const fields = Introspection::describe(row_.id)->fields;
        auto const* const data = Introspection::findField(fields, "Data");
        if (data == nullptr) {
            auto const given = parsed(R"({"nobody":"reads it"})");
            expectRead(with(full_, {"Data"}, &given), full_, "");
            return;
        }
        expectPayload(*data->type);
        expectRecord({"Data"}, *data->type);
    }

    std::size_t checked = 0;

private:
    static constexpr auto noArray =
        "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n";

    /// A payload that is not an object: each field of the record is reset, unless a list among them
    /// requires an object.
    void expectPayload(Type const& type) {
        auto const fields = type.fields();
        auto const whole =
            type.strict || std::any_of(fields.begin(), fields.end(), isReflectedList);
        Element rest;
        rest.makeObject(0);
        for (auto const& field : fields)
            if (isChecked(field))
                rest[field.key] = *field.defaultValue;
        for (auto const* const text : {"3", "[]", "null", R"("text")"}) {
            auto const value = parsed(text);
            expectRead(with(full_, {"Data"}, &value),
                       with(full_, {"Data"}, whole ? nullptr : &rest), "");
        }
        expectRead(with(full_, {"Data"}, nullptr), with(full_, {"Data"}, nullptr), "");
    }

    void expectRecord(Path const& path, Type const& type) {
        for (auto const& field : type.fields()) {
            auto inside = path;
            inside.push_back(field.key);
            // The whole record is reset where it says so, otherwise only the field; a field that
            // checks a value before accepting it keeps its value.
            auto const without = with(full_, type.strict ? path : inside,
                                      isChecked(field) ? at(fresh_, inside) : nullptr);
            expectRead(with(full_, inside, nullptr), without, "");
            if (field.type->kind == TypeKind::record) {
                expectRecord(inside, *field.type);
                continue; // its fields accept that there is no object
            }
            // An encoded list throws through its record; any other keeps its content.
            auto const encodable = field.type->encodedTag != 0;
            auto const kept = isReflectedList(field) && !encodable && !type.strict;
            for (auto const* const bad : {"null", "{}"}) {
                auto const value = parsed(bad);
                auto const expected = encodable ? with(full_, path, nullptr)
                                      : kept    ? with(full_, inside, at(fresh_, inside))
                                                : without;
                expectRead(with(full_, inside, &value), expected, kept ? noArray : "");
            }
        }
    }

    void expectRead(Element const& tree, Element const& expected, std::string const& line) {
        ++checked;
        CapturedOutput const output;
        auto const text = textOf(tree);
        auto const message = received(text);
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(written(*message), textOf(expected)) << text;
        EXPECT_EQ(output.text(), line) << text;
    }

    static bool isChecked(FieldDescription const& field) {
        return field.closed && field.type->kind == TypeKind::integer;
    }

    /// A `ReflectorArray`; not a list of messages of any class, whose conversion is hand-written,
    /// nor a list of numbers without an encoded form, which is a single value.
    static bool isReflectedList(FieldDescription const& field) {
        auto const& type = *field.type;
        return type.kind == TypeKind::list &&
               (type.element->kind != TypeKind::message || type.element->messageId) &&
               (type.element->kind != TypeKind::integer || type.encodedTag != 0);
    }

    MessageDescription const& row_;
    Element full_;
    Element fresh_;
};

TEST(Fields, ReadAlone) {
    std::size_t checked = 0;
    for (auto const& row : catalogue()) {
        SCOPED_TRACE(row.fullAlias());
        BadValues values(row);
        values.expect();
        checked += values.checked;
    }
    EXPECT_GT(checked, 1500U);
}

/// Each single value of `full`, put into a new message, makes its payload unequal.
template <class M>
void expectAllCount(Element const& full, Path const& path) {
    for (auto const& member : at(full, path)->object()) {
        auto inside = path;
        inside.emplace_back(member.key());
        if (member.value.isObject()) {
            expectAllCount<M>(full, inside);
            continue;
        }
        M const fresh;
        M changed;
        readInto(changed, textOf(with(parsed(written(fresh)), inside, &member.value)));
        EXPECT_FALSE(changed.payload() == fresh.payload()) << written(changed);
        EXPECT_TRUE(changed.payload() == M(changed).payload()) << written(changed);
    }
}

TEST(Fields, AllCountInComparison) {
    std::size_t compared = 0;
    forEachMessageClass([&]<class M>(std::type_identity<M>) {
        if constexpr (requires(M const& m) { m.payload() == m.payload(); }) {
            ++compared;
            expectAllCount<M>(goldenOf(*findMessage(M::MsgID())), {"Data"});
        }
    });
    EXPECT_EQ(compared, 5U);
}

} // namespace
} // namespace Tolv::Msgs
