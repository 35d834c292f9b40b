#pragma once

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include <tolv/msgs/excepts/messages.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs::Excepts {

/// The table between exception classes and the messages that stand for them. It is written while
/// libraries load and unload; a caller that registers converters at another time keeps that apart
/// from all other calls. Apart from that, any number of threads may convert.
class TOLV_MESSAGES_API ConverterFactory {
public:
    /// Throws the exception that the message stands for; does not return.
    using MessageConverter = std::function<void(std::shared_ptr<ExceptionMessage const> const&)>;
    /// Makes the message for an exception of one class.
    using ExceptionConverter =
        std::function<std::shared_ptr<ExceptionMessage>(std::exception const&)>;

    ConverterFactory(ConverterFactory const&) = delete;
    ConverterFactory& operator=(ConverterFactory const&) = delete;

    /// The one table, built on first use.
    static ConverterFactory& getInstance();

    /// @return false when the id has a converter, which then stays.
    static bool registerMessageConverter(unsigned long long id, MessageConverter converter);
    /// @param typeName `typeid(Exc).name()`
    /// @param converter makes the message; what it throws passes through `asMessage`
    /// @return false when the class has a converter, which then stays.
    static bool registerExceptionConverter(char const* typeName, ExceptionConverter converter);
    /// Takes a converter out; one that isn't there is ignored.
    static void unregisterMessageConverter(unsigned long long id);
    /// The same for the converter of an exception class.
    static void unregisterExceptionConverter(char const* typeName);

    /// Throws the exception that `message` stands for.
    /// @throws Exception::UnknownException "unable to translate exception message" when its id has
    /// no converter, Exception::InvalidOperation "bad cast" when it isn't of the class registered
    /// for its id, or when its text did not read, and Exception::InvalidParameter when `message` is
    /// empty.
    [[noreturn]] static void throwException(std::shared_ptr<ExceptionMessage const> const& message);

    /// The message for `error`, by its exact class. One without converter becomes an
    /// `UnknownExceptionMessage` with the same text.
    [[nodiscard]] static std::shared_ptr<ExceptionMessage> asMessage(std::exception const& error);

private:
    ConverterFactory() = default;
    ~ConverterFactory() = default;

    std::map<unsigned long long, MessageConverter> messageConverters_;
    std::map<std::string, ExceptionConverter, std::less<>> exceptionConverters_;
};

} // namespace Tolv::Msgs::Excepts
