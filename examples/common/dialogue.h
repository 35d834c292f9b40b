#pragma once

#include <deque>
#include <memory>
#include <string>
#include <typeinfo>

#include <tolv/messages.h>
#include <common/checks.h>
#include <common/line_connection.h>

/// @file
/// The client's side of the conversation: it asks, checks that the answer is of the right class,
/// and prints who says what.
namespace Example {

class Dialogue {
public:
    /// @param pace a pause before each request, for people who want to watch
    Dialogue(LineConnection connection, std::chrono::milliseconds pace)
        : connection_(std::move(connection)), pace_(pace) {}

    void heading(std::string const& text);
    /// Prints lines that explain what was heard, indented.
    void note(std::string const& text);

    /// Sends a request; the answer has to be of the class `Answer`.
    /// @throws what `hear` throws
    template <class Answer, class Request>
    std::shared_ptr<Answer const> ask(Request request) {
        tell(std::move(request));
        return hear<Answer>();
    }

    /// Sends a message that has no answer, or several. It goes to the instrument unless it says
    /// otherwise.
    template <class M>
    void tell(M message) {
        message.sender = Tolv::Msgs::Address{"client", "desk-3"};
        if (!message.destination.initialized())
            message.destination = Tolv::Msgs::Address{"instrument"};
        say(message);
    }

    /// Waits for the next message, notifications apart.
    /// @throws the exception that the instrument sends in place of an answer, and CheckFailed for
    /// a message of another class.
    template <class Answer>
    std::shared_ptr<Answer const> hear() {
        return expect<Answer>(nextAnswer());
    }

    /// Waits for the next notification, or takes one that has come already.
    template <class Notification>
    std::shared_ptr<Notification const> hearUnasked() {
        return expect<Notification>(nextNotification());
    }

    /// Does `action`, in which the instrument has to send an exception of exactly the class
    /// `Expected` with this text. Gives that exception.
    template <class Expected, class Action>
    Expected expectThrow(std::string const& text, Action action) {
        try {
            action();
        } catch (Expected const& error) {
            check("class of the exception", typeid(error) == typeid(Expected));
            check("text of the exception", error.what(), text);
            return error;
        }
        throw CheckFailed("the instrument was to throw \"" + text + '"');
    }

    /// @throws CheckFailed when the instrument has sent more than was heard.
    void finish();

    [[nodiscard]] LineConnection& connection() { return connection_; }

private:
    void say(Tolv::Msgs::Message const& message);
    std::shared_ptr<Tolv::Msgs::Message const> next();
    std::shared_ptr<Tolv::Msgs::Message const> nextAnswer();
    std::shared_ptr<Tolv::Msgs::Message const> nextNotification();

    template <class Wanted>
    static std::shared_ptr<Wanted const>
    expect(std::shared_ptr<Tolv::Msgs::Message const> const& message) {
        auto wanted = std::dynamic_pointer_cast<Wanted const>(message);
        if (wanted == nullptr)
            failAt(*message, Wanted::MsgID());
        return wanted;
    }
    [[noreturn]] static void failAt(Tolv::Msgs::Message const& message,
                                    Tolv::Msgs::Identifier const& wanted);

    LineConnection connection_;
    std::chrono::milliseconds pace_;
    std::deque<std::shared_ptr<Tolv::Msgs::Message const>> notifications_;
};

} // namespace Example
