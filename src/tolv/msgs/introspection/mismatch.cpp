#include <tolv/msgs/introspection/detail/mismatch.h>

#include <algorithm>
#include <cstdio>

#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/msgs/introspection/detail/encoded_count.h>

namespace Tolv::Msgs::Introspection::Detail {

using MetaData::Element;

namespace {

bool isNumber(Element const& value) {
    return value.isSigned() || value.isUnsigned() || value.isFloating();
}

/// The name of this type's values after "expected".
std::string expectation(FieldDescription const& field) {
    auto const& type = *field.type;
    switch (type.kind) {
    case TypeKind::boolean:
        return "a boolean";
    case TypeKind::integer:
        return "an integer from " + std::to_string(type.minimum) + " to " +
               std::to_string(type.maximum);
    case TypeKind::number:
        return "a number";
    case TypeKind::text:
    case TypeKind::word:
        return "a string";
    case TypeKind::pair:
        return std::string("an array of two ") +
               (type.element->kind == TypeKind::boolean ? "booleans" : "numbers");
    case TypeKind::list:
        return "an array";
    case TypeKind::record:
        return "an object";
    case TypeKind::message:
        return "a message";
    }
    return "something else";
}

FieldDescription fieldOf(Type const& type) {
    FieldDescription field;
    field.type = &type;
    if (type.kind == TypeKind::word) {
        field.literals = type.literals;
        field.closed = true;
    }
    return field;
}

template <class T>
bool converts(Element const& value) {
    T converted{};
    return TryGetAs(value, converted);
}

bool fitsInteger(Type const& type, Element const& value) {
    long long number = 0;
    unsigned long long large = 0;
    if (TryGetAs(value, number))
        return number >= type.minimum &&
               (number < 0 || static_cast<unsigned long long>(number) <= type.maximum);
    return TryGetAs(value, large) && large <= type.maximum;
}

bool fitsKind(FieldDescription const& field, Element const& value) {
    auto const& type = *field.type;
    switch (type.kind) {
    case TypeKind::boolean:
        return value.isBoolean();
    case TypeKind::integer:
        return fitsInteger(type, value);
    case TypeKind::number:
        return converts<double>(value);
    case TypeKind::text:
    case TypeKind::word:
        return value.isString();
    case TypeKind::pair:
        return value.isArray() && value.array().size() == 2 &&
               std::all_of(value.array().begin(), value.array().end(), [&](Element const& part) {
                   return fitsKind(fieldOf(*type.element), part);
               });
    case TypeKind::list:
        return value.isArray() || (type.encodedTag != 0 && value.isObject());
    case TypeKind::record:
    case TypeKind::message:
        return value.isObject();
    }
    return true;
}

using Problems = std::vector<Problem>;

Problem problem(std::string path, std::string text, Element const& value,
                ProblemKind kind = ProblemKind::wrongValue) {
    return {kind, std::move(path), std::move(text), value};
}

/// Adds the problem of `value` itself or, if there is none, the problems inside it.
void addWhole(FieldDescription const& field, Element const& value, std::string const& path,
              Problems& out) {
    if (auto wrong = mismatch(field, value, path)) {
        out.push_back(std::move(*wrong));
        return;
    }
    auto inside = problemsInside(field, value, path);
    std::move(inside.begin(), inside.end(), std::back_inserter(out));
}

void addEntries(Type const& list, Element const& value, std::string const& path, Problems& out) {
    auto const entry = fieldOf(*list.element);
    if (entry.type->kind == TypeKind::record && !entry.type->strict)
        return;
    for (unsigned int i = 0; i < value.array().size() && out.empty(); ++i)
        addWhole(entry, value.array()[i], path + '[' + std::to_string(i) + ']', out);
}

/// The range of the number of booleans that fit into this many bytes.
std::string packedRange(std::size_t bytes, std::size_t perByte) {
    if (bytes == 0)
        return "0";
    return std::to_string((bytes - 1) * perByte + 1) + " to " + std::to_string(bytes * perByte);
}

void addEncoded(Type const& list, Element const& value, std::string const& path, Problems& out) {
    auto const integerAt = [&](char const* key) -> std::optional<unsigned long long> {
        auto const* const number = value.find(key);
        unsigned long long result = 0;
        if (number == nullptr)
            out.push_back(absence(path + '.' + key));
        else if (!TryGetAs(*number, result))
            out.push_back(problem(path + '.' + key,
                                  "expected an integer from 0 to 18446744073709551615", *number));
        else
            return result;
        return {};
    };
    integerAt("type");
    auto const len = integerAt("len");
    auto const* const text = value.find("base64");
    if (text == nullptr) {
        if (len && *len > 0)
            out.push_back(absence(path + ".base64"));
        return;
    }
    if (!text->isString()) {
        out.push_back(problem(path + ".base64", "expected a string", *text));
        return;
    }
    try {
        Base64::decode(text->text(), nullptr, 0);
    } catch (Exception::Base const& e) {
        out.push_back({ProblemKind::wrongValue, path + ".base64", e.what(), {}});
        return;
    }
    if (len && !encodedCount(list.encodedTag, *len, text->text())) {
        auto const bytes = Base64::decodedSize(text->text());
        out.push_back(problem(path + ".len",
                              "expected " + packedRange(bytes, 8 / encodedBits(list.encodedTag)) +
                                  ", the text holds " + std::to_string(bytes) +
                                  (bytes == 1 ? " byte" : " bytes"),
                              *value.find("len")));
    }
}

void addKeys(Type const& record, Element const& value, std::string const& path, Problems& out) {
    auto const fields = record.fields();
    for (auto const& field : fields) {
        auto const here = path + '.' + field.key;
        if (auto const* const child = value.find(field.key))
            addWhole(field, *child, here, out);
        else if (field.required)
            out.push_back(absence(here));
    }
}

std::string hexadecimal(unsigned long long id) {
    char text[20];
    std::snprintf(text, sizeof text, "0x%016llx", id);
    return text;
}

void addMessage(Type const& type, Element const& value, std::string const& path, Problems& out) {
    auto const* const element = value.find("MessageID");
    unsigned long long id = 0;
    if (element == nullptr) {
        out.push_back(absence(path + ".MessageID"));
    } else if (!TryGetAs(*element, id)) {
        out.push_back(problem(path + ".MessageID", "expected the id of a message", *element));
    } else if (Message::MsgFactory::Instance().find(id) == nullptr) {
        out.push_back(problem(path + ".MessageID", "unknown id " + hexadecimal(id), *element,
                              ProblemKind::unknownId));
    } else {
        Element frame; // enough to create a message of its class
        frame["MessageID"] = *element;
        auto const made = Message::CreateFromMetaData(frame);
        if (made != nullptr && !type.admits(*made))
            out.push_back(
                problem(path + ".MessageID", "expected a message of " + type.name, *element));
    }
}

} // namespace

bool isLiteral(FieldDescription const& field, Element const& value) {
    long long number = 0;
    auto const isText = value.isString();
    if (!isText && !TryGetAs(value, number))
        return false;
    return std::any_of(field.literals.begin(), field.literals.end(), [&](Literal const& one) {
        return isText ? one.word == value.text() : one.value == number;
    });
}

std::string literalsOf(FieldDescription const& field) {
    std::string text;
    for (auto const& one : field.literals) {
        text += text.empty() ? "" : ", ";
        text += field.type->kind == TypeKind::integer
                    ? std::to_string(one.value) + " (" + one.word + ')'
                    : '"' + one.word + '"';
    }
    return text;
}

Problem absence(std::string path) {
    return {ProblemKind::absent, std::move(path), "required, but absent", {}};
}

std::optional<Problem> mismatch(FieldDescription const& field, Element const& value,
                                std::string const& path) {
    if (!fitsKind(field, value)) {
        auto text = "expected " + expectation(field);
        if (field.type->kind == TypeKind::word)
            text += ", one of " + literalsOf(field);
        else if (field.type->kind != TypeKind::integer || !isNumber(value))
            text += std::string(", found ") + describe(value.kind());
        return problem(path, std::move(text), value);
    }
    if (field.closed && !isLiteral(field, value))
        return problem(path, "unknown literal, expected one of " + literalsOf(field), value,
                       ProblemKind::unknownLiteral);
    if (field.type->kind == TypeKind::list && value.isObject()) {
        unsigned int tag = 0;
        auto const* const type = value.find("type");
        if (type != nullptr && TryGetAs(*type, tag) && tag != field.type->encodedTag)
            return problem(
                path, "expected the encoded form of type " + std::to_string(field.type->encodedTag),
                value);
    }
    return {};
}

std::optional<Problem> lengthMismatch(FieldDescription const& field, Element const& value,
                                      std::string const& path) {
    if (field.type == nullptr || field.type->encodedTag == 0 || !value.isObject())
        return {};
    auto const bits = encodedBits(field.type->encodedTag);
    auto const* const text = value.find("base64");
    auto const* const stated = value.find("len");
    unsigned long long len = 0;
    // If "len" is wrong, booleans are not read at all; that is reported elsewhere.
    if (bits < 8 || text == nullptr || !text->isString() || stated == nullptr ||
        !TryGetAs(*stated, len))
        return {};
    auto const held = Base64::decodedSize(text->text()) / (bits / 8);
    if (len == held)
        return {};
    return problem(path + ".len", "the text holds " + std::to_string(held), *stated);
}

Problems problemsInside(FieldDescription const& field, Element const& value,
                        std::string const& path) {
    Problems out;
    auto const& type = *field.type;
    if (type.kind == TypeKind::list && value.isArray())
        addEntries(type, value, path, out);
    else if (type.kind == TypeKind::list && value.isObject())
        addEncoded(type, value, path, out);
    else if (type.kind == TypeKind::record && type.strict && value.isObject())
        addKeys(type, value, path, out);
    else if (type.kind == TypeKind::message && !type.messageId && value.isObject())
        addMessage(type, value, path, out);
    return out;
}

} // namespace Tolv::Msgs::Introspection::Detail
