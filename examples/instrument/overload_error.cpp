#include <instrument/overload_error.h>

#include <tolv/msgs/excepts/converter_registrar.h>

// Registers the message class while this file is loaded.
template class Tolv::Msgs::PayloadMessageHelper<Tolv::Msgs::Excepts::ExceptionMessage,
                                                Example::OverloadData, 0x8001>;

namespace Example {

OverloadError::~OverloadError() = default;

OverloadData::OverloadData(std::string const& text, double level) : CommonExceptionData(text) {
    levelDbm = level;
}

namespace {

Tolv::Msgs::Excepts::ConverterRegistrar<OverloadMessage, OverloadError> const overloadConverter(
    [](std::shared_ptr<OverloadMessage const> const& message) {
        throw OverloadError(message->payload().what(), message->payload().levelDbm());
    },
    [](OverloadError const& error) {
        return std::make_shared<OverloadMessage>(OverloadData(error.what(), error.levelDbm()));
    });

} // namespace

} // namespace Example
