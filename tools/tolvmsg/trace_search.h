#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <tolv/core/metadata/element.h>

#include "samples.h"

namespace Tolv::Tool {

/// An array of numbers in a message, with its description from the attribute.
struct Trace {
    std::uint64_t line = 0; ///< the line of the message, from 1
    std::optional<unsigned long long> id;
    std::string name; ///< name of the attribute; empty if not known
    std::string unit; ///< unit of the attribute; empty if not known
    Samples samples;
    std::vector<std::pair<unsigned long long, unsigned long long>> segments; ///< offset, length
};

/// The trace at `path` in a message; if the path is empty, the first array under a key "trace".
std::optional<Trace> findTrace(MetaData::Element const& tree, std::string_view path);

} // namespace Tolv::Tool
