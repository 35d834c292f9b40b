#include <common/dialogue.h>

#include <iomanip>
#include <iostream>
#include <thread>

#include <common/outline.h>

namespace Example {

using namespace Tolv::Msgs;

namespace {

void show(char const* speaker, Message const& message) {
    std::cout << "  " << std::left << std::setw(11) << speaker << std::setw(37)
              << nameOf(message.id()) << ' ' << outlineOf(message, 80);
    if (dynamic_cast<Excepts::ExceptionMessage const*>(&message) != nullptr)
        std::cout << "  -> thrown again here";
    std::cout << '\n';
}

} // namespace

void Dialogue::heading(std::string const& text) {
    std::cout << "== " << text << std::endl; // a watcher sees each chapter as it starts
}

void Dialogue::note(std::string const& text) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        std::cout << "      " << line << '\n';
}

void Dialogue::say(Message const& message) {
    std::this_thread::sleep_for(pace_);
    show("client", message);
    connection_.send(message);
}

std::shared_ptr<Message const> Dialogue::next() {
    auto message = connection_.receive();
    show("instrument", *message);
    return message;
}

std::shared_ptr<Message const> Dialogue::nextAnswer() {
    for (;;) {
        auto const message = next();
        if (auto exception = std::dynamic_pointer_cast<Excepts::ExceptionMessage const>(message))
            Excepts::ConverterFactory::throwException(exception);
        if (std::dynamic_pointer_cast<Notifs::Notification const>(message) == nullptr)
            return message;
        notifications_.push_back(message);
    }
}

std::shared_ptr<Message const> Dialogue::nextNotification() {
    if (notifications_.empty())
        return next();
    auto message = notifications_.front();
    notifications_.pop_front();
    return message;
}

void Dialogue::finish() {
    if (!notifications_.empty())
        failAt(*notifications_.front(), 0);
    if (connection_.waitForMessage(Clock::now()))
        failAt(*next(), 0);
}

void Dialogue::failAt(Message const& message, Identifier const& wanted) {
    throw CheckFailed("the instrument says " + nameOf(message.id()) + " where " +
                      (wanted == 0 ? "nothing" : nameOf(wanted)) + " was expected");
}

} // namespace Example
