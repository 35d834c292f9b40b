#pragma once

#include <vector>

#include <tolv/msgs/message_helpers.h>
#include <tolv/msgs/record.h>

namespace Tolv::Msgs {

/// Marks a payload as a list of messages.
class isMessagesArray {};

/// The payload of a batch: whole messages of one class. The class is fixed by the batch: the id of
/// an entry is read into it, but not looked at. An entry that doesn't read leaves the list as it
/// was (see `ReflectorArray`); so does one whose payload doesn't read.
template <class Msg>
class MessagesArray : public MirroredObject, public isMessagesArray {
public:
    /// Whole messages, addresses included.
    ReflectorArray<Msg> messages{this, "Messages"_key, Required};

    MessagesArray() = default;
    /// A batch of these messages.
    explicit MessagesArray(std::vector<Msg> const& list) { messages = list; }
    MessagesArray(MessagesArray const& other) : MessagesArray() { *this = other; }
    MessagesArray& operator=(MessagesArray const&) = default;
};

} // namespace Tolv::Msgs
