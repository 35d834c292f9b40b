#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;
using namespace Tolv::Msgs::Structs;

void triggers(Dialogue& dialogue) {
    dialogue.heading("Triggers: what starts what");
    TriggerRoute route;
    route.setSource(TriggerSources::exttrig);
    route.setOutput(TriggerOutputs::trig0);
    dialogue.ask<Attrs::TriggerRouteMessage>(Attrs::TriggerRouteMessage(route));

    route.output = "trig99"; // the fields are texts, and take any
    dialogue.expectThrow<Tolv::Exception::InvalidParameter>(
        "there is no trigger output trig99",
        [&] { dialogue.ask<Attrs::TriggerRouteMessage>(Attrs::TriggerRouteMessage(route)); });

    TriggerPulseWidth pulse;
    pulse.setSource(TriggerSources::exttrig);
    pulse.setWidth(std::chrono::microseconds(250));
    auto const width =
        dialogue.ask<Attrs::TriggerPulseWidthMessage>(Attrs::TriggerPulseWidthMessage(pulse));
    check("width", width->payload().getWidth() == std::chrono::microseconds(250));

    auto const all = dialogue.ask<Attrs::TriggerRouteBatchMessage>(
        Attrs::AttrListRequestMessage({}, {"instrument", "triggers"}));
    check("number of routes", all->payload().messages().size(), 1U);
    auto const& first = all->payload().messages()[0].payload();
    check("source of the route", first.getSource(), TriggerSources::exttrig);
    check("output of the route", first.getOutput(), TriggerOutputs::trig0);
}

} // namespace Example
