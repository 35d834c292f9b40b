#pragma once

#include <vector>

#include <tolv/msgs/message_helpers.h>
#include <tolv/msgs/record.h>

namespace Tolv::Msgs {

/// Marks a payload as a list of messages.
class isMessagesArray {};

/// The payload of a batch: whole messages of one class. The batch determines the class; the id of
/// an entry is read but not checked. If an entry or its payload cannot be read, the list is
/// unchanged (see `ReflectorArray`).
template <class Msg>
class MessagesArray : public MirroredObject, public isMessagesArray {
public:
    ReflectorArray<Msg> messages{
        this, field<"Messages", Doc{"the messages of the batch, each whole with its addresses"}>,
        Required};

    MessagesArray() = default;
    /// A batch of these messages.
    explicit MessagesArray(std::vector<Msg> const& list) { messages = list; }
};

} // namespace Tolv::Msgs
