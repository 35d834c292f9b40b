#include <common/line_connection.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string_view>
#include <thread>

#include <tolv/core/metadata/json.h>
#include <boost/asio.hpp>

namespace Example {

using namespace Tolv::Msgs;
using boost::asio::local::stream_protocol;
using boost::system::error_code;
using Tolv::MetaData::Element;
using Tolv::MetaData::ReaderJson;

namespace {

std::string hexadecimal(Identifier const& id) {
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "0x%016llx", static_cast<unsigned long long>(id));
    return text.data();
}

} // namespace

UnknownMessage::UnknownMessage(Identifier const& unknown)
    : std::runtime_error("no message is known by the id " + hexadecimal(unknown)), id(unknown) {}

class LineConnection::Implementation {
public:
    explicit Implementation(Clock::time_point deadline) : deadline_(deadline) {}

    void accept(std::string const& path);
    void connect(std::string const& path);
    void writeLine(std::string& line);
    std::string readLine();
    bool waitForLine(Clock::time_point until);

    void record(Identifier const& id, std::string_view line) {
        traffic.add(id, line.size() + 1);
        if (log != nullptr)
            *log << line << '\n';
    }

    Traffic traffic;
    std::ostream* log = nullptr;

private:
    /// Bounds the memory that a peer can make this end use.
    static constexpr std::size_t longestLine = 256U << 20U;

    /// Starts an asynchronous operation on `object` and lets it run until `until`.
    /// @return false when it was given up.
    template <class Object, class Start>
    bool run(Object& object, Clock::time_point until, Start start) {
        std::optional<error_code> result;
        start([&result](error_code error, auto... /*size*/) { result = error; });
        context_.restart();
        context_.run_until(until);
        if (!result.has_value()) {
            object.cancel();
            context_.run();
            if (*result == boost::asio::error::operation_aborted)
                return false;
        }
        if (*result)
            throw ConnectionLost("the connection is lost: " + result->message());
        return true;
    }

    boost::asio::io_context context_;
    stream_protocol::socket socket_{context_};
    Clock::time_point deadline_;
    std::string received_;     ///< what has arrived and was not taken yet
    std::size_t searched_ = 0; ///< how much of it is known to hold no line end
    std::array<char, 65536> chunk_{};
};

void LineConnection::Implementation::accept(std::string const& path) {
    stream_protocol::acceptor acceptor(context_, stream_protocol::endpoint(path));
    auto const taken =
        run(acceptor, deadline_, [&](auto done) { acceptor.async_accept(socket_, done); });
    std::filesystem::remove(path);
    if (!taken)
        throw TimedOut("nobody has connected to " + path + " in time");
}

void LineConnection::Implementation::connect(std::string const& path) {
    for (;;) {
        error_code error;
        socket_.connect(stream_protocol::endpoint(path), error);
        if (!error)
            return;
        if (Clock::now() >= deadline_)
            throw TimedOut("nobody answers at " + path + ": " + error.message());
        socket_.close();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

void LineConnection::Implementation::writeLine(std::string& line) {
    line += '\n';
    if (!run(socket_, deadline_, [&](auto done) {
            boost::asio::async_write(socket_, boost::asio::buffer(line), done);
        }))
        throw TimedOut("the peer takes nothing more in time");
    line.pop_back();
}

bool LineConnection::Implementation::waitForLine(Clock::time_point until) {
    while (received_.find('\n', searched_) == std::string::npos) {
        searched_ = received_.size();
        if (searched_ > longestLine)
            throw ConnectionLost("the peer sends a line without end");
        std::size_t size = 0;
        if (!run(socket_, until, [&](auto done) {
                socket_.async_read_some(boost::asio::buffer(chunk_),
                                        [&size, done](error_code error, std::size_t read) mutable {
                                            size = read;
                                            done(error);
                                        });
            }))
            return false;
        received_.append(chunk_.data(), size);
    }
    return true;
}

std::string LineConnection::Implementation::readLine() {
    if (!waitForLine(deadline_))
        throw TimedOut("the peer has not answered in time");
    auto const end = received_.find('\n', searched_);
    auto line = received_.substr(0, end);
    received_.erase(0, end + 1);
    searched_ = 0;
    return line;
}

LineConnection LineConnection::accept(std::string const& path, Clock::time_point deadline) {
    auto implementation = std::make_unique<Implementation>(deadline);
    implementation->accept(path);
    return LineConnection(std::move(implementation));
}

LineConnection LineConnection::connect(std::string const& path, Clock::time_point deadline) {
    auto implementation = std::make_unique<Implementation>(deadline);
    implementation->connect(path);
    return LineConnection(std::move(implementation));
}

LineConnection::LineConnection(std::unique_ptr<Implementation> implementation)
    : implementation_(std::move(implementation)) {}
LineConnection::LineConnection(LineConnection&& other) noexcept = default;
LineConnection::~LineConnection() = default;

void LineConnection::send(Message const& message) {
    std::string line;
    message.copyToText(line);
    implementation_->writeLine(line);
    implementation_->record(message.id(), line);
}

std::shared_ptr<Message> LineConnection::receive() {
    auto const line = implementation_->readLine();
    Element tree;
    ReaderJson::Read(tree, line);
    auto message = Message::CreateFromMetaData(tree);
    Identifier id;
    id.copyFromMetaData(std::as_const(tree)["MessageID"]);
    implementation_->record(id, line);
    if (message == nullptr)
        throw UnknownMessage(id);
    return message;
}

bool LineConnection::waitForMessage(Clock::time_point until) {
    return implementation_->waitForLine(until);
}

void LineConnection::logTo(std::ostream& log) { implementation_->log = &log; }

Traffic const& LineConnection::traffic() const { return implementation_->traffic; }

} // namespace Example
