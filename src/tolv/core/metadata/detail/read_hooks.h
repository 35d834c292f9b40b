#pragma once

#include <atomic>
#include <concepts>
#include <string>
#include <string_view>

#include <tolv/core/metadata/mirrored_object.h>

/// @file
/// Where reads tell a `ReadReport` what they do. Without one they cost a load of a flag.
namespace Tolv::MetaData::Detail {

/// The path of a child: a key that is no plain word stands there in quotes.
TOLV_CORE_API std::string pathBelow(std::string path, std::string_view key);

/// The number of reports that there are, in all threads.
extern TOLV_CORE_API std::atomic<unsigned int> openReports;

[[nodiscard]] inline bool anyReport() noexcept {
    return openReports.load(std::memory_order_relaxed) != 0;
}

/// Reads `field` from `parent` if this thread has a report. @return whether it did
TOLV_CORE_API bool readReported(ReflectorBase& field, Element const& parent);

/// Has a field outside of a walk over a record, such as the payload of a message, read itself.
template <class Field>
void readField(Field& field, Element const& parent) {
    if constexpr (std::derived_from<Field, ReflectorBase>) {
        if (anyReport() && readReported(field, parent)) [[unlikely]]
            return;
    }
    field.assign(parent);
}

/// The exception that is being handled has no other effect than that the field reads nothing.
TOLV_CORE_API void reportSwallowed() noexcept;

/// The field that reads itself keeps what it had.
TOLV_CORE_API void reportKept() noexcept;

} // namespace Tolv::MetaData::Detail
