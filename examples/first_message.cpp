#include <iostream>

#include <tolv/messages.h>

using namespace Tolv::Msgs;
using namespace Tolv::MetaData;

int main() {
    App::ConnectMessage connect({"client", "ui"}, {"instrument", "service"}); // from, to
    connect.editPayload().maxVersion = 3;

    Element tree;
    connect.copyToMetaData(tree);
    std::string text;
    WriterJson::Write(tree, text); // ... travels by any transport ...

    Element received;
    ReaderJson::Read(received, text);
    auto const message = Message::CreateFromMetaData(received);
    if (auto const* const request = dynamic_cast<App::ConnectMessage const*>(message.get()))
        std::cout << "highest version: " << request->payload().maxVersion() << '\n';
}
