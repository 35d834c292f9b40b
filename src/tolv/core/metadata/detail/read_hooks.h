#pragma once

#include <atomic>
#include <concepts>
#include <string>
#include <string_view>

#include <tolv/core/metadata/mirrored_object.h>

/// @file
/// The hooks through which reads inform a `ReadReport`. Without a report they only load a flag.
namespace Tolv::MetaData::Detail {

/// The path of a child. A key that is not a plain word is quoted.
TOLV_CORE_API std::string pathBelow(std::string path, std::string_view key);

/// The number of existing reports of all threads.
extern TOLV_CORE_API std::atomic<unsigned int> openReports;

[[nodiscard]] inline bool anyReport() noexcept {
    return openReports.load(std::memory_order_relaxed) != 0;
}

/// Reads `field` from `parent` if this thread has a report. @return whether it has
TOLV_CORE_API bool readReported(ReflectorBase& field, Element const& parent);

/// Reads a field that no walk over a record covers, such as the payload of a message.
template <class Field>
void readField(Field& field, Element const& parent) {
    if constexpr (std::derived_from<Field, ReflectorBase>) {
        if (anyReport() && readReported(field, parent)) [[unlikely]]
            return;
    }
    field.assign(parent);
}

/// Reports that the exception being handled has no effect except that the field reads nothing.
TOLV_CORE_API void reportSwallowed() noexcept;

/// Reports that the current field keeps its old value.
TOLV_CORE_API void reportKept() noexcept;

} // namespace Tolv::MetaData::Detail
