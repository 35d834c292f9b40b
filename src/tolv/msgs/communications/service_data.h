#pragma once

#include <tolv/msgs/communications/message_key_data.h>
#include <tolv/msgs/record.h>

/// @file
/// Services and subscriptions, as reported between the forwarder and its clients. Each is
/// identified by a message key: the messages that are offered or requested, and their route.
namespace Tolv::Msgs::Communications::Forwarder {

/// One service or subscription.
class TOLV_MESSAGES_API ServiceData : public MirroredObject {
public:
    Reflector<Structs::MessageKeyData> msgKey{
        this, field<"MsgKey", Doc{"the messages that are offered or requested, and their route"}>,
        Required};
    Reflector<unsigned long long> count{
        this, field<"Count", Doc{"how many clients provide or subscribe"}, Example{"1"}>, Required,
        1ULL};
    Reflector<unsigned long long> shortestDistance{
        this,
        field<"ShortestDistance",
              Doc{"the distance to the nearest provider or subscriber, in the forwarder's measure"},
              Example{"2"}>,
        Required};

    ServiceData() = default;
    /// A service or subscription with all fields.
    ServiceData(MessageKey const& key, unsigned long long count,
                unsigned long long shortestDistance);
    /// @throws Exception::InvalidOperation if "MsgKey" of `other` is uninitialized.
    ServiceData(ServiceData const& other);
    ServiceData& operator=(ServiceData const&) = default;
};

/// All services.
class TOLV_MESSAGES_API AllServicesData : public MirroredObject {
public:
    ReflectorArray<ServiceData> services{
        this,
        field<"Services", Doc{"all services that the forwarder knows, in no particular order"}>,
        Required};
};

/// All subscriptions.
class TOLV_MESSAGES_API AllSubscriptionsData : public MirroredObject {
public:
    ReflectorArray<ServiceData> subscriptions{
        this,
        field<"Subscriptions",
              Doc{"all subscriptions that the forwarder knows, in no particular order"}>,
        Required};
};

} // namespace Tolv::Msgs::Communications::Forwarder
