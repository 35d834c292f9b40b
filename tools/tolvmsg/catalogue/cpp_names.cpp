#include "catalogue/cpp_names.h"

#include <cmath>
#include <cstdio>

#include "catalogue/snippet.h"
#include "number_text.h"

namespace Tolv::Tool::Catalogue {

using namespace Msgs::Introspection;

namespace {

bool isUpper(char c) { return c >= 'A' && c <= 'Z'; }
char lower(char c) { return isUpper(c) ? static_cast<char>(c - 'A' + 'a') : c; }

std::string cppInteger(FieldDescription const& field) {
    if (field.type->name == "Identifier")
        return "Attrs::DoubleMessage::MsgID()";
    auto const* const value = field.defaultValue ? &*field.defaultValue : nullptr;
    if (value != nullptr && value->isUnsigned() &&
        (value->unsignedNumber() != 0 || !field.literals.empty()))
        return std::to_string(value->unsignedNumber());
    if (value != nullptr && value->isSigned() &&
        (value->signedNumber() != 0 || !field.literals.empty()))
        return std::to_string(value->signedNumber());
    return field.literals.empty() ? "1" : std::to_string(field.literals.front().value);
}

std::string cppWord(FieldDescription const& field, Type const& type) {
    auto const word = field.defaultValue && field.defaultValue->isString()
                          ? std::string(field.defaultValue->text())
                          : type.literals.front().word;
    return type.name + "Enums.value(" + cppString(word) + ')';
}

std::string cppText(FieldDescription const& field) {
    if (field.defaultValue && field.defaultValue->isString() && !field.defaultValue->text().empty())
        return cppString(field.defaultValue->text());
    return cppString(field.literals.empty() ? "text" : field.literals.front().word);
}

} // namespace

std::string memberName(std::string_view key) {
    for (auto const* const brief : {"b", "d", "dc", "i", "iv", "s", "m"})
        if (key == brief)
            return "value";
    std::string name;
    for (std::size_t at = 0; at < key.size();) {
        auto end = at;
        while (end < key.size() && isUpper(key[end]))
            ++end;
        // The last capital of a run begins the next word, unless the run is a plural such as "IDs".
        auto const plural =
            end < key.size() && key[end] == 's' && (end + 1 == key.size() || isUpper(key[end + 1]));
        if (end - at > 1 && end < key.size() && !plural)
            --end;
        for (auto i = at; i < end; ++i)
            name += i == at && !name.empty() ? key[i] : lower(key[i]);
        for (at = end; at < key.size() && (!isUpper(key[at]) || at == end); ++at)
            name += name.empty() ? lower(key[at]) : key[at];
    }
    return name;
}

std::string VariableNames::take(std::string const& wanted) {
    auto name = wanted;
    for (int number = 2; !taken_.insert(name).second; ++number)
        name = wanted + std::to_string(number);
    return name;
}

std::string variableFor(Type const& type) {
    auto name = type.name.substr(0, type.name.find('<'));
    if (auto const colons = name.rfind("::"); colons != std::string::npos)
        name.erase(0, colons + 2);
    return memberName(name);
}

std::string cppString(std::string_view text) {
    std::string literal = "\"";
    for (auto const c : text) {
        char octal[5];
        if (c == '"' || c == '\\') {
            literal.append(1, '\\').append(1, c);
        } else if (static_cast<unsigned char>(c) < 0x20) {
            std::snprintf(octal, sizeof octal, "\\%03o", static_cast<unsigned>(c));
            literal += octal;
        } else {
            literal += c;
        }
    }
    return literal + '"';
}

std::string cppValue(FieldDescription const& field) {
    auto const& type = *field.type;
    auto const plain = [](Type const& of) {
        FieldDescription entry;
        entry.type = &of;
        return cppValue(entry);
    };
    switch (type.kind) {
    case TypeKind::boolean:
        return field.defaultValue && field.defaultValue->isBoolean() &&
                       !field.defaultValue->boolean()
                   ? "false"
                   : "true";
    case TypeKind::integer:
        return cppInteger(field);
    case TypeKind::number:
        return "1.5";
    case TypeKind::text:
        return cppText(field);
    case TypeKind::word:
        return cppWord(field, type);
    case TypeKind::pair:
        return type.name + '(' + plain(*type.element) + ", " + plain(*type.element) + ')';
    case TypeKind::list:
        return '{' + plain(*type.element) + '}';
    case TypeKind::record:
    case TypeKind::message:
        break;
    }
    return "{}";
}

} // namespace Tolv::Tool::Catalogue
