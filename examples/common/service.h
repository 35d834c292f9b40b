#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include <tolv/messages.h>
#include <common/line_connection.h>

/// @file
/// The frame of a service: takes requests from one client, one after the other, and hands each to
/// the function that was given for its class.
namespace Example {

class Service {
public:
    explicit Service(LineConnection connection) : connection_(std::move(connection)) {}

    /// Gives the function for requests of this class. What it throws goes to the client, as a
    /// message.
    template <class Request>
    void on(std::function<void(Request const&)> handle) {
        on("", std::move(handle));
    }

    /// The same for requests to one part of the instrument only (see `partFor`).
    template <class Request>
    void on(std::string const& part, std::function<void(Request const&)> handle) {
        handlers_[{Request::MsgID(), part}] = [handle](Tolv::Msgs::Message const& request) {
            handle(dynamic_cast<Request const&>(request));
        };
    }

    /// Sends a message to the client: an answer, or something it did not ask for. It comes from the
    /// instrument unless it says otherwise.
    template <class M>
    void send(M message) {
        address(message);
        connection_.send(message);
    }

    /// Calls `action` after a delay, between two requests.
    void later(Clock::duration delay, std::function<void()> action);

    /// Serves until the client closes the connection. @throws TimedOut
    void run();

    [[nodiscard]] Traffic const& traffic() const { return connection_.traffic(); }

private:
    void address(Tolv::Msgs::Message& message) const;
    void serveOne();
    void answer(Tolv::Msgs::Message const& request);
    void refuse(std::string const& why);

    LineConnection connection_;
    Tolv::Msgs::Address client_;
    std::map<std::pair<unsigned long long, std::string>,
             std::function<void(Tolv::Msgs::Message const&)>>
        handlers_; ///< by id and part
    std::multimap<Clock::time_point, std::function<void()>> later_;
};

/// The part of the instrument to which a message goes: the address is {"instrument", part}. Empty
/// for the instrument as a whole.
std::string partFor(Tolv::Msgs::Message const& message);

/// The time of day, as the error reports of this instrument give it: "2024-05-14T08:30:00Z".
std::string timestamp();

} // namespace Example
