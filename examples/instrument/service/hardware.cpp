#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;
using Structs::Slot;

namespace {

Structs::FruData fru(Slot slot, std::string const& name, std::string const& serialNumber) {
    Structs::FruData data;
    data.isPlaceholder = false;
    data.name = name;
    data.manufacturer = "Tolv";
    data.serialNumber = serialNumber;
    data.slot = slot;
    data.state = "active";
    data.version = "1.4";
    return data;
}

Structs::SensorData sensor(Slot slot, std::string const& name, Structs::SensorType type,
                           std::string const& reading) {
    Structs::SensorData data;
    data.slot = slot;
    data.name = name;
    data.type = type;
    data.reading = reading;
    return data;
}

Structs::PcieDevice device(Slot slot, bool isRoot) {
    Structs::PcieDevice device;
    device.slot = slot;
    device.isRoot = isRoot;
    return device;
}

/// A batch of messages of the class `M` with these payloads.
template <class M, class Payload>
MessagesArray<M> batch(std::vector<Payload> const& payloads) {
    MessagesArray<M> batch;
    for (auto const& payload : payloads)
        batch.messages.edit().emplace_back(payload);
    return batch;
}

MessagesArray<Attrs::FruMessage> units() {
    return batch<Attrs::FruMessage, Structs::FruData>({
        fru(Slot::esm, "system module", "200001"),
        fru(Slot::slot1, "RF analyzer", "200002"),
        fru(Slot::slot2, "RF generator", "200003"),
    });
}

MessagesArray<Attrs::SensorMessage> sensors() {
    using Type = Structs::SensorType;
    return batch<Attrs::SensorMessage, Structs::SensorData>({
        sensor(Slot::esm, "inlet", Type::temperature, "24.5 degC"),
        sensor(Slot::slot1, "front end", Type::temperature, "41.5 degC"),
        sensor(Slot::slot1, "synthesizer", Type::lockDetect, "locked"),
        sensor(Slot::slot2, "amplifier", Type::current, "1.2 A"),
    });
}

MessagesArray<Attrs::FanBankMessage> fans() {
    return batch<Attrs::FanBankMessage, Structs::FanBankData>({{0, 2400}, {1, 2550}});
}

Structs::PcieDomain pcie() {
    Structs::PcieDomain domain;
    domain.root = device(Slot::esm, true);
    domain.endpoints = {device(Slot::slot1, false), device(Slot::slot2, false)};
    return domain;
}

/// Sends `content` in a message of the class `Answer` to who asks for a part of the instrument.
template <class Answer, class Content>
void offerList(Service& service, std::string const& part, Content (*content)()) {
    service.on<Attrs::AttrListRequestMessage>(
        part, [&service, content](auto const&) { service.send(Answer(content())); });
}

} // namespace

void offerHardware(Service& service) {
    offerList<Attrs::FruBatchMessage>(service, "units", units);
    offerList<Attrs::SensorBatchMessage>(service, "sensors", sensors);
    offerList<Attrs::FanBankBatchMessage>(service, "fans", fans);
    offerList<Attrs::PcieDomainMessage>(service, "pcie", pcie);
}

} // namespace Example
