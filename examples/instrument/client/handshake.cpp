#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;

void handshake(Dialogue& dialogue) {
    dialogue.heading("Handshake: which version do both sides speak?");
    dialogue.expectThrow<Tolv::Exception::InconsistentParameters>(
        "the client speaks versions 7 to 9, the instrument 2 to 5", [&] {
            dialogue.ask<App::ConnectedMessage>(App::ConnectMessage({9, 7, true}));
        });

    auto const newest = dialogue.ask<App::ConnectedMessage>(App::ConnectMessage({9, 1, false}));
    check("version for a newer client", newest->payload().versionToUse(), 5);
    check("plain transmission", newest->payload().binaryTransmission(), false);

    auto const connected = dialogue.ask<App::ConnectedMessage>(App::ConnectMessage({4, 1, true}));
    auto const& agreed = connected->payload();
    check("version to use", agreed.versionToUse(), 4);
    check("lowest version of the instrument", agreed.minVersion(), 2);
    check("highest version of the instrument", agreed.maxVersion(), 5);
    check("binary transmission", agreed.binaryTransmission(), true);
    check("address of the answer", connected->destination() == Address{"client", "desk-3"});

    auto const ping = dialogue.ask<App::PingAnswerMessage>(App::PingMessage());
    check("highest version in the ping's answer", ping->payload().maxVersion(), 5U);
    check("support of binary transmission", ping->payload().supportsBinary(), true);
}

} // namespace Example
