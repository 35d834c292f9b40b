#pragma once

#include <exception>
#include <memory>
#include <typeinfo>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/excepts/converter_factory.h>

namespace Tolv::Msgs::Excepts {

/// Associates the exception class `Exc` with the message class `Msg` for the lifetime of this
/// object. Define one static object per pair, in the library that owns `Exc`.
///
///     ConverterRegistrar<OverloadMessage, OverloadError> const overloadConverter(
///         [](std::shared_ptr<OverloadMessage const> const& message) {
///             throw OverloadError(message->payload().what());
///         },
///         [](OverloadError const& error) {
///             return std::make_shared<OverloadMessage>(CommonExceptionData(error.what()));
///         });
template <class Msg, class Exc>
class ConverterRegistrar {
public:
    /// Throws the exception that a message represents.
    using Throw = void (*)(std::shared_ptr<Msg const> const&);
    /// Creates the message for an exception.
    using Make = std::shared_ptr<Msg> (*)(Exc const&);

    /// @param raise throws the exception that a message represents
    /// @param make creates the message for an exception
    ConverterRegistrar(Throw raise, Make make)
        : raises_(ConverterFactory::registerMessageConverter(
              Msg::MsgID(),
              [raise](std::shared_ptr<ExceptionMessage const> const& message) {
                  auto const own = std::dynamic_pointer_cast<Msg const>(message);
                  if (own == nullptr)
                      throw Exception::InvalidOperation("bad cast");
                  raise(own);
              })),
          makes_(ConverterFactory::registerExceptionConverter(
              typeid(Exc).name(),
              [make](std::exception const& error) -> std::shared_ptr<ExceptionMessage> {
                  if (auto const* const own = dynamic_cast<Exc const*>(&error))
                      return make(*own);
                  // Classes in unnamed namespaces can share a name; this one is not `Exc`. clang++
                  // cannot tell such classes apart, here or in a `catch`.
                  return std::make_shared<UnknownExceptionMessage>(
                      CommonExceptionData(error.what()));
              })) {}
    ConverterRegistrar(ConverterRegistrar const&) = delete;
    ConverterRegistrar& operator=(ConverterRegistrar const&) = delete;

    ~ConverterRegistrar() {
        if (raises_)
            ConverterFactory::unregisterMessageConverter(Msg::MsgID());
        if (makes_)
            ConverterFactory::unregisterExceptionConverter(typeid(Exc).name());
    }

private:
    bool raises_; ///< the message converter is ours; false if one was already registered
    bool makes_;  ///< the same for the exception converter
};

} // namespace Tolv::Msgs::Excepts
