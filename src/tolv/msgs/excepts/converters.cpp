#include <memory>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/excepts/converter_registrar.h>

// The platform's own exception classes and their messages.
namespace Tolv::Msgs::Excepts {

namespace {

template <class Msg, class Exc>
[[noreturn]] void raise(std::shared_ptr<Msg const> const& message) {
    throw Exc(message->Data().what());
}

template <class Msg, class Exc>
std::shared_ptr<Msg> make(Exc const& error) {
    return std::make_shared<Msg>(CommonExceptionData(error.what()));
}

template <class Msg, class Exc>
struct Converter : ConverterRegistrar<Msg, Exc> {
    Converter() : ConverterRegistrar<Msg, Exc>(&raise<Msg, Exc>, &make<Msg, Exc>) {}
};

Converter<UnknownExceptionMessage, Exception::UnknownException> const
    converter_UnknownExceptionMessage;
Converter<InvalidParameterMessage, Exception::InvalidParameter> const
    converter_InvalidParameterMessage;
Converter<InconsistentParametersMessage, Exception::InconsistentParameters> const
    converter_InconsistentParametersMessage;
Converter<InsufficientResourcesMessage, Exception::InsufficientResources> const
    converter_InsufficientResourcesMessage;
Converter<InvalidHandleMessage, Exception::InvalidHandle> const converter_InvalidHandleMessage;
Converter<InvalidOperationMessage, Exception::InvalidOperation> const
    converter_InvalidOperationMessage;

} // namespace

} // namespace Tolv::Msgs::Excepts
