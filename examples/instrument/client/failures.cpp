#include <instrument/overload_error.h>

#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;

void failures(Dialogue& dialogue) {
    dialogue.heading("Failures: what the instrument cannot do, and why");

    // A request whose number is free: the instrument's factory knows no class for it.
    unsigned short const freeNumber = 29;
    auto const unknown =
        dialogue.ask<Errs::GenericErrorMessage>(App::AppMessage(freeNumber, {}, {}));
    check("answer to an unknown request", unknown->payload().errorDescription(),
          "no message is known by the id 0x000300000000001d");

    dialogue.expectThrow<Tolv::Exception::InvalidHandle>("no instance has the UUID 0815", [&] {
        dialogue.ask<App::ConnectToAppResultMessage>(
            App::ConnectToAppMessage(App::ConnectToAppCommandData("0815")));
    });

    // An exception class that only these two programs know.
    auto const overload =
        dialogue.expectThrow<OverloadError>("33.5 dBm at rf-in-1, which bears 30 dBm", [&] {
            dialogue.ask<App::RestartAppResultMessage>(App::RestartAppMessage());
        });
    check("level of the overload", overload.levelDbm(), 33.5);
}

} // namespace Example
