#pragma once

#include <string>

#include <tolv/msgs/record.h>
#include <tolv/msgs/structs/places.h>

/// @file
/// What hardware a chassis contains.
namespace Tolv::Msgs::Structs {

/// One replaceable unit.
class TOLV_MESSAGES_API FruData : public MirroredObject {
public:
    Reflector<bool> isPlaceholder{this, "isPlaceholder"_key, Required, true}; ///< nothing is there
    Reflector<std::string> name{this, "name"_key, Required};                  ///< for people
    Reflector<std::string> description{this, "description"_key, Required};    ///< for people
    Reflector<std::string> manufacturer{this, "manufacturer"_key, Required};  ///< for people
    Reflector<std::string> serialNumber{this, "serialNumber"_key, Required}; ///< the manufacturer's
    Reflector<Slot> slot{this, "slot"_key, Required, Slot::esm};             ///< where it is
    Reflector<Lun> lun{this, "lun"_key, Required, Lun::lun0}; ///< which unit of the slot
    /// Which device of the unit.
    Reflector<unsigned char> deviceId{this, "deviceId"_key, Required, 0};
    /// Whether an application may claim it.
    Reflector<bool> isAssignable{this, "isAssignable"_key, Required, true};
    /// What it is.
    Reflector<DeviceType> deviceType{this, "deviceType"_key, Required, DeviceType::fru};
    Reflector<std::string> state{this, "state"_key, Required};     ///< as the producer words it
    Reflector<std::string> version{this, "version"_key, Required}; ///< of its hardware or firmware
    Reflector<std::string> ipAddress{this, "ipAddress"_key, Required}; ///< empty: none

    FruData() = default;
    FruData(FruData const& other) : FruData() { *this = other; }
    FruData& operator=(FruData const&) = default;

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation at a field that did not read.
    bool operator==(FruData const& other) const;
};

/// One reading of a sensor.
class TOLV_MESSAGES_API SensorData : public MirroredObject {
public:
    Reflector<Slot> slot{this, "slot"_key, Required, Slot::esm}; ///< where it is
    Reflector<Lun> lun{this, "lun"_key, Required, Lun::lun0};    ///< which unit of the slot
    /// Which device of the unit.
    Reflector<unsigned char> deviceId{this, "deviceId"_key, Required, 0};
    Reflector<int> number{this, "number"_key, Required, 0};  ///< which sensor of the device
    Reflector<std::string> name{this, "name"_key, Required}; ///< for people
    Reflector<int> bank{this, "bank"_key, Required, -1};     ///< the fan bank; -1: none
    /// What it measures.
    Reflector<SensorType> type{this, "type"_key, Required, SensorType::unknown};
    Reflector<std::string> reading{this, "reading"_key, Required}; ///< as the producer words it

    SensorData() = default;
    SensorData(SensorData const& other) : SensorData() { *this = other; }
    SensorData& operator=(SensorData const&) = default;

    /// Whether all fields are equal.
    /// @throws Exception::InvalidOperation at a field that did not read.
    bool operator==(SensorData const& other) const;
};

/// The speed of a bank of fans.
class TOLV_MESSAGES_API FanBankData : public MirroredObject {
public:
    Reflector<int> bank{this, "bank"_key, Required, -1}; ///< which bank; -1: none
    /// As the producer scales it; -1: unknown.
    Reflector<int> speed{this, "speed"_key, Required, -1};

    FanBankData() = default;
    /// The speed of this bank.
    FanBankData(Lossless<int> bank, Lossless<int> speed);
    FanBankData(FanBankData const& other) : FanBankData() { *this = other; }
    FanBankData& operator=(FanBankData const&) = default;

    /// Whether both fields are equal.
    /// @throws Exception::InvalidOperation at a field that did not read.
    bool operator==(FanBankData const& other) const;
};

} // namespace Tolv::Msgs::Structs
