#pragma once

#include <tolv/msgs/communications/message_key_data.h>
#include <tolv/msgs/record.h>

/// @file
/// What the forwarder and its clients say of services and subscriptions. Either is described by a
/// message key: the messages that are offered or wanted, on which route.
namespace Tolv::Msgs::Communications::Forwarder {

/// One service or subscription.
class TOLV_MESSAGES_API ServiceData : public MirroredObject {
public:
    /// Which messages, on which route.
    Reflector<Structs::MessageKeyData> msgKey{this, "MsgKey"_key, Required};
    /// How many there are of it.
    Reflector<unsigned long long> count{this, "Count"_key, Required, 1ULL};
    /// To the nearest of them, as the forwarder counts distance.
    Reflector<unsigned long long> shortestDistance{this, "ShortestDistance"_key, Required};

    ServiceData() = default;
    /// A service or subscription with all fields.
    ServiceData(MessageKey const& key, unsigned long long count,
                unsigned long long shortestDistance);
    /// @throws Exception::InvalidOperation when "MsgKey" of `other` is uninitialized.
    ServiceData(ServiceData const& other);
    ServiceData& operator=(ServiceData const&) = default;
};

/// All services.
class TOLV_MESSAGES_API AllServicesData : public MirroredObject {
public:
    /// In no particular order.
    ReflectorArray<ServiceData> services{this, "Services"_key, Required};

    AllServicesData() = default;
    AllServicesData(AllServicesData const& other) : AllServicesData() { *this = other; }
    AllServicesData& operator=(AllServicesData const&) = default;
};

/// All subscriptions.
class TOLV_MESSAGES_API AllSubscriptionsData : public MirroredObject {
public:
    /// In no particular order.
    ReflectorArray<ServiceData> subscriptions{this, "Subscriptions"_key, Required};

    AllSubscriptionsData() = default;
    AllSubscriptionsData(AllSubscriptionsData const& other) : AllSubscriptionsData() {
        *this = other;
    }
    AllSubscriptionsData& operator=(AllSubscriptionsData const&) = default;
};

} // namespace Tolv::Msgs::Communications::Forwarder
