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

/// An array of numbers out of a message, with what the attribute says of it.
struct Trace {
    std::uint64_t line = 0; ///< where it was found, from 1
    std::optional<unsigned long long> id;
    std::string name; ///< of the attribute; empty: not told
    std::string unit; ///< likewise
    Samples samples;
    std::vector<std::pair<unsigned long long, unsigned long long>> segments; ///< offset, length
};

/// The trace at `path` of a message; of an empty path the first array under the key "trace".
std::optional<Trace> findTrace(MetaData::Element const& tree, std::string_view path);

} // namespace Tolv::Tool
