// A user's library: an exception class, its message, and their converter.
#include "overload.h"

#include <memory>
#include <stdexcept>
#include <string>

#include <tolv/msgs/excepts/converter_registrar.h>

namespace Overload {

using namespace Tolv::Msgs;
using Excepts::CommonExceptionData;
using Excepts::ConverterRegistrar;
using Excepts::ExceptionMessage;

class OverloadError : public std::runtime_error {
public:
    explicit OverloadError(double volts)
        : std::runtime_error("overload: " + std::to_string(volts) + " V"), volts_(volts) {}

    double volts() const noexcept { return volts_; }

private:
    double volts_;
};

class OverloadData : public CommonExceptionData {
public:
    Reflector<double> voltageAtTheInput{this, "VoltageAtTheInput"_key, Required}; ///< volts

    OverloadData() = default;
    explicit OverloadData(OverloadError const& error) : CommonExceptionData(error.what()) {
        voltageAtTheInput = error.volts();
    }
};

using OverloadMessage = PayloadMessageHelper<ExceptionMessage, OverloadData, 600>;

namespace {

/// The program has a class of this name, too.
struct Namesake : std::exception {};

using NamesakeMessage = PayloadMessageHelper<ExceptionMessage, CommonExceptionData, 601>;

} // namespace

} // namespace Overload

template class Tolv::Msgs::PayloadMessageHelper<Tolv::Msgs::Excepts::ExceptionMessage,
                                                Overload::OverloadData, 600>;
template class Tolv::Msgs::PayloadMessageHelper<Tolv::Msgs::Excepts::ExceptionMessage,
                                                Tolv::Msgs::Excepts::CommonExceptionData, 601>;

namespace Overload {
namespace {

ConverterRegistrar<OverloadMessage, OverloadError> const overloadConverter(
    [](std::shared_ptr<OverloadMessage const> const& message) {
        throw OverloadError(message->payload().voltageAtTheInput());
    },
    [](OverloadError const& error) {
        return std::make_shared<OverloadMessage>(OverloadData(error));
    });

ConverterRegistrar<NamesakeMessage, Namesake> const
    namesakeConverter([](std::shared_ptr<NamesakeMessage const> const&) { throw Namesake(); },
                      [](Namesake const&) { return std::make_shared<NamesakeMessage>(); });

} // namespace
} // namespace Overload

#define OVERLOAD_API extern "C" __attribute__((visibility("default")))

OVERLOAD_API void overloadRaise(double volts) { throw Overload::OverloadError(volts); }

OVERLOAD_API double overloadVolts(std::exception const& error) {
    auto const* const own = dynamic_cast<Overload::OverloadError const*>(&error);
    return own != nullptr ? own->volts() : -1;
}

OVERLOAD_API void overloadWrite(Tolv::MetaData::Element& element) {
    Overload::OverloadMessage(Overload::OverloadData(Overload::OverloadError(12)), {"slot1"})
        .copyToMetaData(element);
}

OVERLOAD_API void overloadRaiseNamesake() { throw Overload::Namesake(); }
