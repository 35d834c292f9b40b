#include <algorithm>

#include <tolv/core/metadata/json.h>

#include "catalogue/html.h"
#include "catalogue/pages.h"
#include "catalogue/snippet.h"
#include "folder.h"
#include "ids.h"
#include "schema.h"
#include "text.h"

namespace Tolv::Tool::Catalogue {

using namespace Msgs::Introspection;

namespace {

Html muted(Html const& content) { return tag("span", {{"class", "muted"}}, content); }

Html section(std::string const& id, std::string const& title, Html const& content) {
    return tag("section", {{"id", id}}, tag("h2", title) + content) + "\n";
}

class MessagePage {
public:
    MessagePage(Classes const& classes, std::vector<Entry> const& entries, std::size_t at)
        : classes_(classes), entries_(entries), at_(at), entry_(entries[at]),
          known_(*entry_.known) {}

    std::string whole() const {
        auto const body = head() + fields() + example() + cpp() + schema() + neighbours();
        return page(known_.name(), body, true);
    }

private:
    Html head() const {
        auto const fact = [](char const* name, Html const& value) {
            return tag("div", tag("dt", name) + tag("dd", value));
        };
        auto facts = fact("Id", code(dotted(known_.id))) +
                     fact("Hexadecimal", code(hexadecimal(known_.id))) +
                     fact("Decimal", code(std::to_string(known_.id)));
        if (!known_.alias.empty())
            facts += fact("Alias", code(known_.alias));
        if (!known_.payload.empty())
            facts += fact("Payload", code(known_.payload));
        facts += fact("Class", code(known_.className));
        auto const& family = entry_.description.family;
        auto const crumbs = tag(
            "nav", {{"class", "crumbs"}, {"aria-label", "Breadcrumbs"}},
            link("index.html", "Messages") + muted(" / ") +
                (family.empty() ? Html("Others") : link("index.html?q=" + family + "::", family)));
        auto contents = link("#fields", "Fields") + link("#example", "Example");
        if (!known_.alias.empty())
            contents += link("#cpp", "C++");
        contents += link("#schema", "Schema");
        auto const& name = known_.alias.empty() ? known_.className : known_.shortAlias;
        return tag("div", {{"class", "hero"}},
                   crumbs + tag("h1", name) + tag("p", {{"class", "lede"}}, known_.role) +
                       tag("dl", {{"class", "facts"}}, facts) +
                       tag("nav", {{"class", "contents"}, {"aria-label", "On this page"}},
                           contents)) +
               "\n";
    }

    Html fields() const {
        Html lines;
        for (auto const& row : entry_.rows)
            lines += fieldLine(row);
        auto const* const columns = "<thead><tr><th scope=\"col\">Key</th>"
                                    "<th scope=\"col\">Meaning</th><th scope=\"col\">Type"
                                    "</th><th scope=\"col\">Required</th><th scope=\"col\">Default"
                                    "</th><th scope=\"col\">Unit</th><th scope=\"col\">Values"
                                    "</th></tr></thead>";
        return section("fields", "Fields",
                       tag("div", {{"class", "table"}},
                           tag("table", Html::markup(columns) + tag("tbody", lines))));
    }

    Html fieldLine(Row const& row) const {
        auto const& field = row.field;
        auto const cell = [](char const* column, Html const& content) {
            Attributes attributes{{"data-column", column}};
            if (content.empty())
                attributes.push_back({"class", "none"});
            return tag("td", attributes, tag("div", content));
        };
        auto const key =
            tag("th",
                {{"scope", "row"},
                 {"class",
                  "depth-" + std::to_string(std::min<std::size_t>(row.depth, std::size_t{6}))}},
                code(field.key));
        auto const required =
            field.required ? tag("span", {{"class", "badge"}}, "required") : muted("optional");
        return tag("tr", key + cell("Meaning", field.doc) + cell("Type", type(field)) +
                             cell("Required", required) + cell("Default", defaultOf(field)) +
                             cell("Unit", field.unit) +
                             cell("Values", isId(row) ? muted("fixed") : values(field))) +
               "\n";
    }

    /// Whether this is the message id, which is fixed for a class.
    static bool isId(Row const& row) { return row.depth == 0 && row.field.key == "MessageID"; }

    /// The type of the values, with the C++ type if that is more specific.
    Html type(FieldDescription const& field) const {
        auto const* inner = field.type;
        while (inner->kind == TypeKind::list)
            inner = inner->element;
        auto words = kindName(*field.type);
        switch (inner->kind) {
        case TypeKind::integer:
        case TypeKind::record:
        case TypeKind::word:
        case TypeKind::pair:
            return words + " " + tag("code", {{"class", "cpp"}}, inner->name);
        default:
            return words;
        }
    }

    /// @param end the plural ending, or nothing
    Html kindName(Type const& type, std::string const& end = "") const {
        switch (type.kind) {
        case TypeKind::boolean:
            return "boolean" + end;
        case TypeKind::integer:
            return "integer" + end;
        case TypeKind::number:
            return "number" + end;
        case TypeKind::text:
            return "text" + end;
        case TypeKind::word:
            return "word" + end;
        case TypeKind::pair:
            return Html("pair" + end + " of ") + kindName(*type.element, "s");
        case TypeKind::list:
            return Html("list" + end + " of ") + kindName(*type.element, "s");
        case TypeKind::record:
            return "record" + end;
        case TypeKind::message:
            break;
        }
        if (!type.messageId)
            return Html("message" + end + " ") + tag("code", {{"class", "cpp"}}, type.name);
        auto const* const known = classes_.find(*type.messageId);
        return known == nullptr ? Html("message" + end + ' ' + type.name)
                                : link(fileStem(*known) + ".html", code(known->name()));
    }

    static Html defaultOf(FieldDescription const& field) {
        if (!field.defaultValue || field.defaultValue->isObject())
            return {};
        std::string text;
        MetaData::WriterJson::Write(*field.defaultValue, text);
        return code(text);
    }

    static Html values(FieldDescription const& field) {
        Html html;
        auto const note = [&html](Html const& text) { html += tag("div", text); };
        auto const& type = *field.type;
        if (!field.literals.empty())
            html += literals(field);
        else if (type.kind == TypeKind::integer)
            note(muted(std::to_string(type.minimum) + " to " + std::to_string(type.maximum)));
        if (type.kind == TypeKind::pair ||
            (type.kind == TypeKind::list && type.element->kind == TypeKind::pair))
            note(muted("[real, imaginary]"));
        if (type.encodedTag != 0)
            note(muted("or in base64, as ") +
                 code("{\"type\":" + std::to_string(type.encodedTag) + ",…}"));
        if (auto const* const record = recordIn(&type); record != nullptr && record->strict)
            note(muted("read as a whole or not at all"));
        if (auto const* const message = messageIn(&type); message != nullptr && !message->messageId)
            note(muted("any derived class"));
        return html;
    }

    static Html literals(FieldDescription const& field) {
        constexpr std::size_t most = 8;
        Html list;
        auto const numbered = field.type->kind == TypeKind::integer;
        for (auto const& literal : field.literals)
            list +=
                tag("li", numbered ? code(std::to_string(literal.value)) + " " + Html(literal.word)
                                   : code(literal.word));
        auto const all = tag("ul", {{"class", "literals"}}, list);
        auto const title = counted(field.literals.size(), "value", "values") +
                           (field.closed ? "" : ", others are accepted");
        if (field.literals.size() <= most)
            return all + (field.closed ? Html() : tag("div", muted("others are accepted")));
        return tag("details", tag("summary", title) + all);
    }

    Html example() const {
        auto const* const tree = classes_.example(known_.id);
        return section("example", "Example",
                       tree != nullptr ? listing("example-json", indentedJson(*tree))
                                       : tag("p", muted("This program cannot create one.")));
    }

    Html cpp() const {
        if (known_.alias.empty())
            return {};
        return section("cpp", "C++",
                       tag("h3", "Build and write") +
                           listing("cpp-build", buildingLines(classes_, entry_.description)) +
                           tag("h3", "Read") +
                           tag("p", "Accessing a field that did not parse throws; check " +
                                        code("initialized()") +
                                        " first. Pointers are null if the key is absent.") +
                           listing("cpp-read", readingLines(entry_.description)));
    }

    Html schema() const {
        constexpr std::size_t most = 40000; // longer ones are only linked
        auto const text = indentedJson(schemaOf(classes_, entry_.description));
        auto content =
            tag("p", "JSON Schema 2020-12 of messages from a well-formed writer: " +
                         link(entry_.stem + ".schema.json", entry_.stem + ".schema.json"));
        if (text.size() <= most)
            content +=
                tag("details", tag("summary", "Show the schema") + listing("schema-json", text));
        return section("schema", "Schema", content);
    }

    Html neighbours() const {
        auto const to = [](char const* side, char const* word, Entry const& entry) {
            return tag("a", {{"class", side}, {"href", entry.page()}, {"rel", side}},
                       muted(word) + tag("span", entry.known->name()));
        };
        Html links;
        if (at_ > 0)
            links += to("prev", "Previous", entries_[at_ - 1]);
        if (at_ + 1 < entries_.size())
            links += to("next", "Next", entries_[at_ + 1]);
        return tag("nav", {{"class", "neighbours"}, {"aria-label", "Other messages"}}, links);
    }

    Classes const& classes_;
    std::vector<Entry> const& entries_;
    std::size_t at_;
    Entry const& entry_;
    MessageClass const& known_;
};

} // namespace

std::string messagePage(Classes const& classes, std::vector<Entry> const& entries, std::size_t at) {
    return MessagePage(classes, entries, at).whole();
}

} // namespace Tolv::Tool::Catalogue
