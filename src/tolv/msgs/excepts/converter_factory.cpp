#include <typeinfo>
#include <utility>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/excepts/converter_factory.h>

namespace Tolv::Msgs::Excepts {

ConverterFactory& ConverterFactory::getInstance() {
    static ConverterFactory factory;
    return factory;
}

bool ConverterFactory::registerMessageConverter(unsigned long long id, MessageConverter converter) {
    return getInstance().messageConverters_.emplace(id, std::move(converter)).second;
}

bool ConverterFactory::registerExceptionConverter(char const* typeName,
                                                  ExceptionConverter converter) {
    return getInstance().exceptionConverters_.emplace(typeName, std::move(converter)).second;
}

void ConverterFactory::unregisterMessageConverter(unsigned long long id) {
    getInstance().messageConverters_.erase(id);
}

void ConverterFactory::unregisterExceptionConverter(char const* typeName) {
    auto& converters = getInstance().exceptionConverters_;
    if (auto const found = converters.find(typeName); found != converters.end())
        converters.erase(found);
}

void ConverterFactory::throwException(std::shared_ptr<ExceptionMessage const> const& message) {
    if (message == nullptr)
        throw Exception::InvalidParameter("there is no exception message to throw");
    auto const& converters = getInstance().messageConverters_;
    if (auto const found = converters.find(message->id()); found != converters.end())
        found->second(message);
    // Reached also if a user's converter returned instead of throwing.
    throw Exception::UnknownException("unable to translate exception message");
}

std::shared_ptr<ExceptionMessage> ConverterFactory::asMessage(std::exception const& error) {
    auto const& converters = getInstance().exceptionConverters_;
    if (auto const found = converters.find(typeid(error).name()); found != converters.end())
        if (auto message = found->second(error))
            return message;
    return std::make_shared<UnknownExceptionMessage>(CommonExceptionData(error.what()));
}

} // namespace Tolv::Msgs::Excepts
