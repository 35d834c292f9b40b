#pragma once

#include <string>

#include <tolv/msgs/record.h>

namespace Tolv::Msgs::Errs {

/// An error report. Level and category are written as numbers; a number outside the enumeration is
/// kept when read.
class TOLV_MESSAGES_API GenericErrorData : public MirroredObject {
public:
    /// The severity.
    enum class ErrorLevel : int {
        information = 0, ///< nothing is lost
        warning = 1,     ///< results may be degraded
        error = 2,       ///< a request failed
        fatal = 3        ///< the instrument cannot continue
    };

    /// The origin.
    enum class ErrorCategory : int {
        general = 0,
        hardware = 1,
        measurement = 2, ///< acquisition and its results
        calibration = 3,
        configuration = 4, ///< settings and their limits
        communication = 5,
        application = 6
    };

    Reflector<int> errorLevel{
        this,
        field<"ErrorLevel", Doc{"the severity of the error"},
              Words{"0 information | 1 warning | 2 error | 3 fatal"}, Example{"2"}>,
        Required};
    Reflector<int> errorCategory{
        this,
        field<"ErrorCategory", Doc{"the part of the instrument in which the error arose"},
              Words{"0 general | 1 hardware | 2 measurement | 3 calibration | 4 configuration | 5 "
                    "communication | 6 application"},
              Example{"1"}>,
        Required};
    Reflector<int> errorNumber{
        this,
        field<"ErrorNumber",
              Doc{"the number of the error within its category, in the reporter's numbering"},
              Example{"1204"}>,
        Required};
    Reflector<std::string> errorDescription{
        this,
        field<"ErrorDescription", Doc{"what happened, in human-readable form"},
              Example{"The unit in slot 2 does not answer"}>,
        Required};
    Reflector<std::string> timestamp{
        this,
        field<"Timestamp", Doc{"when the error happened, in the reporter's format"},
              Example{"2026-11-24T18:17:21Z"}>,
        Required};

    GenericErrorData() = default;
    /// A report with all fields.
    GenericErrorData(ErrorLevel level, ErrorCategory category, Lossless<int> number,
                     std::string const& description, std::string const& timestamp);
    /// @throws Exception::InvalidOperation if a field of `other` is uninitialized.
    GenericErrorData(GenericErrorData const& other);
    GenericErrorData& operator=(GenericErrorData const&) = default;

    /// "ErrorLevel" as an enumerator; a value outside the enumeration if the peer sent one.
    /// @throws Exception::InvalidOperation if "ErrorLevel" is uninitialized.
    [[nodiscard]] ErrorLevel level() const { return static_cast<ErrorLevel>(errorLevel()); }
    /// "ErrorCategory" in the same way.
    [[nodiscard]] ErrorCategory category() const {
        return static_cast<ErrorCategory>(errorCategory());
    }
};

} // namespace Tolv::Msgs::Errs
