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

/// Whether messages of this class need a destination. While one is read, its base cannot know.
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

/// Problems, as many as anybody reads; of the others the number.
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
            problems_.add({ProblemKind::unknownKey, event.path, "nothing read it", event.found});
            break;
        case Outcome::unreadable: // may have been told of its field
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
    /// Of a field that was read.
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

    /// What became of a field whose value is of the right kind, and why.
    static std::string failure(ReadEvent const& event, FieldDescription const& field) {
        auto const isList = field.type != nullptr && field.type->kind == TypeKind::list;
        std::string text = event.outcome != Outcome::kept ? "did not read"
                           : isList                       ? "stays as it was"
                                                          : "refused by its check";
        if (auto const cause = causeOf(event, field); !cause.empty())
            return text + ", because of " + cause;
        return event.reason.empty() ? text : text + ": " + event.reason;
    }

    /// The path of what is to blame inside of a field; empty when there is no such place.
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

    /// A payload that converts itself by hand reports no keys.
    void addUnknownKeys(ReadEvent const& event, FieldDescription const& field) {
        if (field.type == nullptr || !field.type->strict || !event.found.isObject())
            return;
        auto const fields = field.type->fields();
        for (auto const& member : event.found.object())
            if (findField(fields, member.key()) == nullptr)
                problems_.add({ProblemKind::unknownKey,
                               MetaData::Detail::pathBelow(event.path, member.key()),
                               "nothing read it", member.value});
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
    std::string idOf_;              ///< the way to the message that was begun last
    bool needsDestination_ = false; ///< whether its class does
};

/// Adds what is wrong with the literal of a field, if it is an open one.
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
    } catch (Exception::Base const& e) { // a text that is no UTF-8
        return e.what();
    }
    if (text.size() <= most)
        return text;
    auto end = most;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end; // not within a character
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
