#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <tolv/core/limits.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs::Attrs {

/// What a pattern becomes when it is compiled.
struct PatternSize {
    std::size_t states = 0; ///< that a match may pass
    std::size_t built = 0;  ///< with what the compiler builds on the way
};

/// What libstdc++ builds for `pattern`, a regular expression in the POSIX extended grammar,
/// exactly; any number when it is no expression. Thread-safe.
/// @throws std::regex_error beyond `limits`.
TOLV_MESSAGES_API PatternSize sizeOf(std::string_view pattern, Limits const& limits = {});

/// Whether the whole of `text` matches `pattern`, a regular expression in the POSIX extended
/// grammar, in the default locale. Thread-safe.
/// @throws std::regex_error when `pattern` is no expression, or when it, or its work on this text,
/// is beyond `limits`.
bool matchesWhole(std::string const& text, std::string const& pattern, Limits const& limits = {});

} // namespace Tolv::Msgs::Attrs
