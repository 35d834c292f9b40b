#include <tolv/msgs/introspection/explanation.h>

#include <set>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/json.h>
#include <tolv/msgs/catalogue.h>
#include <tolv/msgs/introspection/detail/mismatch.h>
#include <tolv/msgs/introspection/detail/tables.h>

namespace Tolv::Msgs::Introspection {

using MetaData::Element;
using MetaData::ReadEvent;
using Outcome = ReadEvent::Outcome;

namespace {

FieldDescription fieldOf(ReadEvent const& event) {
    FieldDescription field;
    field.key = event.key;
    field.type = typeOfField(event.field);
    field.required = event.required;
    Detail::annotate(field, event.record);
    return field;
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

class Explanation {
public:
    explicit Explanation(std::vector<ReadEvent> const& events) : events_(events) {}

    std::vector<Problem> take() {
        for (at_ = 0; at_ < events_.size(); ++at_)
            explain(events_[at_]);
        return std::move(problems_);
    }

private:
    void explain(ReadEvent const& event) {
        switch (event.outcome) {
        case Outcome::absent:
            if (event.required || isNeededDestination(event))
                problems_.push_back(Detail::absence(event.path));
            break;
        case Outcome::unknownKey:
            problems_.push_back(
                {ProblemKind::unknownKey, event.path, "nothing read it", event.found});
            break;
        case Outcome::unreadable: // may have been told of its field
            if (problems_.empty() || problems_.back().path != event.path)
                problems_.push_back(
                    {ProblemKind::wrongValue, event.path,
                     std::string("expected an object, found ") + describe(event.found.kind()),
                     event.found});
            break;
        case Outcome::read:
            if (event.key == "MessageID")
                id_ = &event;
            addOddities(event, fieldOf(event));
            break;
        case Outcome::unset:
        case Outcome::kept:
        case Outcome::threw:
            explainFailure(event, fieldOf(event));
            break;
        }
    }

    /// Of a field that was read.
    void addOddities(ReadEvent const& event, FieldDescription const& field) {
        if (auto length = Detail::lengthMismatch(field, event.found, event.path))
            problems_.push_back(std::move(*length));
        addUnknownKeys(event, field);
    }

    void explainFailure(ReadEvent const& event, FieldDescription const& field) {
        if (field.type == nullptr) {
            problems_.push_back(
                {ProblemKind::consequence, event.path, failure(event, field), event.found});
            return;
        }
        if (auto wrong = Detail::mismatch(field, event.found, event.path)) {
            problems_.push_back(std::move(*wrong));
            return;
        }
        auto inside = Detail::problemsInside(field, event.found, event.path);
        if (event.outcome != Outcome::threw || inside.empty())
            problems_.push_back(
                {ProblemKind::consequence, event.path, failure(event, field), event.found});
        std::move(inside.begin(), inside.end(), std::back_inserter(problems_));
        addUnknownKeys(event, field);
    }

    /// What became of a field whose value is of the right kind, and why.
    std::string failure(ReadEvent const& event, FieldDescription const& field) const {
        auto const isList = field.type != nullptr && field.type->kind == TypeKind::list;
        std::string text = event.outcome != Outcome::kept ? "did not read"
                           : isList                       ? "stays as it was"
                                                          : "refused by its check";
        if (auto const cause = causeOf(event, field); !cause.empty())
            return text + ", because of " + cause;
        return event.reason.empty() ? text : text + ": " + event.reason;
    }

    /// The path of what is to blame inside of a field; empty when there is no such place.
    std::string causeOf(ReadEvent const& event, FieldDescription const& field) const {
        if (field.type != nullptr) {
            auto const inside = Detail::problemsInside(field, event.found, event.path);
            if (!inside.empty())
                return inside.front().path;
        }
        if (event.entry)
            return event.path + '[' + std::to_string(*event.entry) + ']';
        for (auto i = at_ + 1; i < events_.size() && events_[i].path.starts_with(event.path); ++i)
            if (events_[i].outcome == Outcome::threw)
                return events_[i].path;
        return {};
    }

    /// A payload that converts itself by hand reports no keys.
    void addUnknownKeys(ReadEvent const& event, FieldDescription const& field) {
        if (field.type == nullptr || !field.type->strict || !event.found.isObject())
            return;
        auto const fields = field.type->fields();
        for (auto const& member : event.found.object())
            if (findField(fields, member.key()) == nullptr)
                problems_.push_back({ProblemKind::unknownKey,
                                     MetaData::Detail::pathBelow(event.path, member.key()),
                                     "nothing read it", member.value});
    }

    [[nodiscard]] bool isNeededDestination(ReadEvent const& event) const {
        unsigned long long id = 0;
        return event.key == "Destination" && id_ != nullptr &&
               event.path.size() - event.key.size() == id_->path.size() - id_->key.size() &&
               TryGetAs(id_->found, id) && needsDestination(id);
    }

    std::vector<ReadEvent> const& events_;
    std::vector<Problem> problems_;
    std::size_t at_ = 0;
    ReadEvent const* id_ = nullptr; ///< of the message that was begun last
};

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

std::vector<Problem> unknownLiterals(std::vector<ReadEvent> const& events) {
    std::vector<Problem> problems;
    for (auto const& event : events) {
        if (event.outcome != Outcome::read)
            continue;
        auto const field = fieldOf(event);
        if (!field.literals.empty() && !field.closed && !Detail::isLiteral(field, event.found))
            problems.push_back({ProblemKind::unknownLiteral, event.path,
                                "not one of " + Detail::literalsOf(field), event.found});
    }
    return problems;
}

std::vector<Problem> explain(std::vector<ReadEvent> const& events) {
    return Explanation(events).take();
}

} // namespace Tolv::Msgs::Introspection
