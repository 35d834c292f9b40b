#pragma once

#include <tolv/core/export.h>

namespace Tolv::Msgs::Detail {

/// Stands on the stack of this thread while a message within a message is read or written, and so
/// counts how many are in one another.
class TOLV_CORE_API NestedMessage {
public:
    /// @throws Exception::InvalidOperation beyond `Limits::messageNesting`.
    NestedMessage();
    NestedMessage(NestedMessage const&) = delete;
    NestedMessage& operator=(NestedMessage const&) = delete;
    ~NestedMessage();
};

} // namespace Tolv::Msgs::Detail
