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

/// What became of one line of the input.
struct ExaminedLine {
    std::optional<unsigned long long> id;
    std::string error; ///< why there is no message; empty when there is one

    std::shared_ptr<Msgs::Message> message;
    MetaData::Element input;
    MetaData::Element tree;                             ///< what the message writes
    std::vector<Msgs::Introspection::Problem> problems; ///< with what did not read
    std::vector<Msgs::Introspection::Problem> literals; ///< values that read, but have no meaning
    std::vector<std::string> notes;                     ///< what the library printed meanwhile
};

/// Reads a JSON text without making its message: gives its tree and the id, where it has one. The
/// error is set when it is no JSON. It does not throw for what the text holds.
ExaminedLine parse(std::string_view json, Limits const& limits = {});

/// Makes the message of a JSON text through the factory. It does not throw for what the text holds.
ExaminedLine examine(CapturedCout& printed, std::string_view json, Limits const& limits = {});

/// The same for a text that has been parsed.
ExaminedLine examine(CapturedCout& printed, MetaData::Element const& input);

} // namespace Tolv::Tool
