#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include <tolv/core/metadata/json.h>

#include "folder.h"
#include "schema.h"
#include "text.h"

namespace Tolv::Tool {

using namespace Msgs::Introspection;
using MetaData::Element;

namespace {

Element json(std::string_view text) {
    Element element;
    element.setString(text);
    return element;
}

Element json(bool value) {
    Element element;
    element.setBoolean(value);
    return element;
}

Element json(long long value) {
    Element element;
    element.setSigned(value);
    return element;
}

Element json(unsigned long long value) {
    Element element;
    element.setUnsigned(value);
    return element;
}

Element json(std::vector<Element> entries) {
    Element element;
    MetaData::Array& array = element;
    for (auto& entry : entries)
        array.push_back(std::move(entry));
    return element;
}

Element ofType(std::string_view type) {
    Element schema;
    schema["type"] = json(type);
    return schema;
}

Element reference(std::string const& target) {
    Element schema;
    schema["$ref"] = json(std::string_view(target));
    return schema;
}

Element integer(long long minimum, unsigned long long maximum) {
    auto schema = ofType("integer");
    schema["minimum"] = json(minimum);
    schema["maximum"] = json(maximum);
    return schema;
}

/// A number, or a string for one that JSON cannot represent.
Element number() {
    Element schema;
    Element texts;
    texts["enum"] = json({json(std::string_view("NaN")), json(std::string_view("Infinity")),
                          json(std::string_view("-Infinity"))});
    schema["anyOf"] = json({ofType("number"), std::move(texts)});
    return schema;
}

/// The encoded form of an array. An empty array has no text.
Element encodedArray(unsigned int tag) {
    constexpr std::string_view base64 =
        "^([A-Za-z0-9+/]{4})*([A-Za-z0-9+/]{2}==|[A-Za-z0-9+/]{3}=)?$";
    auto schema = ofType("object");
    auto& keys = schema["properties"];
    keys["type"]["const"] = json(static_cast<unsigned long long>(tag));
    keys["len"] = integer(0, std::numeric_limits<unsigned long long>::max());
    keys["base64"] = ofType("string");
    keys["base64"]["contentEncoding"] = json(std::string_view("base64"));
    keys["base64"]["pattern"] = json(base64);
    schema["required"] = json({json(std::string_view("type")), json(std::string_view("len"))});
    schema["additionalProperties"] = json(false);
    schema["if"]["properties"]["len"]["minimum"] = json(1LL);
    schema["then"]["required"] = json({json(std::string_view("base64"))});
    return schema;
}

Element literalsOf(FieldDescription const& field) {
    auto const asText = field.type->kind != TypeKind::integer;
    std::vector<Element> values;
    for (auto const& literal : field.literals)
        values.push_back(asText ? json(std::string_view(literal.word)) : json(literal.value));
    return json(std::move(values));
}

/// Builds a schema. Each type it refers to is added to `definitions` on first use.
class SchemaBuilder {
public:
    /// @param root the class that the schema itself describes
    SchemaBuilder(Classes const& classes, std::optional<unsigned long long> root)
        : classes_(classes), root_(root) {}

    /// @param schema the keys that come first
    Element message(ClassDescription const& message, Element schema = {}) {
        schema["title"] =
            json(std::string_view(message.alias.empty() ? message.className : message.alias));
        if (!message.role.empty())
            schema["description"] = json(std::string_view(message.role));
        return record(message.fields, message.id, std::move(schema));
    }

    Element referenceTo(unsigned long long id) {
        if (root_ == id)
            return reference("#");
        auto const* const known = classes_.find(id);
        auto const described = known != nullptr ? descriptionOf(id) : std::nullopt;
        if (!described)
            return json(true);
        return defined(fileStem(*known), [&] { return message(*described); });
    }

    /// Adds the definitions that the schema refers to.
    void finish(Element& schema) {
        if (definitions_.isObject())
            schema["$defs"] = std::move(definitions_);
    }

private:
    template <class Make>
    Element defined(std::string const& name, Make make) {
        if (named_.insert(name).second) {
            definitions_[name] = json(true); // reserves the position
            auto schema = make();
            definitions_[name] = std::move(schema);
        }
        return reference("#/$defs/" + name);
    }

    /// @param id of the message to which the fields belong
    Element record(std::vector<FieldDescription> const& fields,
                   std::optional<unsigned long long> id, Element schema) {
        schema["type"] = json(std::string_view("object"));
        std::vector<Element> required;
        for (auto const& field : fields) {
            auto& property = schema["properties"][field.key];
            if (id && field.key == "MessageID")
                property["const"] = json(*id);
            else
                property = valueOf(field);
            if (field.required)
                required.push_back(json(std::string_view(field.key)));
        }
        if (!required.empty())
            schema["required"] = json(std::move(required));
        schema["additionalProperties"] = json(false);
        return schema;
    }

    Element valueOf(FieldDescription const& field) {
        auto schema = valueOf(*field.type);
        auto const kind = field.type->kind;
        if (field.closed && kind != TypeKind::word) {
            schema = Element();
            schema["enum"] = literalsOf(field);
        }
        if (auto const meaning = meaningOf(field); !meaning.empty())
            schema["description"] = json(std::string_view(meaning));
        if (!field.unit.empty())
            schema["x-unit"] = json(std::string_view(field.unit));
        if (field.defaultValue && kind != TypeKind::record && kind != TypeKind::message &&
            kind != TypeKind::list)
            schema["default"] = *field.defaultValue;
        return schema;
    }

    Element valueOf(Type const& type) {
        switch (type.kind) {
        case TypeKind::boolean:
            return ofType("boolean");
        case TypeKind::integer:
            return integer(type.minimum, type.maximum);
        case TypeKind::number:
            return defined("number", number);
        case TypeKind::text:
            return ofType("string");
        case TypeKind::word: {
            std::vector<Element> words;
            for (auto const& literal : type.literals)
                words.push_back(json(std::string_view(literal.word)));
            Element schema;
            schema["enum"] = json(std::move(words));
            return schema;
        }
        case TypeKind::pair: {
            auto schema = listOf(*type.element);
            schema["minItems"] = schema["maxItems"] = json(2LL);
            return schema;
        }
        case TypeKind::list: {
            auto schema = listOf(*type.element);
            if (type.encodedTag == 0)
                return schema;
            auto const name = "encoded." + std::to_string(type.encodedTag);
            auto encoded = defined(name, [&] { return encodedArray(type.encodedTag); });
            Element either;
            either["anyOf"] = json({std::move(schema), std::move(encoded)});
            return either;
        }
        case TypeKind::record:
            return defined(nameOf(type), [&] { return record(type.fields(), {}, {}); });
        case TypeKind::message:
            return anyAdmitted(type);
        }
        return json(true);
    }

    Element listOf(Type const& element) {
        auto schema = ofType("array");
        schema["items"] = valueOf(element);
        return schema;
    }

    Element anyAdmitted(Type const& type) {
        if (type.messageId)
            return referenceTo(*type.messageId);
        return defined("any." + nameOf(type), [&] {
            std::vector<Element> admitted;
            for (auto const& known : classes_.all())
                if (known.make != nullptr && type.admits(*known.make()))
                    admitted.push_back(referenceTo(known.id));
            Element schema;
            schema["anyOf"] = json(std::move(admitted));
            return schema;
        });
    }

    /// The name of a type, reduced to characters that need no escape in a reference.
    std::string nameOf(Type const& type) {
        auto const known = names_.find(&type);
        if (known != names_.end())
            return known->second;
        std::string name;
        for (auto const c : type.name) {
            auto const plain =
                (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
            if (plain)
                name.push_back(c);
            else if (!name.empty() && name.back() != '.')
                name.push_back('.');
        }
        while (name.ends_with('.'))
            name.pop_back();
        while (named_.contains(name)) // another type whose name differs only in removed characters
            name.push_back('_');
        return names_[&type] = name;
    }

    Classes const& classes_;
    std::optional<unsigned long long> root_;
    Element definitions_;
    std::unordered_set<std::string> named_;
    std::unordered_map<Type const*, std::string> names_;
};

Element begun() {
    Element schema;
    schema["$schema"] = json(std::string_view("https://json-schema.org/draft/2020-12/schema"));
    return schema;
}

} // namespace

Element schemaOf(Classes const& classes, ClassDescription const& message) {
    SchemaBuilder builder(classes, message.id);
    auto schema = builder.message(message, begun());
    builder.finish(schema);
    return schema;
}

Element schemaOfAny(Classes const& classes) {
    SchemaBuilder builder(classes, {});
    auto schema = begun();
    schema["title"] = json(std::string_view("Any message"));
    std::vector<Element> all;
    for (auto const& described : descriptionsOf(classes))
        all.push_back(builder.referenceTo(described.id));
    schema["anyOf"] = json(std::move(all));
    builder.finish(schema);
    return schema;
}

std::string indentedJson(Element const& tree) {
    std::string text;
    MetaData::WriterJson::Write(tree, text, false);
    text = harmlessJson(std::move(text));
    return text.ends_with('\n') ? text : text + '\n';
}

std::string meaningOf(FieldDescription const& field) {
    auto meaning = field.doc;
    if (!field.unit.empty())
        meaning += (meaning.empty() ? "in " : ", in ") + field.unit;
    if (field.type->kind == TypeKind::word) // the schema lists the words
        return meaning;
    auto const* separator = meaning.empty() ? "" : ": ";
    for (auto const& literal : field.literals) {
        meaning += std::exchange(separator, ", ");
        if (field.type->kind == TypeKind::integer)
            meaning += std::to_string(literal.value) + ' ';
        meaning += literal.word;
    }
    return meaning;
}

} // namespace Tolv::Tool
