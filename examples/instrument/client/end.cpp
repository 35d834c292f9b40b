#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;

void end(Dialogue& dialogue) {
    dialogue.heading("The end of the morning");
    dialogue.tell(Sys::StopMessage());
    auto const notice = dialogue.hearUnasked<Notifs::SystemShutdownNotification>();
    check("number of the notification", notice->notifType(), 3);
}

} // namespace Example
