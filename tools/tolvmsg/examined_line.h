#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "captured_cout.h"
#include "classes.h"
#include "comparison.h"

namespace Tolv::Tool {

/// What became of one line of the input.
struct ExaminedLine {
    std::optional<unsigned long long> id;
    std::string error; ///< why there is no message; empty when there is one

    std::shared_ptr<Msgs::Message> message;
    MetaData::Element tree; ///< what the message writes
    std::vector<Unread> unread;
    std::vector<std::string> notes; ///< what the library printed meanwhile
};

/// Makes the message of a JSON text through the factory. It does not throw for what the text holds.
ExaminedLine examine(Classes const& classes, CapturedCout& printed, std::string_view json);

/// The same for a text that has been parsed.
ExaminedLine examine(Classes const& classes, CapturedCout& printed, MetaData::Element const& input);

} // namespace Tolv::Tool
