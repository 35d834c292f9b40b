#include <stdexcept>

#include <tolv/core/msgs/message.h>

namespace {

using Tolv::Msgs::Message;

/// Registers a creator that builds no message.
struct Registration {
    Registration(unsigned long long id, Message::MsgFactory::Creator creator) : id(id) {
        Message::MsgFactory::Instance().registerMessage(id, creator, "broken");
    }
    Registration(Registration const&) = delete;
    Registration& operator=(Registration const&) = delete;
    ~Registration() { Message::MsgFactory::Instance().deregisterMessage(id); }

    unsigned long long id;
};

Registration const null(0x00030000'0000FFFE, [](auto const&) -> Message* { return nullptr; });
Registration const throwing(0x00030000'0000FFFF, [](auto const&) -> Message* {
    throw std::runtime_error("no \x1b[31mhardware");
});

} // namespace
