#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <tolv/core/limits.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs::Attrs {

/// The size of a compiled pattern.
struct PatternSize {
    std::size_t states = 0; ///< states of the automaton
    std::size_t built = 0;  ///< including temporary states of the compiler
};

/// Exactly what libstdc++ builds for `pattern`, a regular expression in the POSIX extended grammar;
/// any number if `pattern` is not a valid expression. Thread-safe.
/// @throws std::regex_error if `limits` are exceeded.
TOLV_MESSAGES_API PatternSize sizeOf(std::string_view pattern, Limits const& limits = {});

/// Whether the whole of `text` matches `pattern`, a regular expression in the POSIX extended
/// grammar, in the default locale. Thread-safe.
/// @throws std::regex_error if `pattern` is not a valid expression, or if its size or the work on
/// this text exceeds `limits`.
bool matchesWhole(std::string const& text, std::string const& pattern, Limits const& limits = {});

} // namespace Tolv::Msgs::Attrs
