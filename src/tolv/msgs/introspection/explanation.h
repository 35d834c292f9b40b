#pragma once

#include <optional>
#include <string>
#include <vector>

#include <tolv/core/metadata/read_report.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs::Introspection {

/// What kind of thing went wrong.
enum class ProblemKind {
    absent,         ///< a required key is not there
    wrongValue,     ///< of the wrong kind, or a number that doesn't fit
    unknownLiteral, ///< none of those that there are
    unknownId,      ///< of a message inside, or one that doesn't belong there
    unknownKey,     ///< nothing read it
    consequence,    ///< right by itself, and yet not read, because of something else
    more            ///< none by itself: how many there are beyond `Limits::reportEntries`
};

/// One thing in an input that is not, or not as it stands there, in what was read from it.
struct Problem {
    ProblemKind kind = ProblemKind::wrongValue; ///< for programs; `problem` says it for people
    std::string path;                           ///< "Data.ComponentList[3].Type"
    std::string problem;                        ///< "expected a boolean", "required, but absent"
    std::optional<MetaData::Element> value;     ///< what stands there; empty when nothing does

    /// The value as JSON, cut to about 60 bytes; empty when there is none.
    [[nodiscard]] TOLV_MESSAGES_API std::string found() const;
};

/// What went wrong in the reads that `report` has recorded, in the order in which it happened; keys
/// that nothing read come last. An optional key that is absent is no problem. Beyond
/// `Limits::reportEntries` problems the last one says how many more there are. Thread-safe.
/// @throws std::bad_alloc
TOLV_MESSAGES_API std::vector<Problem> explain(MetaData::ReadReport const& report);
/// The same of some events. Those of a report may be no more than the first of them.
TOLV_MESSAGES_API std::vector<Problem> explain(std::vector<MetaData::ReadEvent> const& events);

/// The values of fields that take any, such as the level of an error, that are none of those that
/// have a meaning. No reader refuses them. Bounded as `explain`.
/// @throws std::bad_alloc
TOLV_MESSAGES_API std::vector<Problem> unknownLiterals(MetaData::ReadReport const& report);
/// The same of some events.
TOLV_MESSAGES_API std::vector<Problem>
unknownLiterals(std::vector<MetaData::ReadEvent> const& events);

} // namespace Tolv::Msgs::Introspection
