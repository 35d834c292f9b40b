#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;
using namespace Tolv::Msgs::Communications;

namespace {

std::string describe(std::vector<Forwarder::ServiceData> const& services) {
    std::ostringstream text;
    for (auto const& service : services) {
        auto const& key = service.msgKey();
        text << findMessage(key.messageId())->fullAlias() << " to";
        for (auto const& part : key.destination())
            text << ' ' << part;
        text << ", distance " << service.shortestDistance() << '\n';
    }
    return text.str();
}

} // namespace

void forwarder(Dialogue& dialogue) {
    dialogue.heading("Forwarder: who offers what, and how far away?");
    dialogue.tell(Forwarder::RegisterMessage());
    auto const services =
        dialogue.ask<Forwarder::AllServicesMessage>(Forwarder::AllServicesRequestMessage());
    check("the services", describe(services->payload().services()),
          "App::ConnectMessage to instrument, distance 0\n"
          "Attrs::AttrListRequestMessage to instrument sensors, distance 0\n"
          "Engine::TransitionMessage to chassis-2 instrument, distance 1\n");
    dialogue.note(describe(services->payload().services()));

    MessageKey const wanted(Notifs::AttrValueChangedNotification::MsgID(),
                            {"instrument", "temperature"}, {"client", "desk-3"});
    dialogue.tell(Forwarder::SubscriptionAddedMessage(Forwarder::ServiceData(wanted, 1, 0)));
    auto const subscriptions = dialogue.ask<Forwarder::AllSubscriptionsMessage>(
        Forwarder::AllSubscriptionsRequestMessage());
    auto const& list = subscriptions->payload().subscriptions();
    check("number of subscriptions", list.size(), 1U);
    check("what is subscribed to", list[0].msgKey().messageId() == wanted.id());
    check("from whom", list[0].msgKey().sender() == wanted.sender());
    dialogue.tell(Forwarder::UnregisterMessage());
}

} // namespace Example
