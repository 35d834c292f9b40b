#include <tolv/msgs/introspection/explanation.h>

#include <functional>
#include <set>

#include <tolv/core/exceptions.h>
#include <tolv/core/limits.h>
#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/json.h>
#include <tolv/msgs/catalogue.h>
#include <tolv/msgs/introspection/detail/mismatch.h>

namespace Tolv::Msgs::Introspection {

using MetaData::Element;
using MetaData::ReadEvent;
using MetaData::ReadReport;
using Outcome = ReadEvent::Outcome;

namespace {

FieldDescription fieldOf(ReadEvent const& event) {
    return describeField({event.field, event.required});
}

/// Whether messages of this class require a destination. The base class, which reads the field,
/// cannot know that yet.
bool needsDestination(unsigned long long id) {
    static auto const those = [] {
        std::set<unsigned long long> ids;
        for (auto const& row : catalogue())
            if (row.make()->destination.isRequired())
                ids.insert(row.id);
        return ids;
    }();
    return those.contains(id);
}

/// Collects the first problems, and counts the rest.
class Problems {
public:
    void add(Problem problem) {
        lastPath_ = problem.path;
        if (first_.size() < Limits{}.reportEntries)
            first_.push_back(std::move(problem));
        else
            ++more_;
    }

    [[nodiscard]] std::string const& lastPath() const noexcept { return lastPath_; }

    std::vector<Problem> take() {
        if (more_ != 0)
            first_.push_back({ProblemKind::more, "", "and " + std::to_string(more_) + " more", {}});
        return std::move(first_);
    }

private:
    std::vector<Problem> first_;
    std::string lastPath_;
    std::size_t more_ = 0;
};

class Explanation {
public:
    void operator()(ReadEvent const& event) {
        switch (event.outcome) {
        case Outcome::absent:
            if (event.required || isNeededDestination(event))
                problems_.add(Detail::absence(event.path));
            break;
        case Outcome::unknownKey:
            problems_.add(
                {ProblemKind::unknownKey, event.path, "no field has this key", event.found});
            break;
        case Outcome::unreadable: // its field may have been reported already
            if (problems_.lastPath() != event.path || event.path.empty())
                problems_.add(
                    {ProblemKind::wrongValue, event.path,
                     std::string("expected an object, found ") + describe(event.found.kind()),
                     event.found});
            break;
        case Outcome::read:
            if (event.key == "MessageID") {
                idOf_ = event.path.substr(0, event.path.size() - event.key.size());
                needsDestination_ = namesNeedyClass(event.found);
            }
            addOddities(event, fieldOf(event));
            break;
        case Outcome::unset:
        case Outcome::kept:
        case Outcome::threw:
            explainFailure(event, fieldOf(event));
            break;
        }
    }

    std::vector<Problem> take() { return problems_.take(); }

private:
    /// Adds what is unusual about a field that was read.
    void addOddities(ReadEvent const& event, FieldDescription const& field) {
        if (auto length = Detail::lengthMismatch(field, event.found, event.path))
            problems_.add(std::move(*length));
        addUnknownKeys(event, field);
    }

    void explainFailure(ReadEvent const& event, FieldDescription const& field) {
        if (field.type == nullptr) {
            problems_.add(
                {ProblemKind::consequence, event.path, failure(event, field), event.found});
            return;
        }
        if (auto wrong = Detail::mismatch(field, event.found, event.path)) {
            problems_.add(std::move(*wrong));
            return;
        }
        auto inside = Detail::problemsInside(field, event.found, event.path);
        if (event.outcome != Outcome::threw || inside.empty())
            problems_.add(
                {ProblemKind::consequence, event.path, failure(event, field), event.found});
        for (auto& one : inside)
            problems_.add(std::move(one));
        addUnknownKeys(event, field);
    }

    /// Says what happened to a field whose value has the right type, and why.
    static std::string failure(ReadEvent const& event, FieldDescription const& field) {
        auto const isList = field.type != nullptr && field.type->kind == TypeKind::list;
        std::string text = event.outcome != Outcome::kept ? "did not parse"
                           : isList                       ? "keeps its old value"
                                                          : "refused by its check";
        if (auto const cause = causeOf(event, field); !cause.empty())
            return text + ", because of " + cause;
        return event.reason.empty() ? text : text + ": " + event.reason;
    }

    /// The path of the cause inside the field; empty if there is none.
    static std::string causeOf(ReadEvent const& event, FieldDescription const& field) {
        if (field.type != nullptr) {
            auto const inside = Detail::problemsInside(field, event.found, event.path);
            if (!inside.empty())
                return inside.front().path;
        }
        if (event.entry)
            return event.path + '[' + std::to_string(*event.entry) + ']';
        return event.cause;
    }

    /// Hand-written payloads report no keys, so look for unknown ones here.
    void addUnknownKeys(ReadEvent const& event, FieldDescription const& field) {
        if (field.type == nullptr || !field.type->strict || !event.found.isObject())
            return;
        auto const fields = field.type->fields();
        for (auto const& member : event.found.object())
            if (findField(fields, member.key()) == nullptr)
                problems_.add({ProblemKind::unknownKey,
                               MetaData::Detail::pathBelow(event.path, member.key()),
                               "no field has this key", member.value});
    }

    static bool namesNeedyClass(Element const& found) {
        unsigned long long id = 0;
        return TryGetAs(found, id) && needsDestination(id);
    }

    [[nodiscard]] bool isNeededDestination(ReadEvent const& event) const {
        return needsDestination_ && event.key == "Destination" &&
               event.path.size() == idOf_.size() + event.key.size();
    }

    Problems problems_;
    std::string idOf_;              ///< path prefix of the message that began last
    bool needsDestination_ = false; ///< whether that message requires a destination
};

/// Adds a problem if an open enumeration field holds an unknown literal.
void addUnknownLiteral(ReadEvent const& event, Problems& problems) {
    if (event.outcome != Outcome::read)
        return;
    auto const field = fieldOf(event);
    if (!field.literals.empty() && !field.closed && !Detail::isLiteral(field, event.found))
        problems.add({ProblemKind::unknownLiteral, event.path,
                      "not one of " + Detail::literalsOf(field), event.found});
}

} // namespace

std::string Problem::found() const {
    constexpr std::size_t most = 60;
    std::string text;
    try {
        if (value)
            MetaData::WriterJson::Write(*value, text);
    } catch (Exception::Base const& e) { // the text is not valid UTF-8
        return e.what();
    }
    if (text.size() <= most)
        return text;
    auto end = most;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end; // do not cut within a character
    return text.substr(0, end) + "...";
}

std::vector<Problem> unknownLiterals(ReadReport const& report) {
    Problems problems;
    report.forEach([&](ReadEvent const& event) { addUnknownLiteral(event, problems); });
    return problems.take();
}

std::vector<Problem> unknownLiterals(std::vector<ReadEvent> const& events) {
    Problems problems;
    for (auto const& event : events)
        addUnknownLiteral(event, problems);
    return problems.take();
}

std::vector<Problem> explain(ReadReport const& report) {
    Explanation explanation;
    report.forEach(std::ref(explanation));
    return explanation.take();
}

std::vector<Problem> explain(std::vector<ReadEvent> const& events) {
    Explanation explanation;
    for (auto const& event : events)
        explanation(event);
    return explanation.take();
}

} // namespace Tolv::Msgs::Introspection
