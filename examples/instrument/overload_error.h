#pragma once

#include <string>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/excepts/messages.h>

/// @file
/// An exception class of one's own that travels as a message: the class, the record that carries
/// it, the message, and, in overload_error.cpp, the converter. It takes effect in each program or
/// library that links overload_error.cpp, for as long as that is loaded.
namespace Example {

/// A level at an input is higher than what the input bears.
class OverloadError : public Tolv::Exception::Base {
public:
    OverloadError(std::string const& text, double levelDbm) : Base(text), levelDbm_(levelDbm) {}
    OverloadError(OverloadError const&) = default;
    ~OverloadError() override;

    [[nodiscard]] double levelDbm() const noexcept { return levelDbm_; }

private:
    double levelDbm_;
};

/// Adds the level to what all exception messages carry.
class OverloadData : public Tolv::Msgs::Excepts::CommonExceptionData {
public:
    Tolv::Msgs::Reflector<double> levelDbm{
        this,
        Tolv::Msgs::field<"LevelDbm", Tolv::Msgs::Unit{"dBm"},
                          Tolv::Msgs::Doc{"the level at the input that was overloaded"}>,
        Tolv::Msgs::Required};

    OverloadData() = default;
    OverloadData(std::string const& text, double level);
};

/// Numbers from 0x8000 up are not used by libTolvMessages.
using OverloadMessage =
    Tolv::Msgs::PayloadMessageHelper<Tolv::Msgs::Excepts::ExceptionMessage, OverloadData, 0x8001>;

} // namespace Example

/// The one place that holds the code of the message class, and registers it, is overload_error.cpp.
extern template class Tolv::Msgs::PayloadMessageHelper<Tolv::Msgs::Excepts::ExceptionMessage,
                                                       Example::OverloadData, 0x8001>;
