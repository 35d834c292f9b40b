#include <tolv/msgs/errs/error_data.h>

namespace Tolv::Msgs::Errs {

GenericErrorData::GenericErrorData(ErrorLevel level, ErrorCategory category, Lossless<int> number,
                                   std::string const& description, std::string const& timestamp) {
    errorLevel = static_cast<int>(level);
    errorCategory = static_cast<int>(category);
    errorNumber = number;
    errorDescription = description;
    this->timestamp = timestamp;
}

GenericErrorData::GenericErrorData(GenericErrorData const& other)
    : GenericErrorData(other.level(), other.category(), other.errorNumber(),
                       other.errorDescription(), other.timestamp()) {}

} // namespace Tolv::Msgs::Errs
