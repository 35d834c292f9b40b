#pragma once

#include <exception>
#include <memory>
#include <typeinfo>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/excepts/converter_factory.h>

namespace Tolv::Msgs::Excepts {

/// Ties the exception class `Exc` to the message class `Msg` for as long as this object lives: one
/// static object a pair, in the library that owns `Exc`.
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
    /// Throws the exception that a message stands for.
    using Throw = void (*)(std::shared_ptr<Msg const> const&);
    /// Makes the message for an exception.
    using Make = std::shared_ptr<Msg> (*)(Exc const&);

    /// @param raise throws the exception that a message stands for
    /// @param make makes the message for an exception
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
                  // Two classes in unnamed namespaces may have the same name; this is the other.
                  // Code of clang++ does not tell them apart, here as in a `catch`.
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
    bool raises_; ///< the converter of the message is ours; false: another was there before
    bool makes_;  ///< likewise that of the exception
};

} // namespace Tolv::Msgs::Excepts
