#include <tolv/msgs/structs/places.h>

namespace Tolv::Msgs::Structs {

// All tables are in this file so that they are filled in this order.

namespace {

EnumStringsThrow<Slot> const slotTable{
    {Slot::esm, "esm"},     {Slot::pem, "pem"},     {Slot::backplane, "backplane"},
    {Slot::ipass, "ipass"}, {Slot::slot1, "slot1"}, {Slot::slot2, "slot2"},
    {Slot::slot3, "slot3"}, {Slot::slot4, "slot4"}, {Slot::slot5, "slot5"},
};

EnumStringsThrow<Lun> const lunTable{
    {Lun::lun0, "lun0"},
    {Lun::lun1, "lun1"},
    {Lun::lun2, "lun2"},
    {Lun::lun3, "lun3"},
};

EnumStringsThrow<Ports> const portsTable{
    {Ports::ports_1, "ports_1"},
    {Ports::ports_1_2, "ports_1_2"},
    {Ports::ports_1_2_3_4, "ports_1_2_3_4"},
};

EnumStringsThrow<RootComplex> const rootComplexTable{
    {RootComplex::automatic, "auto"}, {RootComplex::esm, "esm"},     {RootComplex::ipass, "ipass"},
    {RootComplex::slot1, "slot1"},    {RootComplex::slot2, "slot2"}, {RootComplex::slot3, "slot3"},
    {RootComplex::slot4, "slot4"},    {RootComplex::slot5, "slot5"},
};

EnumStringsThrow<PowerAction> const powerActionTable{
    {PowerAction::shutdown, "shutdown"},
    {PowerAction::cycle, "cycle"},
};

EnumStringsThrow<DeviceType> const deviceTypeTable{
    {DeviceType::fru, "fru"},
    {DeviceType::fanBank, "fanBank"},
    {DeviceType::usb, "usb"},
    {DeviceType::wifi, "wifi"},
};

EnumStringsThrow<SensorType> const sensorTypeTable{
    {SensorType::temperature, "temperature"}, {SensorType::fan, "fan"},
    {SensorType::voltage, "voltage"},         {SensorType::current, "current"},
    {SensorType::lockDetect, "lock_detect"},  {SensorType::unknown, "unknown"},
};

EnumStringsThrow<PcieDomainConfigMode> const pcieDomainConfigModeTable{
    {PcieDomainConfigMode::singleDomain, "singleDomain"},
    {PcieDomainConfigMode::multiDomain, "multiDomain"},
};

} // namespace

// References, for the same reason as `messageTypeMapper`.
constinit EnumStringsThrow<Slot> const& SlotEnums = slotTable;
constinit EnumStringsThrow<Lun> const& LunEnums = lunTable;
constinit EnumStringsThrow<Ports> const& PortsEnums = portsTable;
constinit EnumStringsThrow<RootComplex> const& RootComplexEnums = rootComplexTable;
constinit EnumStringsThrow<PowerAction> const& PowerActionEnums = powerActionTable;
constinit EnumStringsThrow<DeviceType> const& DeviceTypeEnums = deviceTypeTable;
constinit EnumStringsThrow<SensorType> const& SensorTypeEnums = sensorTypeTable;
constinit EnumStringsThrow<PcieDomainConfigMode> const& PcieDomainConfigModeEnums =
    pcieDomainConfigModeTable;

} // namespace Tolv::Msgs::Structs
