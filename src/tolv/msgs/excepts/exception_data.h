#pragma once

#include <string>

#include <tolv/msgs/record.h>
#include <tolv/msgs/utils/may_contain_error.h>

namespace Tolv::Msgs::Excepts {

/// The content common to all exception messages.
class TOLV_MESSAGES_API CommonExceptionData : public MirroredObject {
public:
    Reflector<std::string> what{this, "what"_key, Required}; ///< the text of the exception

    CommonExceptionData() = default;
    /// The text of an exception.
    explicit CommonExceptionData(std::string const& text) { what = text; }
};

/// An exception with its number, its text and optionally the error that caused it. No message of
/// this library carries this record; it is meant for messages of users.
class TOLV_MESSAGES_API GenericExceptionData : public Utils::MayContainError {
public:
    /// In the sender's numbering.
    Reflector<unsigned int> exceptionType{this, "ExceptionType"_key, Required};
    Reflector<std::string> exceptionMessage{this, "ExceptionMessage"_key, Required}; ///< the text

    /// Sets "ExceptionType".
    void setType(Lossless<unsigned int> type) { exceptionType = type; }
    /// Sets "ExceptionMessage".
    void setMessage(std::string const& text) { exceptionMessage = text; }
};

} // namespace Tolv::Msgs::Excepts
