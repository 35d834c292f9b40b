#include "catalogue/snippet.h"

#include "catalogue/cpp_names.h"
#include "catalogue/entry.h"

namespace Tolv::Tool::Catalogue {

using namespace Msgs::Introspection;

namespace {

constexpr auto prelude = "#include <tolv/messages.h>\n"
                         "\n"
                         "using namespace Tolv;\n"
                         "using namespace Tolv::Msgs;\n"
                         "\n";

/// The accessor in a hand-written payload, which has functions instead of fields; some are not
/// named after the key.
std::string accessorName(std::string const& key) {
    if (key == "AppInstallFromLocation")
        return "location";
    if (key == "StartElementIndex")
        return "offset";
    if (key == "NumberOfElement")
        return "number";
    return memberName(key);
}

std::string setterName(std::string const& key) {
    auto name = accessorName(key);
    name.front() = static_cast<char>(name.front() - 'a' + 'A');
    return "set" + name;
}

/// Which fields of a record to show: all, or in a nested message only the required ones.
enum class Extent { all, required };

std::vector<FieldDescription> payloadOf(unsigned long long id) {
    auto const described = descriptionOf(id);
    return described ? described->payload() : std::vector<FieldDescription>();
}

class Lines {
public:
    explicit Lines(Classes const* classes) : classes_(classes) {}

    void add(std::string const& line) {
        text_.append(line.empty() ? 0 : 4 * level_, ' ').append(line).append("\n");
    }
    std::string const& text() const { return text_; }

    /// @param record the C++ expression for the record
    void build(std::vector<FieldDescription> const& fields, std::string const& record,
               bool handWritten, Extent extent) {
        for (auto const& field : fields)
            if (field.type != nullptr && (extent == Extent::all || field.required))
                buildField(field, record, handWritten, extent);
    }

    void read(std::vector<FieldDescription> const& fields, std::string const& record,
              bool handWritten, Extent extent) {
        for (auto const& field : fields)
            if (field.type != nullptr && (extent == Extent::all || field.required))
                readField(field, record, handWritten, extent);
    }

private:
    void buildField(FieldDescription const& field, std::string const& record, bool handWritten,
                    Extent extent) {
        auto const member = record + '.' + memberName(field.key);
        auto const& type = *field.type;
        auto const isList = type.kind == TypeKind::list;
        if (auto const* const inner = recordIn(&type)) {
            auto const name = names_.take(variableFor(*inner));
            add("auto& " + name + " = " + member + ".edit()" + (isList ? ".emplace_back();" : ";"));
            build(inner->fields(), name, inner->strict, extent);
        } else if (auto const* const message = messageIn(&type)) {
            buildMessage(*message, member, isList, handWritten);
        } else if (handWritten) {
            add(record + '.' + setterName(field.key) + '(' + cppValue(field) + ");");
        } else {
            add(member + " = " + cppValue(field) + ';' + remark(field));
        }
    }

    void buildMessage(Type const& message, std::string const& member, bool isList,
                      bool handWritten) {
        if (message.messageId) {
            auto const name = names_.take(variableFor(message));
            add("auto& " + name + " = " + member + ".edit()" + (isList ? ".emplace_back();" : ";"));
            build(payloadOf(*message.messageId), name + ".editPayload()", false, Extent::required);
            return;
        }
        auto const made = "std::make_shared<" + example(message) + ">()";
        if (isList)
            add(member + (handWritten ? "" : ".edit()") + ".push_back(" + made + ");");
        else
            add(member + " = " + made + ';');
    }

    /// A class to use for `type`, preferably one with a simple value.
    std::string example(Type const& type) const {
        std::string first;
        for (auto const& known : classes_->all()) {
            if (known.make == nullptr || !type.admits(*known.make()))
                continue;
            if (known.shortAlias == "LongMessage")
                return known.alias;
            if (first.empty())
                first = known.alias;
        }
        return first;
    }

    static std::string remark(FieldDescription const& field) {
        if (!field.unit.empty())
            return " // " + field.unit;
        auto const value = cppValue(field);
        if (field.type->kind == TypeKind::integer)
            for (auto const& literal : field.literals)
                if (std::to_string(literal.value) == value)
                    return " // " + literal.word;
        return "";
    }

    void readField(FieldDescription const& field, std::string const& record, bool handWritten,
                   Extent extent) {
        auto const& type = *field.type;
        auto const member =
            record + '.' + (handWritten ? accessorName(field.key) : memberName(field.key));
        auto const* const inner = recordIn(&type);
        auto const* const message = messageIn(&type);
        if (inner == nullptr && message == nullptr) {
            auto const name = names_.take(memberName(field.key));
            if (field.required)
                add("auto const& " + name + " = " + member + "();");
            else
                add("auto const* const " + name + " = " + member + ".initialized() ? &" + member +
                    "() : nullptr;");
            return;
        }
        auto const isList = type.kind == TypeKind::list;
        auto const list = member + (handWritten ? "" : "()");
        auto const name = names_.take(variableFor(inner != nullptr ? *inner : *message));
        if (!field.required)
            open("if (" + member + ".initialized()) {");
        if (isList)
            open("for (auto const& " + name + " : " + list + ") {");
        else
            add("auto const& " + name + " = " + member + "();");
        if (inner != nullptr)
            read(inner->fields(), name, inner->strict, extent);
        else if (message->messageId)
            read(payloadOf(*message->messageId), name + ".payload()", false, Extent::required);
        else
            add("auto const& " + names_.take("id") + " = " + name + (isList ? "->" : ".") +
                "id();");
        if (isList)
            close();
        if (!field.required)
            close();
    }

    void open(std::string const& line) {
        add(line);
        ++level_;
    }
    void close() {
        --level_;
        add("}");
    }

    Classes const* classes_;
    VariableNames names_;
    std::string text_;
    std::size_t level_ = 0;
};

} // namespace

std::string buildingLines(Classes const& classes, ClassDescription const& message) {
    Lines lines(&classes);
    lines.add(message.alias + " message;");
    lines.add("message.destination = {\"instrument\"};");
    lines.add("");
    if (auto const fields = message.payload(); !fields.empty()) {
        lines.add("auto& data = message.editPayload();");
        lines.build(fields, "data", findField(message.fields, "Data")->type->strict, Extent::all);
        lines.add("");
    }
    lines.add("std::string text;");
    lines.add("message.copyToText(text);");
    return prelude + lines.text();
}

std::string readingLines(ClassDescription const& message) {
    Lines lines(nullptr);
    lines.add("auto const received = Message::CreateFromText(text);");
    lines.add("auto const message = std::dynamic_pointer_cast<" + message.alias + ">(received);");
    lines.add("if (message == nullptr)");
    lines.add("    return; // of another class");
    if (auto const fields = message.payload(); !fields.empty()) {
        lines.add("");
        lines.add("auto const& data = message->payload();");
        lines.read(fields, "data", findField(message.fields, "Data")->type->strict, Extent::all);
    }
    return prelude + lines.text();
}

} // namespace Tolv::Tool::Catalogue
