#include <common/service.h>

#include <ctime>

namespace Example {

using namespace Tolv::Msgs;
using Errs::GenericErrorData;

void Service::later(Clock::duration delay, std::function<void()> action) {
    later_.emplace(Clock::now() + delay, std::move(action));
}

void Service::run() {
    try {
        for (;;) {
            if (later_.empty() || connection_.waitForMessage(later_.begin()->first)) {
                serveOne();
            } else {
                later_.extract(later_.begin()).mapped()();
            }
        }
    } catch (ConnectionLost const&) {
        // The client has got what it wanted.
    }
}

void Service::serveOne() {
    try {
        auto const request = connection_.receive();
        if (request->sender.initialized())
            client_ = request->sender();
        answer(*request);
    } catch (ConnectionLost const&) {
        throw;
    } catch (TimedOut const&) {
        throw;
    } catch (UnknownMessage const& unknown) {
        refuse(unknown.what());
    } catch (std::exception const& error) {
        // The message knows its class and its text, and so does the client then.
        auto const message = Excepts::ConverterFactory::asMessage(error);
        address(*message);
        connection_.send(*message);
    }
}

void Service::answer(Message const& request) {
    auto handler = handlers_.find({request.id(), partFor(request)});
    if (handler == handlers_.end())
        handler = handlers_.find({request.id(), ""});
    if (handler != handlers_.end())
        handler->second(request);
    else
        refuse("this instrument takes no " + findMessage(request.id())->fullAlias());
}

void Service::refuse(std::string const& why) {
    send(Errs::GenericErrorMessage({GenericErrorData::ErrorLevel::error,
                                    GenericErrorData::ErrorCategory::communication, 404, why,
                                    timestamp()}));
}

void Service::address(Message& message) const {
    if (!message.sender.initialized())
        message.sender = Address{"instrument"};
    if (!client_.empty())
        message.destination = client_;
}

std::string partFor(Message const& message) {
    if (!message.destination.initialized() || message.destination().size() < 2)
        return {};
    return message.destination()[1];
}

std::string timestamp() {
    auto const now = std::time(nullptr);
    std::tm parts{};
    gmtime_r(&now, &parts);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &parts);
    return text;
}

} // namespace Example
