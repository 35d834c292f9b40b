// Uses no symbol of libTolvMessages, yet needs the classes that it registers.

#include <tolv/core.h>

#include <iostream>

int main() {
    auto const count = Tolv::Msgs::Message::MsgFactory::Instance().size();
    std::cout << "factory: " << count << " classes\n";
    return count > 0 ? 0 : 1;
}
