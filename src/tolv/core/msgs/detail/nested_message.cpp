#include <tolv/core/msgs/detail/nested_message.h>

#include <cstddef>
#include <string>

#include <tolv/core/exceptions.h>
#include <tolv/core/limits.h>

namespace Tolv::Msgs::Detail {

namespace {

// Trivially destructible: a thread-local destructor would keep the library from being unloaded.
constinit thread_local std::size_t depth = 1;

} // namespace

NestedMessage::NestedMessage() {
    constexpr auto most = Limits{}.messageNesting;
    if (depth == most)
        throw Exception::InvalidOperation("more than " + std::to_string(most) + " nested messages");
    ++depth;
}

NestedMessage::~NestedMessage() { --depth; }

} // namespace Tolv::Msgs::Detail
