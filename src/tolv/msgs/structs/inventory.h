#pragma once

#include <string>

#include <tolv/msgs/record.h>
#include <tolv/msgs/structs/places.h>

/// @file
/// The hardware in a chassis.
namespace Tolv::Msgs::Structs {

/// One replaceable unit.
class TOLV_MESSAGES_API FruData : public MirroredObject {
public:
    Reflector<bool> isPlaceholder{
        this,
        field<"isPlaceholder", Doc{"whether the record stands for an empty place, without a unit"}>,
        Required, true};
    Reflector<std::string> name{
        this,
        field<"name", Doc{"the human-readable name of the unit"}, Example{"Signal generator"}>,
        Required};
    Reflector<std::string> description{
        this,
        field<"description", Doc{"a human-readable description of the unit"},
              Example{"Vector signal generator, 6 GHz"}>,
        Required};
    Reflector<std::string> manufacturer{
        this,
        field<"manufacturer", Doc{"the human-readable name of the unit's manufacturer"},
              Example{"Example Instruments"}>,
        Required};
    Reflector<std::string> serialNumber{
        this,
        field<"serialNumber", Doc{"the serial number that the manufacturer gave to the unit"},
              Example{"SG-104233"}>,
        Required};
    Reflector<Slot> slot{
        this, field<"slot", Doc{"the slot in which the unit is installed"}, Example{"slot2"}>,
        Required, Slot::esm};
    Reflector<Lun> lun{this, field<"lun", Doc{"the logical unit within the slot"}>, Required,
                       Lun::lun0};
    Reflector<unsigned char> deviceId{
        this, field<"deviceId", Doc{"the number of the device within the logical unit"}>, Required,
        0};
    Reflector<bool> isAssignable{
        this,
        field<"isAssignable", Doc{"whether an application may claim the unit"}, Example{"true"}>,
        Required, true};
    Reflector<DeviceType> deviceType{this, field<"deviceType", Doc{"the kind of unit"}>, Required,
                                     DeviceType::fru};
    Reflector<std::string> state{
        this,
        field<"state", Doc{"the state of the unit, in the producer's words"}, Example{"ready"}>,
        Required};
    Reflector<std::string> version{
        this,
        field<"version",
              Doc{"the version of the unit's hardware or firmware, in the producer's format"},
              Example{"2.1.0"}>,
        Required};
    Reflector<std::string> ipAddress{
        this,
        field<"ipAddress", Doc{"the IP address of the unit; empty if it has none"},
              Example{"192.168.10.21"}>,
        Required};

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(FruData const& other) const;
};

/// One reading of a sensor.
class TOLV_MESSAGES_API SensorData : public MirroredObject {
public:
    Reflector<Slot> slot{this,
                         field<"slot", Doc{"the slot in which the sensor is"}, Example{"slot2"}>,
                         Required, Slot::esm};
    Reflector<Lun> lun{this, field<"lun", Doc{"the logical unit within the slot"}>, Required,
                       Lun::lun0};
    Reflector<unsigned char> deviceId{
        this, field<"deviceId", Doc{"the number of the device within the logical unit"}>, Required,
        0};
    Reflector<int> number{
        this, field<"number", Doc{"the number of the sensor within the device"}, Example{"3"}>,
        Required, 0};
    Reflector<std::string> name{
        this, field<"name", Doc{"the human-readable name of the sensor"}, Example{"Air inlet"}>,
        Required};
    Reflector<int> bank{
        this,
        field<"bank", Doc{"the fan bank to which the sensor belongs; -1 if it belongs to none"},
              Example{"-1"}>,
        Required, -1};
    Reflector<SensorType> type{this, field<"type", Doc{"the quantity that the sensor measures"}>,
                               Required, SensorType::unknown};
    Reflector<std::string> reading{
        this,
        field<"reading", Doc{"the measured value as text, in the producer's format and unit"},
              Example{"41.5"}>,
        Required};

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(SensorData const& other) const;
};

/// The speed of a fan bank.
class TOLV_MESSAGES_API FanBankData : public MirroredObject {
public:
    Reflector<int> bank{
        this, field<"bank", Doc{"the number of the fan bank; -1 if there is none"}, Example{"1"}>,
        Required, -1};
    Reflector<int> speed{
        this,
        field<"speed", Doc{"the speed of the fans, in the producer's unit; -1 if it is unknown"},
              Example{"50"}>,
        Required, -1};

    FanBankData() = default;
    /// The speed of this bank.
    FanBankData(Lossless<int> bank, Lossless<int> speed);

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(FanBankData const& other) const;
};

} // namespace Tolv::Msgs::Structs
