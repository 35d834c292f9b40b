#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "classes.h"
#include "examined_line.h"
#include "json_object.h"
#include "style.h"

/// @file
/// The two output forms of a line in `tolvmsg decode`, and of the message in `tolvmsg token`.
namespace Tolv::Tool {

/// The position of a line.
struct LineNumber {
    std::string_view file; ///< empty if there is only one file
    std::uint64_t number;  ///< from 1
};

/// The message, or the reason why there is none, on several lines. The first begins with `title`.
std::string messageText(ExaminedLine const& line, std::string_view title, Classes const& classes,
                        Style const& style);

/// Adds members that describe the message, or the reason why there is none.
/// @throws Exception::InvalidParameter if JSON cannot represent the message
void addMessage(JsonObject& out, ExaminedLine const& line, Classes const& classes);

/// Several lines, followed by a blank line.
std::string textOf(ExaminedLine const& line, LineNumber const& where, Classes const& classes,
                   Style const& style);

/// One JSON object, with a line end.
/// @throws Exception::InvalidParameter if JSON cannot represent the message
std::string jsonOf(ExaminedLine const& line, LineNumber const& where, Classes const& classes);

} // namespace Tolv::Tool
