#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "classes.h"
#include "examined_line.h"
#include "json_object.h"
#include "style.h"

/// @file
/// The two forms in which `tolvmsg decode` shows a line, and `tolvmsg token` its message.
namespace Tolv::Tool {

/// Where a line stands.
struct LineNumber {
    std::string_view file; ///< empty when there is only one
    std::uint64_t number;  ///< from 1
};

/// The message, or why there is none, on several lines. The first begins with `title`.
std::string messageText(ExaminedLine const& line, std::string_view title, Classes const& classes,
                        Style const& style);

/// The members that describe the message, or why there is none.
/// @throws Exception::InvalidParameter when the message holds what JSON cannot
void addMessage(JsonObject& out, ExaminedLine const& line, Classes const& classes);

/// Several lines with a blank line behind them.
std::string textOf(ExaminedLine const& line, LineNumber const& where, Classes const& classes,
                   Style const& style);

/// One JSON object, with the end of its line.
/// @throws Exception::InvalidParameter when the message holds what JSON cannot
std::string jsonOf(ExaminedLine const& line, LineNumber const& where, Classes const& classes);

} // namespace Tolv::Tool
