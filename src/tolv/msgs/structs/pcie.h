#pragma once

#include <tolv/msgs/record.h>
#include <tolv/msgs/structs/places.h>

/// @file
/// PCIe domains: a root device and the endpoints below it.
namespace Tolv::Msgs::Structs {

/// A device on the PCIe bus. Unlike elsewhere, device ids start at 1.
class TOLV_MESSAGES_API PcieDevice : public MirroredObject {
public:
    Reflector<Slot> slot{this, "slot"_key, Required, Slot::esm}; ///< where the device is
    /// The device within the slot, from 1.
    Reflector<unsigned char> deviceId{this, "deviceId"_key, Required, 1};
    /// Whether the device is the root of a domain.
    Reflector<bool> isRoot{this, "isRoot"_key, Required, false};
};

/// The root device, if known, and its endpoint devices.
class TOLV_MESSAGES_API PcieDomain : public MirroredObject {
public:
    Reflector<PcieDevice> root{this, "root"_key, Optional}; ///< unset if unknown
    /// The devices below the root.
    ReflectorArray<PcieDevice> endpoints{this, "endpoints"_key, Required};
};

} // namespace Tolv::Msgs::Structs
