#pragma once

#include <string>

#include <tolv/msgs/record.h>
#include <tolv/msgs/utils/may_contain_error.h>

namespace Tolv::Msgs::Excepts {

/// The content common to all exception messages.
class TOLV_MESSAGES_API CommonExceptionData : public MirroredObject {
public:
    Reflector<std::string> what{
        this,
        field<"what", Doc{"the text of the exception"}, Example{"the sample rate is out of range"}>,
        Required};

    CommonExceptionData() = default;
    /// The text of an exception.
    explicit CommonExceptionData(std::string const& text) { what = text; }
};

/// An exception with its number, its text and optionally the error that caused it. No message of
/// this library carries this record; it is meant for messages of users.
class TOLV_MESSAGES_API GenericExceptionData : public Utils::MayContainError {
public:
    Reflector<unsigned int> exceptionType{
        this,
        field<"ExceptionType", Doc{"the kind of exception, in the sender's numbering"},
              Example{"3"}>,
        Required};
    Reflector<std::string> exceptionMessage{
        this,
        field<"ExceptionMessage", Doc{"what went wrong, in the words of the exception"},
              Example{"the sample rate is out of range"}>,
        Required};

    /// Sets "ExceptionType".
    void setType(Lossless<unsigned int> type) { exceptionType = type; }
    /// Sets "ExceptionMessage".
    void setMessage(std::string const& text) { exceptionMessage = text; }
};

} // namespace Tolv::Msgs::Excepts
