#include <cmath>
#include <cstdint>

#include "attribute_view.h"
#include "findings.h"
#include "tree_path.h"
#include "tree_text.h"

namespace Tolv::Tool {

namespace {

using MetaData::Element;
using Msgs::Introspection::Problem;
using Msgs::Introspection::ProblemKind;

Rule ruleOf(ProblemKind kind) {
    switch (kind) {
    case ProblemKind::absent:
        return absent;
    case ProblemKind::unknownLiteral:
        return literal;
    case ProblemKind::unknownId:
        return unknownId;
    case ProblemKind::unknownKey:
        return unknownKey;
    case ProblemKind::more:
        return more;
    case ProblemKind::wrongValue:
    case ProblemKind::consequence:
        break;
    }
    return wrongValue;
}

/// Whether a reader that only has doubles, such as JavaScript, changes the value of this integer.
bool isRounded(Element const& value) {
    if (value.isSigned()) {
        auto const number = value.signedNumber();
        auto const nearest = static_cast<double>(number);
        return nearest >= 0x1p63 || static_cast<std::int64_t>(nearest) != number;
    }
    if (value.isUnsigned()) {
        auto const number = value.unsignedNumber();
        auto const nearest = static_cast<double>(number);
        return nearest >= 0x1p64 || static_cast<std::uint64_t>(nearest) != number;
    }
    return false;
}

void addRounded(Element const& value, TreePath const& path, std::vector<Finding>& out) {
    if (isRounded(value)) {
        out.push_back({rounded, path.text(), "JavaScript rounds it", shortText(value, 60)});
    } else if (value.isArray()) {
        for (unsigned int i = 0; i < value.array().size(); ++i)
            addRounded(value.array()[i], {path, i}, out);
    } else if (value.isObject()) {
        for (auto const& member : value.object())
            addRounded(member.value, {path, member.key()}, out);
    }
}

void addProblem(Problem const& one, std::vector<Finding>& out) {
    if (one.kind !=
        ProblemKind::consequence) // its cause is reported as well, unless the kind is unknown
        out.push_back({ruleOf(one.kind), one.path, one.problem,
                       one.value ? shortText(*one.value, 60) : std::string()});
}

} // namespace

std::vector<Finding> findingsOf(ExaminedLine const& line, Classes const& classes) {
    std::vector<Finding> out;
    if (!line.error.empty()) {
        auto const isUnknown = line.id && classes.find(*line.id) == nullptr;
        out.push_back(
            {isUnknown ? unknownId : noMessage, isUnknown ? "MessageID" : "", line.error, ""});
    } else {
        for (auto const& one : line.problems)
            addProblem(one, out);
        if (out.empty() && !line.problems.empty()) {
            auto const& one = line.problems.front();
            out.push_back({wrongValue, one.path, one.problem,
                           one.value ? shortText(*one.value, 60) : std::string()});
        }
        for (auto const& one : line.literals)
            addProblem(one, out);
        if (auto const verdict = verdictOf(*line.message); verdict && !verdict->valid)
            out.push_back({invalid, "Data", verdict->reason, ""});
        for (auto const& one : verdictsInside(*line.message))
            if (!one.verdict.valid)
                out.push_back({invalid, one.path, one.verdict.reason, ""});
    }
    addRounded(line.input, {}, out);
    return out;
}

} // namespace Tolv::Tool
