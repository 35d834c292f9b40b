#include <tolv/core/exceptions.h>

// The destructors are defined here so that the type information of each class is emitted only once,
// and an exception thrown in one library is caught by its class in another.
namespace Tolv::Exception {

Base::Base(std::string const& text) : std::runtime_error(text) {}
Base::~Base() = default;
InvalidOperation::~InvalidOperation() = default;
InvalidParameter::~InvalidParameter() = default;
InconsistentParameters::~InconsistentParameters() = default;
InsufficientResources::~InsufficientResources() = default;
InvalidHandle::~InvalidHandle() = default;
UnknownException::~UnknownException() = default;
InvalidEnumValue::~InvalidEnumValue() = default;
InvalidEnumLiteral::~InvalidEnumLiteral() = default;

} // namespace Tolv::Exception
