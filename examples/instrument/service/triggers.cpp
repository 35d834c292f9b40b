#include <map>
#include <memory>

#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;

/// Each output has one source.
using Routes = std::map<Structs::TriggerOutputs, Structs::TriggerSources>;

void offerTriggers(Service& service) {
    auto const routes = std::make_shared<Routes>();

    service.on<Attrs::TriggerRouteMessage>([&service, routes](auto const& request) {
        auto const& route = request.payload();
        // A word that is no output reads as `unknown`; the instrument has no such output.
        if (route.getOutput() == Structs::TriggerOutputs::unknown)
            throw Tolv::Exception::InvalidParameter("there is no trigger output " + route.output());
        (*routes)[route.getOutput()] = route.getSource();
        service.send(Attrs::TriggerRouteMessage(route));
    });
    service.on<Attrs::TriggerPulseWidthMessage>([&service](auto const& request) {
        service.send(Attrs::TriggerPulseWidthMessage(request.payload()));
    });
    service.on<Attrs::AttrListRequestMessage>("triggers", [&service, routes](auto const&) {
        MessagesArray<Attrs::TriggerRouteMessage> all;
        for (auto const& [output, source] : *routes) {
            Structs::TriggerRoute route;
            route.setOutput(output);
            route.setSource(source);
            all.messages.edit().emplace_back(route);
        }
        service.send(Attrs::TriggerRouteBatchMessage(all));
    });
}

} // namespace Example
