#pragma once

#include <chrono>
#include <iosfwd>
#include <memory>
#include <stdexcept>
#include <string>

#include <tolv/core/msgs/message.h>
#include <common/traffic.h>

/// @file
/// How messages get from one process to another: as JSON text, one message a line, over a Unix
/// domain socket.
namespace Example {

using Clock = std::chrono::steady_clock;

/// The peer closed the connection, or is dead.
struct ConnectionLost : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The deadline has passed.
struct TimedOut : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// A message arrived whose id is not registered in this process.
struct UnknownMessage : std::runtime_error {
    explicit UnknownMessage(Tolv::Msgs::Identifier const& id);
    Tolv::Msgs::Identifier id;
};

/// One end of a connection. No call waits beyond the deadline that was given when it was made.
/// All calls come from one thread.
///
/// All functions that wait throw `ConnectionLost` and `TimedOut`.
class LineConnection {
public:
    /// Waits at `path` for one peer, and takes the path away again when it has come.
    static LineConnection accept(std::string const& path, Clock::time_point deadline);

    /// Connects to a peer at `path`, or waits for one to come up there.
    static LineConnection connect(std::string const& path, Clock::time_point deadline);

    LineConnection(LineConnection&& other) noexcept;
    ~LineConnection();

    /// Writes the message as one line of text.
    void send(Tolv::Msgs::Message const& message);

    /// Waits for the next message; it is never empty.
    /// @throws UnknownMessage for an id without class, and Tolv::Exception::InvalidParameter for a
    /// line that is no message at all. The connection is good for further messages then.
    std::shared_ptr<Tolv::Msgs::Message> receive();

    /// Waits until `receive` has something to give at once, but not beyond `until`.
    bool waitForMessage(Clock::time_point until);

    /// Writes each line that crosses, in either direction, to `log`, which outlives this object.
    void logTo(std::ostream& log);

    [[nodiscard]] Traffic const& traffic() const;

private:
    class Implementation;

    explicit LineConnection(std::unique_ptr<Implementation> implementation);

    std::unique_ptr<Implementation> implementation_;
};

} // namespace Example
