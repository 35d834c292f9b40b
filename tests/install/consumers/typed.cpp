// Sends a message through its text form and back.

#include <tolv/messages.h>

#include <iostream>
#include <string>

int main() {
    using namespace Tolv;

    Msgs::App::ConnectMessage const sent;
    MetaData::Element tree;
    sent.copyToMetaData(tree);
    std::string text;
    MetaData::WriterJson::Write(tree, text, true);

    MetaData::Element received;
    MetaData::ReaderJson::Read(received, text);
    auto const message = Msgs::Message::CreateFromMetaData(received);
    if (!message || message->id() != sent.id() ||
        !dynamic_cast<Msgs::App::ConnectMessage const*>(&*message)) {
        std::cerr << "typed: the message did not come back from\n" << text << '\n';
        return 1;
    }
    std::cout << "typed: ok\n";
}
