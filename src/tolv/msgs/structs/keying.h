#pragma once

#include <tolv/msgs/record.h>
#include <tolv/msgs/structs/places.h>

/// @file
/// Electronic keying: which links between endpoints are enabled.
namespace Tolv::Msgs::Structs {

/// One end of a link.
class TOLV_MESSAGES_API EKeyingEndpoint : public MirroredObject {
public:
    Reflector<Slot> slot{this,
                         field<"slot", Doc{"the slot in which the endpoint is"}, Example{"slot1"}>,
                         Required, Slot::esm};
    Reflector<Lun> lun{this, field<"lun", Doc{"the logical unit within the slot"}>, Required,
                       Lun::lun0};
    Reflector<unsigned char> deviceId{
        this, field<"deviceId", Doc{"the number of the device within the logical unit"}>, Required,
        0};
    Reflector<int> channel{
        this, field<"channel", Doc{"the number of the channel within the device"}, Example{"1"}>,
        Required, 0};
    Reflector<int> group{
        this, field<"group", Doc{"the group of links to which the endpoint belongs"}>, Required, 0};

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(EKeyingEndpoint const& other) const;
};

/// The type of a link.
class TOLV_MESSAGES_API EKeyingLink : public MirroredObject {
public:
    Reflector<int> extension{
        this,
        field<"extension", Doc{"the extension of the link type, in the backplane's numbering"}>,
        Required, 0};
    Reflector<int> type{
        this,
        field<"type", Doc{"the type of the link, in the backplane's numbering"}, Example{"2"}>,
        Required, 0};
    Reflector<int> iface{
        this, field<"iface", Doc{"the interface of the link, in the backplane's numbering"}>,
        Required, 0};

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(EKeyingLink const& other) const;
};

/// A link between two endpoints, and whether it is enabled.
class TOLV_MESSAGES_API EKeyingData : public MirroredObject {
public:
    Reflector<bool> enabled{this,
                            field<"enabled", Doc{"whether the link may be used"}, Example{"true"}>,
                            Required, false};
    Reflector<EKeyingEndpoint> source{
        this, field<"source", Doc{"the endpoint at one end of the link"}>, Required};
    Reflector<EKeyingEndpoint> destination{
        this, field<"destination", Doc{"the endpoint at the other end of the link"}>, Required};
    Reflector<EKeyingLink> link{
        this, field<"link", Doc{"the type of the link, with its extension and interface"}>,
        Required};
    Reflector<int> group{
        this,
        field<"group",
              Doc{"the group to which the link belongs, independent of its endpoints' groups"}>,
        Required, 0};
    Reflector<Ports> ports{
        this, field<"ports", Doc{"the lanes of the link that are in use"}, Example{"ports_1_2"}>,
        Required, Ports::ports_1};

    /// Whether all fields are equal, including those of nested records.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(EKeyingData const& other) const;
};

} // namespace Tolv::Msgs::Structs
