#pragma once

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include <tolv/msgs/excepts/messages.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs::Excepts {

/// The table that maps exception classes to messages and back. Registration normally happens while
/// libraries load and unload; at any other time, the caller must ensure that no other thread uses
/// the table. Conversions may run on any number of threads.
class TOLV_MESSAGES_API ConverterFactory {
public:
    /// Throws the exception that the message represents; does not return.
    using MessageConverter = std::function<void(std::shared_ptr<ExceptionMessage const> const&)>;
    /// Creates the message for an exception of one class.
    using ExceptionConverter =
        std::function<std::shared_ptr<ExceptionMessage>(std::exception const&)>;

    ConverterFactory(ConverterFactory const&) = delete;
    ConverterFactory& operator=(ConverterFactory const&) = delete;

    /// The only table, constructed on first use.
    static ConverterFactory& getInstance();

    /// @return false if the id already has a converter, which is kept.
    static bool registerMessageConverter(unsigned long long id, MessageConverter converter);
    /// @param typeName `typeid(Exc).name()`
    /// @param converter creates the message; `asMessage` passes its exceptions on
    /// @return false if the class already has a converter, which is kept.
    static bool registerExceptionConverter(char const* typeName, ExceptionConverter converter);
    /// Removes a converter. An unknown id is ignored.
    static void unregisterMessageConverter(unsigned long long id);
    /// Removes the converter of an exception class. An unknown class is ignored.
    static void unregisterExceptionConverter(char const* typeName);

    /// Throws the exception that `message` represents.
    /// @throws Exception::UnknownException "unable to translate exception message" if its id has no
    /// converter; Exception::InvalidOperation "bad cast" if it is not of the class registered for
    /// its id, or if its text could not be read; Exception::InvalidParameter if `message` is null.
    [[noreturn]] static void throwException(std::shared_ptr<ExceptionMessage const> const& message);

    /// The message for `error`, by its exact class; never null. An exception without a converter,
    /// or whose converter returns null, becomes an `UnknownExceptionMessage` with the same text.
    [[nodiscard]] static std::shared_ptr<ExceptionMessage> asMessage(std::exception const& error);

private:
    ConverterFactory() = default;
    ~ConverterFactory() = default;

    std::map<unsigned long long, MessageConverter> messageConverters_;
    std::map<std::string, ExceptionConverter, std::less<>> exceptionConverters_;
};

} // namespace Tolv::Msgs::Excepts
