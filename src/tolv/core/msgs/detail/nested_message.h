#pragma once

#include <tolv/core/export.h>

namespace Tolv::Msgs::Detail {

/// Counts the nesting of messages on the current thread. Create one on the stack while a nested
/// message is read or written.
class TOLV_CORE_API NestedMessage {
public:
    /// @throws Exception::InvalidOperation if the nesting exceeds `Limits::messageNesting`.
    NestedMessage();
    NestedMessage(NestedMessage const&) = delete;
    NestedMessage& operator=(NestedMessage const&) = delete;
    ~NestedMessage();
};

} // namespace Tolv::Msgs::Detail
