#pragma once

#include <memory>

#include <tolv/fields/polymorphic_reflector.h>
#include <tolv/msgs/errs/messages.h>
#include <tolv/msgs/record.h>

namespace Tolv::MetaData {
extern template class TOLV_MESSAGES_API PolymorphicReflector<Msgs::Errs::ErrorMessage>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs::Utils {

/// A record that may contain a whole error message alongside its own fields. Copies share the
/// message.
class TOLV_MESSAGES_API MayContainError : public MirroredObject {
public:
    MetaData::PolymorphicReflector<Errs::ErrorMessage> error{
        this, field<"Error", Doc{"the error report, a whole message; absent if there is no error"}>,
        Optional};

    /// Whether there is an error report.
    [[nodiscard]] bool hasError() const noexcept {
        return error.initialized() && error.pointer() != nullptr;
    }

    /// Wraps a report in a new error message.
    void setError(Errs::GenericErrorData const& report) {
        error = std::make_shared<Errs::GenericErrorMessage>(report);
    }
};

} // namespace Tolv::Msgs::Utils
