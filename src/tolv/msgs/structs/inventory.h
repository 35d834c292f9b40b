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
    /// True if no unit is installed.
    Reflector<bool> isPlaceholder{this, "isPlaceholder"_key, Required, true};
    Reflector<std::string> name{this, "name"_key, Required};                 ///< human-readable
    Reflector<std::string> description{this, "description"_key, Required};   ///< human-readable
    Reflector<std::string> manufacturer{this, "manufacturer"_key, Required}; ///< human-readable
    Reflector<std::string> serialNumber{this, "serialNumber"_key, Required}; ///< the manufacturer's
    Reflector<Slot> slot{this, "slot"_key, Required, Slot::esm};             ///< where the unit is
    Reflector<Lun> lun{this, "lun"_key, Required, Lun::lun0}; ///< the unit within the slot
    /// The device within the unit.
    Reflector<unsigned char> deviceId{this, "deviceId"_key, Required, 0};
    /// Whether an application may claim the unit.
    Reflector<bool> isAssignable{this, "isAssignable"_key, Required, true};
    /// The kind of unit.
    Reflector<DeviceType> deviceType{this, "deviceType"_key, Required, DeviceType::fru};
    Reflector<std::string> state{this, "state"_key, Required};     ///< in the producer's words
    Reflector<std::string> version{this, "version"_key, Required}; ///< of its hardware or firmware
    Reflector<std::string> ipAddress{this, "ipAddress"_key, Required}; ///< empty if none

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(FruData const& other) const;
};

/// One reading of a sensor.
class TOLV_MESSAGES_API SensorData : public MirroredObject {
public:
    Reflector<Slot> slot{this, "slot"_key, Required, Slot::esm}; ///< where the sensor is
    Reflector<Lun> lun{this, "lun"_key, Required, Lun::lun0};    ///< the unit within the slot
    /// The device within the unit.
    Reflector<unsigned char> deviceId{this, "deviceId"_key, Required, 0};
    Reflector<int> number{this, "number"_key, Required, 0};  ///< the sensor within the device
    Reflector<std::string> name{this, "name"_key, Required}; ///< human-readable
    Reflector<int> bank{this, "bank"_key, Required, -1};     ///< the fan bank; -1 if none
    /// The measured quantity.
    Reflector<SensorType> type{this, "type"_key, Required, SensorType::unknown};
    Reflector<std::string> reading{this, "reading"_key, Required}; ///< in the producer's words

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(SensorData const& other) const;
};

/// The speed of a fan bank.
class TOLV_MESSAGES_API FanBankData : public MirroredObject {
public:
    Reflector<int> bank{this, "bank"_key, Required, -1}; ///< -1 if none
    /// In the producer's unit; -1 if unknown.
    Reflector<int> speed{this, "speed"_key, Required, -1};

    FanBankData() = default;
    /// The speed of this bank.
    FanBankData(Lossless<int> bank, Lossless<int> speed);

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(FanBankData const& other) const;
};

} // namespace Tolv::Msgs::Structs
