#include <algorithm>

#include <tolv/core/metadata/json.h>

#include "attribute_view.h"
#include "ids.h"
#include "json_object.h"
#include "line_views.h"
#include "text.h"
#include "tree_text.h"

namespace Tolv::Tool {

namespace {

using Msgs::Introspection::Problem;

constexpr std::size_t labelWidth = 8;

std::string labelled(std::string_view label, std::string_view text) {
    return padded(label, labelWidth) + std::string(text);
}

std::string foundIn(Problem const& one) {
    constexpr std::size_t mostFound = 60;
    return one.value ? shortText(*one.value, mostFound) : std::string();
}

void addProblems(TreeText& text, std::vector<Problem> const& problems, Style const& style) {
    constexpr std::size_t mostWidth = 48; // longer paths and texts are not aligned
    std::size_t paths = 0;
    std::size_t texts = 0;
    for (auto const& one : problems) {
        if (width(one.path) <= mostWidth)
            paths = std::max(paths, width(one.path));
        if (width(one.problem) <= mostWidth && one.value)
            texts = std::max(texts, width(one.problem));
    }
    text.line(2, style.warning("problems"));
    for (auto const& one : problems)
        text.line(4, padded(harmless(one.path), paths) + "  " +
                         (one.value ? padded(harmless(one.problem), texts) + "  " + foundIn(one)
                                    : harmless(one.problem)));
}

void addMessage(TreeText& text, ExaminedLine const& line, MessageClass const& known) {
    auto const id = known.id;
    if (!known.alias.empty())
        text.line(2, labelled("class", known.className));
    text.line(2, labelled("id", hexadecimal(id) + "  " + dotted(id)));
    text.line(2, labelled("from", addressText(line.tree.find("Sender"))));
    text.line(2, labelled("to", addressText(line.tree.find("Destination"))));
    if (auto const* const data = line.tree.find("Data")) {
        auto const empty = data->isObject() && data->object().empty();
        text.line(2, labelled("data", known.payload + (empty ? ", no field is set" : "")));
        text.payload(*line.message, data, 4);
    } else if (!known.payload.empty()) {
        text.line(2, labelled("data", known.payload + ", did not parse"));
        text.payload(*line.message, nullptr, 4);
    }
}

std::string problemsJson(std::vector<Problem> const& problems) {
    std::vector<std::string> rows;
    for (auto const& one : problems) {
        JsonObject row;
        row.add("path", one.path).add("problem", one.problem);
        if (one.value)
            row.add("found", foundIn(one));
        else
            row.addNull("found");
        rows.push_back(row.text());
    }
    return jsonArray(rows);
}

void addVerdict(JsonObject& out, Verdict const& verdict) {
    out.addJson("valid", verdict.valid ? "true" : "false");
    if (!verdict.valid)
        out.add("invalid", verdict.reason);
}

std::string insideJson(std::vector<InnerVerdict> const& inside) {
    std::vector<std::string> rows;
    for (auto const& one : inside) {
        JsonObject row;
        row.add("path", one.path);
        addVerdict(row, one.verdict);
        rows.push_back(row.text());
    }
    return jsonArray(rows);
}

} // namespace

std::string messageText(ExaminedLine const& line, std::string_view title, Classes const& classes,
                        Style const& style) {
    std::string out;
    TreeText text(classes, out);
    if (line.error.empty()) {
        auto const& known = *classes.find(line.message->id());
        text.line(0, std::string(title) + style.name(known.name()) +
                         (known.role.empty() ? "" : ": " + known.role));
        addMessage(text, line, known);
        if (!line.problems.empty())
            addProblems(text, line.problems, style);
    } else {
        text.line(0, std::string(title) + style.error("no message: ") + harmless(line.error));
    }
    for (auto const& note : line.notes)
        text.line(2, labelled("note", harmless(note)));
    return out;
}

std::string textOf(ExaminedLine const& line, LineNumber const& where, Classes const& classes,
                   Style const& style) {
    auto title = "line " + std::to_string(where.number) + "  ";
    if (!where.file.empty())
        title.insert(0, word(where.file) + ' ');
    return messageText(line, title, classes, style) + '\n';
}

void addMessage(JsonObject& out, ExaminedLine const& line, Classes const& classes) {
    if (line.id)
        out.add("id", hexadecimal(*line.id));
    if (line.error.empty()) {
        auto const& known = *classes.find(*line.id);
        out.add("class", known.className);
        if (known.alias.empty())
            out.addNull("alias");
        else
            out.add("alias", known.alias);
        std::string message;
        MetaData::WriterJson::Write(line.tree, message);
        out.addJson("message", message);
        if (auto const verdict = verdictOf(*line.message))
            addVerdict(out, *verdict);
        if (auto const inside = verdictsInside(*line.message); !inside.empty())
            out.addJson("inside", insideJson(inside));
        if (!line.problems.empty())
            out.addJson("problems", problemsJson(line.problems));
    } else {
        out.add("error", line.error);
    }
    if (!line.notes.empty()) {
        std::vector<std::string> notes;
        for (auto const& note : line.notes)
            notes.push_back(jsonString(note));
        out.addJson("notes", jsonArray(notes));
    }
}

std::string jsonOf(ExaminedLine const& line, LineNumber const& where, Classes const& classes) {
    JsonObject out;
    if (!where.file.empty())
        out.add("file", where.file);
    out.add("line", where.number);
    addMessage(out, line, classes);
    return out.text() + '\n';
}

} // namespace Tolv::Tool
