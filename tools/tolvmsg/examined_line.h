#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <tolv/core/limits.h>
#include <tolv/core/msgs/message.h>
#include <tolv/msgs/introspection/explanation.h>

#include "captured_cout.h"

namespace Tolv::Tool {

/// The result of examining one line of the input.
struct ExaminedLine {
    std::optional<unsigned long long> id;
    std::string error; ///< why there is no message; empty if there is one

    std::shared_ptr<Msgs::Message> message;
    MetaData::Element input;
    MetaData::Element tree;                             ///< the tree that the message writes
    std::vector<Msgs::Introspection::Problem> problems; ///< what did not parse
    std::vector<Msgs::Introspection::Problem>
        literals;                   ///< values that parsed, but have no defined meaning
    std::vector<std::string> notes; ///< what the library printed in the meantime
};

/// Parses a JSON text without creating its message. Sets the tree, and the id if there is one, or
/// the error if the text is not JSON. Does not throw because of the content of the text.
ExaminedLine parse(std::string_view json, Limits const& limits = {});

/// Creates the message of a JSON text with the factory. Does not throw because of the content of
/// the text.
ExaminedLine examine(CapturedCout& printed, std::string_view json, Limits const& limits = {});

/// The same for a parsed text.
ExaminedLine examine(CapturedCout& printed, MetaData::Element const& input);

} // namespace Tolv::Tool
