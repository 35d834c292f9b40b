#pragma once

#include <tolv/msgs/record.h>
#include <tolv/msgs/structs/places.h>

/// @file
/// Electronic keying: which links between endpoints are enabled.
namespace Tolv::Msgs::Structs {

/// One end of a link.
class TOLV_MESSAGES_API EKeyingEndpoint : public MirroredObject {
public:
    Reflector<Slot> slot{this, "slot"_key, Required, Slot::esm}; ///< where the endpoint is
    Reflector<Lun> lun{this, "lun"_key, Required, Lun::lun0};    ///< the unit within the slot
    /// The device within the unit.
    Reflector<unsigned char> deviceId{this, "deviceId"_key, Required, 0};
    Reflector<int> channel{this, "channel"_key, Required, 0}; ///< of the device
    Reflector<int> group{this, "group"_key, Required, 0};     ///< of links

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(EKeyingEndpoint const& other) const;
};

/// The type of a link.
class TOLV_MESSAGES_API EKeyingLink : public MirroredObject {
public:
    Reflector<int> extension{this, "extension"_key, Required, 0}; ///< in the backplane's numbering
    Reflector<int> type{this, "type"_key, Required, 0};           ///< in the backplane's numbering
    Reflector<int> iface{this, "iface"_key, Required, 0};         ///< in the backplane's numbering

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(EKeyingLink const& other) const;
};

/// A link between two endpoints, and whether it is enabled.
class TOLV_MESSAGES_API EKeyingData : public MirroredObject {
public:
    Reflector<bool> enabled{this, "enabled"_key, Required, false}; ///< whether the link may be used
    Reflector<EKeyingEndpoint> source{this, "source"_key, Required};           ///< one end
    Reflector<EKeyingEndpoint> destination{this, "destination"_key, Required}; ///< the other end
    Reflector<EKeyingLink> link{this, "link"_key, Required}; ///< the type of the link
    Reflector<int> group{this, "group"_key, Required, 0}; ///< independent of the endpoints' groups
    Reflector<Ports> ports{this, "ports"_key, Required, Ports::ports_1}; ///< the lanes in use

    /// Whether all fields are equal, including those of nested records.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(EKeyingData const& other) const;
};

} // namespace Tolv::Msgs::Structs
