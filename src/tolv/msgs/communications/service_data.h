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
    /// The messages and their route.
    Reflector<Structs::MessageKeyData> msgKey{this, "MsgKey"_key, Required};
    /// The number of providers or subscribers.
    Reflector<unsigned long long> count{this, "Count"_key, Required, 1ULL};
    /// The distance to the nearest one, in the forwarder's measure.
    Reflector<unsigned long long> shortestDistance{this, "ShortestDistance"_key, Required};

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
    /// In no particular order.
    ReflectorArray<ServiceData> services{this, "Services"_key, Required};
};

/// All subscriptions.
class TOLV_MESSAGES_API AllSubscriptionsData : public MirroredObject {
public:
    /// In no particular order.
    ReflectorArray<ServiceData> subscriptions{this, "Subscriptions"_key, Required};
};

} // namespace Tolv::Msgs::Communications::Forwarder
