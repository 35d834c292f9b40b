#pragma once

#include <tolv/msgs/record.h>
#include <tolv/msgs/structs/places.h>

/// @file
/// PCIe domains: a root device and the endpoints below it.
namespace Tolv::Msgs::Structs {

/// A device on the PCIe bus. Unlike elsewhere, device ids start at 1.
class TOLV_MESSAGES_API PcieDevice : public MirroredObject {
public:
    Reflector<Slot> slot{this,
                         field<"slot", Doc{"the slot in which the device is"}, Example{"slot3"}>,
                         Required, Slot::esm};
    Reflector<unsigned char> deviceId{
        this,
        field<"deviceId", Doc{"the number of the device within the slot, counted from 1"},
              Example{"1"}>,
        Required, 1};
    Reflector<bool> isRoot{this, field<"isRoot", Doc{"whether the device is the root of a domain"}>,
                           Required, false};
};

/// The root device, if known, and its endpoint devices.
class TOLV_MESSAGES_API PcieDomain : public MirroredObject {
public:
    Reflector<PcieDevice> root{
        this, field<"root", Doc{"the root device of the domain; absent if it is unknown"}>,
        Optional};
    ReflectorArray<PcieDevice> endpoints{
        this, field<"endpoints", Doc{"the devices below the root"}>, Required};
};

} // namespace Tolv::Msgs::Structs
