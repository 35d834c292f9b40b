#pragma once

#include <tolv/msgs/export.h>
#include <tolv/msgs/structs/enum_words.h>

/// @file
/// Positions in a chassis, and the kinds of hardware found there. Each enumeration has a constant
/// table of its words, filled while the library loads.
namespace Tolv::Msgs::Structs {

/// A position in the chassis.
enum class Slot : int {
    esm = 0, ///< the embedded system module
    slot1 = 1,
    slot2 = 2,
    slot3 = 3,
    slot4 = 4,
    slot5 = 5,
    pem = 14, ///< the power entry module
    backplane = 15,
    ipass = 254 ///< the cabled PCIe link to an external host
};

/// A logical unit within a slot.
enum class Lun : int { lun0 = 0, lun1 = 1, lun2 = 2, lun3 = 3 };

/// The lanes of a link that are in use.
enum class Ports : int { ports_1 = 0, ports_1_2 = 1, ports_1_2_3_4 = 2 };

/// The position of the root of a PCIe tree. The words are those of `Slot`; the numbers differ.
enum class RootComplex : int {
    automatic = 0, ///< "auto"
    esm = 1,
    slot1 = 2,
    slot2 = 3,
    slot3 = 4,
    slot4 = 5,
    slot5 = 6,
    ipass = 7
};

/// What to do with the power.
enum class PowerAction : int { shutdown = 0, cycle = 1 };

/// The kind of unit.
enum class DeviceType : int {
    fru = 0, ///< a field-replaceable unit
    fanBank = 1,
    usb = 2,
    wifi = 3
};

/// The quantity that a sensor measures.
enum class SensorType : int {
    temperature = 0,
    fan = 1,
    voltage = 2,
    current = 3,
    lockDetect = 4, ///< "lock_detect"
    unknown = 5
};

/// Whether all PCIe devices of a chassis belong to one root.
enum class PcieDomainConfigMode : int { singleDomain = 0, multiDomain = 1 };

extern TOLV_MESSAGES_API EnumStringsThrow<Slot> const& SlotEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<Lun> const& LunEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<Ports> const& PortsEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<RootComplex> const& RootComplexEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<PowerAction> const& PowerActionEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<DeviceType> const& DeviceTypeEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<SensorType> const& SensorTypeEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<PcieDomainConfigMode> const& PcieDomainConfigModeEnums;

// These five are field types and are written as words.
inline auto const& stringsOf(Slot /*kind*/) noexcept { return SlotEnums; }
inline auto const& stringsOf(Lun /*kind*/) noexcept { return LunEnums; }
inline auto const& stringsOf(Ports /*kind*/) noexcept { return PortsEnums; }
inline auto const& stringsOf(DeviceType /*kind*/) noexcept { return DeviceTypeEnums; }
inline auto const& stringsOf(SensorType /*kind*/) noexcept { return SensorTypeEnums; }

inline std::string_view wordOf(Slot value) noexcept { return wordIn(SlotEnums, value); }
inline std::string_view wordOf(Lun value) noexcept { return wordIn(LunEnums, value); }
inline std::string_view wordOf(Ports value) noexcept { return wordIn(PortsEnums, value); }
inline std::string_view wordOf(RootComplex value) noexcept {
    return wordIn(RootComplexEnums, value);
}
inline std::string_view wordOf(PowerAction value) noexcept {
    return wordIn(PowerActionEnums, value);
}
inline std::string_view wordOf(DeviceType value) noexcept { return wordIn(DeviceTypeEnums, value); }
inline std::string_view wordOf(SensorType value) noexcept { return wordIn(SensorTypeEnums, value); }
inline std::string_view wordOf(PcieDomainConfigMode value) noexcept {
    return wordIn(PcieDomainConfigModeEnums, value);
}

} // namespace Tolv::Msgs::Structs
