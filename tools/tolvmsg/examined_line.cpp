#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>

#include "examined_line.h"
#include "ids.h"
#include "nested_message.h"
#include "tree_text.h"

namespace Tolv::Tool {

namespace {

/// Fills `line`. @throws std::exception if there is no message, with the reason
void examineTree(MetaData::Element const& input, ExaminedLine& line) {
    line.input = input;
    if (!input.isObject())
        throw Exception::InvalidParameter("a message must be an object, found " +
                                          std::string(describe(input.kind())));
    auto const* const id = input.find("MessageID");
    if (id == nullptr)
        throw Exception::InvalidParameter("no \"MessageID\"");
    line.id = idOf(input);
    if (!line.id)
        throw Exception::InvalidParameter("\"MessageID\" is not an id: " + shortText(*id, 60));

    MetaData::ReadReport const report;
    auto message = Msgs::Message::CreateFromMetaData(input);
    if (message == nullptr) {
        auto const id = hexadecimal(*line.id) + " (" + dotted(*line.id) + ")";
        if (Msgs::Message::MsgFactory::Instance().find(*line.id) != nullptr)
            throw Exception::InvalidOperation("the class of id " + id + " built no message");
        throw Exception::InvalidParameter("unknown id " + id);
    }
    message->copyToMetaData(line.tree);
    line.problems = Msgs::Introspection::explain(report);
    line.literals = Msgs::Introspection::unknownLiterals(report);
    line.message = std::move(message);
}

/// @param fill fills the line, or throws if there is no message
template <class Fill>
ExaminedLine examined(CapturedCout& printed, Fill const& fill) {
    ExaminedLine line;
    try {
        fill(line);
    } catch (std::exception const& e) {
        line.error = e.what();
        if (line.error.empty())
            line.error = "failed for an unknown reason";
    }
    line.notes = printed.takeLines();
    return line;
}

} // namespace

ExaminedLine parse(std::string_view json, Limits const& limits) {
    ExaminedLine line;
    try {
        MetaData::ReaderJson::Read(line.input, json, limits);
        line.id = idOf(line.input);
    } catch (Exception::Base const& e) {
        line.error = e.what();
    }
    return line;
}

ExaminedLine examine(CapturedCout& printed, std::string_view json, Limits const& limits) {
    return examined(printed, [&](ExaminedLine& line) {
        MetaData::Element input;
        MetaData::ReaderJson::Read(input, json, limits);
        examineTree(input, line);
    });
}

ExaminedLine examine(CapturedCout& printed, MetaData::Element const& input) {
    return examined(printed, [&](ExaminedLine& line) { examineTree(input, line); });
}

} // namespace Tolv::Tool
