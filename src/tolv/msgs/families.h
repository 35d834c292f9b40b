#pragma once

#include <tolv/msgs/message_family.h>

/// @file
/// The base classes of the message families.

namespace Tolv::Msgs {

namespace Sys {

/// Family 1: the system as a whole.
class TOLV_MESSAGES_API SystemMessage : public OpenMessageFamily<Message, 1> {
public:
    using OpenMessageFamily::OpenMessageFamily;
};

} // namespace Sys

namespace Engine {

/// Family 2: engines, which are driven as state machines.
class TOLV_MESSAGES_API EngineMessage : public OpenMessageFamily<Message, 2> {
public:
    using OpenMessageFamily::OpenMessageFamily;
};

/// Family 2 with `sub2` 1: requests to the state machine of an engine.
class TOLV_MESSAGES_API StateMessage : public MessageFamily<EngineMessage, 2, 0, 1> {
public:
    /// The id of a message of this family.
    static Identifier idBuilder(unsigned short type) {
        return EngineMessage::idBuilder(type, 0, 1);
    }

    using MessageFamily::MessageFamily;
};

} // namespace Engine

namespace App {

/// Family 3: control of the applications on an instrument.
class TOLV_MESSAGES_API AppMessage : public OpenMessageFamily<Message, 3> {
public:
    using OpenMessageFamily::OpenMessageFamily;
};

} // namespace App

namespace Attrs {

/// Family 4: attribute values, traces and records.
class TOLV_MESSAGES_API AttrMessage : public OpenMessageFamily<Message, 4> {
public:
    using OpenMessageFamily::OpenMessageFamily;
};

/// Family 4 with `sub1` 1: batches of attribute messages.
class TOLV_MESSAGES_API AttrArrays : public MessageFamily<AttrMessage, 4, 1> {
public:
    /// `sub1` is always 1, whatever the second argument.
    static Identifier idBuilder(unsigned short type, unsigned short /*sub1*/, unsigned short sub2) {
        return AttrMessage::idBuilder(type, 1, sub2);
    }

    using MessageFamily::MessageFamily;
};

} // namespace Attrs

namespace Errs {

/// Family 5: error reports.
class TOLV_MESSAGES_API ErrorMessage : public MessageFamily<Message, 5> {
public:
    /// The number of the error message within the family.
    [[nodiscard]] unsigned short errorType() const { return id().type(); }

    using MessageFamily::MessageFamily;
};

} // namespace Errs

namespace Excepts {

/// Family 6: exceptions as messages.
class TOLV_MESSAGES_API ExceptionMessage : public OpenMessageFamily<Message, 6> {
public:
    using OpenMessageFamily::OpenMessageFamily;
};

} // namespace Excepts

namespace Notifs {

/// Family 7: unsolicited messages.
class TOLV_MESSAGES_API Notification : public Message {
public:
    /// 1: about an attribute, 2: about an application, 3: about the system.
    [[nodiscard]] unsigned short notifCategory() const { return id().sub2(); }
    /// The number of the notification within its category.
    [[nodiscard]] unsigned short notifType() const { return id().type(); }

    using Message::Message;
};

/// Notifications about an attribute.
class TOLV_MESSAGES_API AttrNotification : public MessageFamily<Notification, 7, 0, 1> {
public:
    using MessageFamily::MessageFamily;
};

/// Notifications about an application.
class TOLV_MESSAGES_API AppNotification : public MessageFamily<Notification, 7, 0, 2> {
public:
    using MessageFamily::MessageFamily;
};

/// Notifications about the system.
class TOLV_MESSAGES_API SystemNotification : public MessageFamily<Notification, 7, 0, 3> {
public:
    using MessageFamily::MessageFamily;
};

} // namespace Notifs

namespace Communications {

/// Family 9: message routing.
class TOLV_MESSAGES_API CommunicationsMessage : public OpenMessageFamily<Message, 9> {
public:
    using OpenMessageFamily::OpenMessageFamily;
};

namespace Forwarder {

/// Family 9 with `sub1` 1: messages between the forwarder and its clients.
class TOLV_MESSAGES_API Base : public MessageFamily<CommunicationsMessage, 9, 1> {
public:
    /// `sub1` is always 1, whatever the second argument.
    static Identifier idBuilder(unsigned short type, unsigned short /*sub1*/, unsigned short sub2) {
        return CommunicationsMessage::idBuilder(type, 1, sub2);
    }

    using MessageFamily::MessageFamily;
};

} // namespace Forwarder

} // namespace Communications

} // namespace Tolv::Msgs
