#pragma once

#include <optional>
#include <string>
#include <vector>

#include <tolv/core/metadata/read_report.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs::Introspection {

/// The kind of a problem.
enum class ProblemKind {
    absent,         ///< a required key is missing
    wrongValue,     ///< a value of the wrong type, or a number that does not fit
    unknownLiteral, ///< a value that is none of the defined ones
    unknownId,      ///< the id of a nested message is unknown or not allowed there
    unknownKey,     ///< no field has this key
    consequence,    ///< a valid value that was not stored because of another problem
    more            ///< not a problem: the number of those beyond `Limits::reportEntries`
};

/// A part of the input that is missing, or that was not read as it stands.
struct Problem {
    ProblemKind kind = ProblemKind::wrongValue; ///< for programs; `problem` is for people
    std::string path;                           ///< "Data.ComponentList[3].Type"
    std::string problem;                        ///< "expected a boolean", "required, but absent"
    std::optional<MetaData::Element> value;     ///< the value in the input; empty if there is none

    /// The value as JSON, cut to about 60 bytes; empty if there is none.
    [[nodiscard]] TOLV_MESSAGES_API std::string found() const;
};

/// Explains what went wrong in the reads that `report` has recorded, in the order of the reads;
/// unknown keys come last. An absent optional key is not a problem. If there are more than
/// `Limits::reportEntries` problems, the last entry says how many more. Thread-safe.
/// @throws std::bad_alloc
TOLV_MESSAGES_API std::vector<Problem> explain(MetaData::ReadReport const& report);
/// The same for a list of events. `ReadReport::events` returns only the first ones of a report.
TOLV_MESSAGES_API std::vector<Problem> explain(std::vector<MetaData::ReadEvent> const& events);

/// Lists values without a defined meaning in fields that accept any value, such as the level of an
/// error. No reader refuses them. The list is limited like that of `explain`.
/// @throws std::bad_alloc
TOLV_MESSAGES_API std::vector<Problem> unknownLiterals(MetaData::ReadReport const& report);
/// The same for a list of events.
TOLV_MESSAGES_API std::vector<Problem>
unknownLiterals(std::vector<MetaData::ReadEvent> const& events);

} // namespace Tolv::Msgs::Introspection
