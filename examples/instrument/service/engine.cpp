#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;

namespace {

/// The event that starts a measurement. Its parameters: a frequency, and how many sweeps.
constexpr int startMeasurement = 3;

template <class M>
M const& parameter(Engine::TransitionData const& transition, unsigned int index) {
    if (transition.hasParam(index))
        if (auto const* const found = dynamic_cast<M const*>(transition.param()[index].get()))
            return *found;
    throw Tolv::Exception::InvalidParameter("event " + std::to_string(transition.event()) +
                                            " takes another parameter " + std::to_string(index));
}

Attrs::MeasurementWithStatusMessage measure(double frequency, long long sweeps) {
    Attrs::MeasurementWithStatusMessage result;
    auto& power = result.editPayload();
    power.value = -12.5 - frequency / 1e9; // the cable loses more at higher frequencies
    auto& about = power.editMetaData();
    about.name = "channel power, " + std::to_string(sweeps) + " sweeps";
    about.currentBroadcastUnit = "dBm";
    about.average = power.value();
    about.minimum = power.value() - 0.5;
    about.maximum = power.value() + 0.5;
    about.limitStatus = 0;
    return result;
}

} // namespace

void offerEngine(Service& service) {
    service.on<Engine::TransitionMessage>([&service](auto const& request) {
        auto const& transition = request.payload();
        if (transition.event() != startMeasurement)
            throw Tolv::Exception::InvalidParameter("the engine knows no event " +
                                                    std::to_string(transition.event()));
        auto const frequency = parameter<Attrs::DoubleMessage>(transition, 0).payload().value();
        auto const sweeps = parameter<Attrs::LongMessage>(transition, 1).payload().value();

        service.send(Notifs::SystemBusyNotification());
        service.later(std::chrono::milliseconds(20), [&service, frequency, sweeps] {
            service.send(measure(frequency, sweeps));
            service.send(Notifs::SystemReadyNotification());
        });
    });
}

} // namespace Example
