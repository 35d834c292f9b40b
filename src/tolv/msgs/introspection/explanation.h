#pragma once

#include <optional>
#include <string>
#include <vector>

#include <tolv/core/metadata/read_report.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs::Introspection {

/// One thing in an input that is not, or not as it stands there, in what was read from it.
struct Problem {
    std::string path;                       ///< "Data.ComponentList[3].Type"
    std::string problem;                    ///< "expected a boolean", "required, but absent"
    std::optional<MetaData::Element> value; ///< what stands there; empty when nothing does

    /// The value as JSON, cut to about 60 bytes; empty when there is none.
    [[nodiscard]] TOLV_MESSAGES_API std::string found() const;
};

/// What went wrong in the reads that were reported, in the order in which it happened; keys that
/// nothing read come last. An optional key that is absent is no problem. Thread-safe.
/// @throws std::bad_alloc
TOLV_MESSAGES_API std::vector<Problem> explain(std::vector<MetaData::ReadEvent> const& events);

inline std::vector<Problem> explain(MetaData::ReadReport const& report) {
    return explain(report.events());
}

} // namespace Tolv::Msgs::Introspection
