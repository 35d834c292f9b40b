#pragma once

#include <string>

#include <tolv/core/limits.h>

namespace Tolv::Msgs::Attrs {

/// Whether the whole of `text` matches `pattern`, a regular expression in the POSIX extended
/// grammar, in the default locale. Thread-safe.
/// @throws std::regex_error when `pattern` is no expression, or when it, or its work on this text,
/// is beyond `limits`.
bool matchesWhole(std::string const& text, std::string const& pattern, Limits const& limits = {});

} // namespace Tolv::Msgs::Attrs
