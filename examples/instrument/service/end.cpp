#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;

void offerEnd(Service& service) {
    service.on<Sys::StopMessage>(
        [&service](auto const&) { service.send(Notifs::SystemShutdownNotification()); });
}

} // namespace Example
