#include <tolv/msgs/structs/detail/same_fields.h>
#include <tolv/msgs/structs/inventory.h>

namespace Tolv::Msgs::Structs {

bool FruData::operator==(FruData const& other) const {
    return sameFields(*this, other, &FruData::isPlaceholder, &FruData::name, &FruData::description,
                      &FruData::manufacturer, &FruData::serialNumber, &FruData::slot, &FruData::lun,
                      &FruData::deviceId, &FruData::isAssignable, &FruData::deviceType,
                      &FruData::state, &FruData::version, &FruData::ipAddress);
}

bool SensorData::operator==(SensorData const& other) const {
    return sameFields(*this, other, &SensorData::slot, &SensorData::lun, &SensorData::deviceId,
                      &SensorData::number, &SensorData::name, &SensorData::bank, &SensorData::type,
                      &SensorData::reading);
}

FanBankData::FanBankData(Lossless<int> bank, Lossless<int> speed) {
    this->bank = bank;
    this->speed = speed;
}

bool FanBankData::operator==(FanBankData const& other) const {
    return sameFields(*this, other, &FanBankData::bank, &FanBankData::speed);
}

} // namespace Tolv::Msgs::Structs
