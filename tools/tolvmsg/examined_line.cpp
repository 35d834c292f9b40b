#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>

#include "examined_line.h"
#include "ids.h"
#include "nested_message.h"
#include "tree_text.h"

namespace Tolv::Tool {

namespace {

/// Fills `line`. @throws std::exception with the reason why there is no message
void examineText(Classes const& classes, std::string_view json, ExaminedLine& line) {
    MetaData::Element input;
    MetaData::ReaderJson::Read(input, json);
    if (!input.isObject())
        throw Exception::InvalidParameter("a message is an object, this is " +
                                          std::string(describe(input.kind())));
    auto const* const id = input.find("MessageID");
    if (id == nullptr)
        throw Exception::InvalidParameter("there is no \"MessageID\"");
    line.id = idOf(input);
    if (!line.id)
        throw Exception::InvalidParameter("\"MessageID\" is no id: " + shortText(*id, 60));

    auto message = Msgs::Message::CreateFromMetaData(input);
    if (message == nullptr)
        throw Exception::InvalidParameter("unknown id " + hexadecimal(*line.id) + " (" +
                                          dotted(*line.id) + ")");
    message->copyToMetaData(line.tree);
    line.unread = findUnread(classes, input, *message, line.tree);
    line.message = std::move(message);
}

} // namespace

ExaminedLine examine(Classes const& classes, CapturedCout& printed, std::string_view json) {
    ExaminedLine line;
    try {
        examineText(classes, json, line);
    } catch (std::exception const& e) {
        line.error = e.what();
        if (line.error.empty())
            line.error = "failed without a reason";
    }
    line.notes = printed.takeLines();
    return line;
}

} // namespace Tolv::Tool
