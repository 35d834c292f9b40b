#pragma once

#include <sstream>
#include <stdexcept>
#include <string>

namespace Example {

/// Something came that is not what should have come.
struct CheckFailed : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Compares what came with what should have come. @throws CheckFailed
template <class Came, class Wanted>
void check(std::string const& what, Came const& came, Wanted const& wanted) {
    if (came == wanted)
        return;
    std::ostringstream text;
    text << std::boolalpha << what << " is \"" << came << "\" and should be \"" << wanted << '"';
    throw CheckFailed(text.str());
}

/// The same for what has no text of its own.
inline void check(std::string const& what, bool holds) {
    if (!holds)
        throw CheckFailed(what + ": this does not hold");
}

} // namespace Example
