#include <memory>
#include <vector>

#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;
using namespace Tolv::Msgs::Communications;
using Forwarder::ServiceData;

namespace {

std::vector<ServiceData> services() {
    return {
        {{App::ConnectMessage::MsgID(), {}, {"instrument"}}, 1, 0},
        {{Attrs::AttrListRequestMessage::MsgID(), {}, {"instrument", "sensors"}}, 1, 0},
        {{Engine::TransitionMessage::MsgID(), {}, {"chassis-2", "instrument"}}, 2, 1},
    };
}

} // namespace

void offerForwarder(Service& service) {
    auto const subscriptions = std::make_shared<std::vector<ServiceData>>();

    service.on<Forwarder::RegisterMessage>([](auto const&) {}); // the sender's address says it all
    service.on<Forwarder::UnregisterMessage>(
        [subscriptions](auto const&) { subscriptions->clear(); });
    service.on<Forwarder::AllServicesRequestMessage>([&service](auto const&) {
        Forwarder::AllServicesData all;
        all.services = services();
        service.send(Forwarder::AllServicesMessage(all));
    });
    service.on<Forwarder::SubscriptionAddedMessage>(
        [subscriptions](auto const& message) { subscriptions->push_back(message.payload()); });
    service.on<Forwarder::AllSubscriptionsRequestMessage>([&service, subscriptions](auto const&) {
        Forwarder::AllSubscriptionsData all;
        all.subscriptions = *subscriptions;
        service.send(Forwarder::AllSubscriptionsMessage(all));
    });
}

} // namespace Example
