#include <iostream>

#include <tolv/messages.h>

using namespace Tolv::Msgs;

int main() {
    App::ConnectMessage connect({"client", "ui"}, {"instrument", "service"}); // from, to
    connect.editPayload().maxVersion = 3;

    std::string text;
    connect.copyToText(text); // ... travels by any transport ...

    auto const message = Message::CreateFromText(text);
    if (auto const* const request = dynamic_cast<App::ConnectMessage const*>(message.get()))
        std::cout << "highest version: " << request->payload().maxVersion() << '\n';
}
