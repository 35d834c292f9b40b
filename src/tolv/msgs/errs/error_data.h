#pragma once

#include <string>

#include <tolv/msgs/record.h>

namespace Tolv::Msgs::Errs {

/// A report of an error. Level and category travel as numbers, and any number that a peer sends
/// stays as it is.
class TOLV_MESSAGES_API GenericErrorData : public MirroredObject {
public:
    /// How bad it is.
    enum class ErrorLevel : int {
        information = 0, ///< nothing is lost
        warning = 1,     ///< results may be degraded
        error = 2,       ///< a request failed
        fatal = 3        ///< the instrument cannot go on
    };

    /// Where it comes from.
    enum class ErrorCategory : int {
        general = 0,
        hardware = 1,
        measurement = 2, ///< acquisition and its results
        calibration = 3,
        configuration = 4, ///< settings and their limits
        communication = 5,
        application = 6
    };

    Reflector<int> errorLevel{this, "ErrorLevel"_key, Required};       ///< an `ErrorLevel`
    Reflector<int> errorCategory{this, "ErrorCategory"_key, Required}; ///< an `ErrorCategory`
    /// Which error of its category, as the reporter numbers them.
    Reflector<int> errorNumber{this, "ErrorNumber"_key, Required};
    /// For people.
    Reflector<std::string> errorDescription{this, "ErrorDescription"_key, Required};
    Reflector<std::string> timestamp{this, "Timestamp"_key, Required}; ///< the reporter's own form

    GenericErrorData() = default;
    /// A report with all fields.
    GenericErrorData(ErrorLevel level, ErrorCategory category, Lossless<int> number,
                     std::string const& description, std::string const& timestamp);
    /// @throws Exception::InvalidOperation when a field of `other` is uninitialized.
    GenericErrorData(GenericErrorData const& other);
    GenericErrorData& operator=(GenericErrorData const&) = default;

    /// "ErrorLevel" typed; a value out of the enumeration if the peer sent one. @throws
    /// Exception::InvalidOperation when it did not read.
    [[nodiscard]] ErrorLevel level() const { return static_cast<ErrorLevel>(errorLevel()); }
    /// "ErrorCategory" likewise.
    [[nodiscard]] ErrorCategory category() const {
        return static_cast<ErrorCategory>(errorCategory());
    }
};

} // namespace Tolv::Msgs::Errs
