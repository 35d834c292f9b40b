#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;

void engine(Dialogue& dialogue) {
    dialogue.heading("Engine: a transition with parameters of different classes");
    Engine::TransitionData transition;
    transition.event = 3;
    transition.param = {std::make_shared<Attrs::DoubleMessage>(2e9),
                        std::make_shared<Attrs::LongMessage>(10)};

    dialogue.tell(Engine::TransitionMessage(transition));
    dialogue.hearUnasked<Notifs::SystemBusyNotification>();
    auto const result = dialogue.hear<Attrs::MeasurementWithStatusMessage>();
    auto const& power = result->payload();
    check("power", power.value(), -14.5);
    check("what was measured", power.metaData().name(), "channel power, 10 sweeps");
    check("limit status", power.metaData().limitStatus(), 0);
    dialogue.hearUnasked<Notifs::SystemReadyNotification>();
    std::ostringstream text;
    text << power.metaData().name() << ": " << power.value() << ' '
         << power.metaData().currentBroadcastUnit() << ", from " << power.metaData().minimum()
         << " to " << power.metaData().maximum();
    dialogue.note(text.str());

    // The class of a parameter arrives with it, so that the engine sees what is wrong.
    transition.param = {std::make_shared<Attrs::BoolMessage>(true)};
    dialogue.expectThrow<Tolv::Exception::InvalidParameter>(
        "event 3 takes another parameter 0", [&] {
            dialogue.tell(Engine::TransitionMessage(transition));
            dialogue.hear<Attrs::MeasurementWithStatusMessage>();
        });
}

} // namespace Example
