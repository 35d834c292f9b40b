#pragma once

#include <memory>

#include <tolv/metadata/polymorphic_reflector.h>
#include <tolv/msgs/errs/messages.h>
#include <tolv/msgs/record.h>

namespace Tolv::MetaData {
extern template class TOLV_MESSAGES_API PolymorphicReflector<Msgs::Errs::ErrorMessage>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs::Utils {

/// A record that may carry a whole error message beside its own fields. Copies share the message.
class TOLV_MESSAGES_API MayContainError : public MirroredObject {
public:
    /// The report; unset: none.
    MetaData::PolymorphicReflector<Errs::ErrorMessage> error{this, "Error"_key, Optional};

    MayContainError() = default;
    MayContainError(MayContainError const& other) : MayContainError() { *this = other; }
    MayContainError& operator=(MayContainError const&) = default;

    /// Whether there is a report.
    [[nodiscard]] bool hasError() const noexcept {
        return error.initialized() && error.pointer() != nullptr;
    }

    /// Puts a report into an error message of its own.
    void setError(Errs::GenericErrorData const& report) {
        error = std::make_shared<Errs::GenericErrorMessage>(report);
    }
};

} // namespace Tolv::Msgs::Utils
