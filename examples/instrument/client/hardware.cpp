#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;

namespace {

/// Asks for a part of the instrument, which answers with a message of the class `Answer`.
template <class Answer>
std::shared_ptr<Answer const> list(Dialogue& dialogue, std::string const& part) {
    return dialogue.ask<Answer>(Attrs::AttrListRequestMessage({}, {"instrument", part}));
}

} // namespace

void hardware(Dialogue& dialogue) {
    dialogue.heading("Inventory: what is in the slots, and how is it?");
    auto const units = list<Attrs::FruBatchMessage>(dialogue, "units");
    auto const sensors = list<Attrs::SensorBatchMessage>(dialogue, "sensors");
    auto const fans = list<Attrs::FanBankBatchMessage>(dialogue, "fans");
    auto const pcie = list<Attrs::PcieDomainMessage>(dialogue, "pcie");

    // Enumerations of the records print as their words.
    std::ostringstream text;
    for (auto const& unit : units->payload().messages()) {
        auto const& fru = unit.payload();
        text << fru.slot() << ": " << fru.name() << ' ' << fru.version() << ", number "
             << fru.serialNumber() << ", " << fru.state();
        for (auto const& message : sensors->payload().messages())
            if (auto const& sensor = message.payload(); sensor.slot() == fru.slot())
                text << "; " << sensor.name() << ' ' << sensor.type() << ' ' << sensor.reading();
        text << '\n';
    }
    text << "fans:";
    for (auto const& fan : fans->payload().messages())
        text << " bank " << fan.payload().bank() << " at " << fan.payload().speed();
    text << "\nPCIe: " << pcie->payload().root().slot() << " is the root of";
    for (auto const& endpoint : pcie->payload().endpoints())
        text << ' ' << endpoint.slot();

    check("the inventory", text.str(),
          "esm: system module 1.4, number 200001, active; inlet temperature 24.5 degC\n"
          "slot1: RF analyzer 1.4, number 200002, active; front end temperature 41.5 degC; "
          "synthesizer lock_detect locked\n"
          "slot2: RF generator 1.4, number 200003, active; amplifier current 1.2 A\n"
          "fans: bank 0 at 2400 bank 1 at 2550\n"
          "PCIe: esm is the root of slot1 slot2");
    dialogue.note(text.str());
}

} // namespace Example
