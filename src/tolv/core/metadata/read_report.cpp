#include <algorithm>
#include <exception>
#include <optional>
#include <utility>

#include <tolv/core/limits.h>
#include <tolv/core/metadata/detail/read_recorder.h>
#include <tolv/core/metadata/detail/tree.h>
#include <tolv/core/metadata/json.h>

namespace Tolv::MetaData {

std::atomic<unsigned int> Detail::openReports = 0;

namespace {

using Recorder = ReadReport::Recorder;

// Trivially destructible, so that reads can also use it while the thread ends.
thread_local constinit Recorder* mine = nullptr;

std::string textOfException() {
    try {
        throw;
    } catch (std::exception const& e) {
        return e.what();
    } catch (...) {
        return "an exception of an unknown type";
    }
}

bool isPlain(std::string_view key) {
    return !key.empty() && std::all_of(key.begin(), key.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               std::string_view("_-:+@/$#").find(c) != std::string_view::npos;
    });
}

std::string indexed(std::size_t index) { return '[' + std::to_string(index) + ']'; }

/// Whether both are the same element, or handles of the same container.
bool isSame(Element const& left, Element const& right) {
    auto const* const content = Detail::Access::container(left);
    return &left == &right || (content != nullptr && content == Detail::Access::container(right));
}

constexpr int deepest = 6; ///< levels of a hand-written payload to search for a record

/// The prefixes that exist in every report.
enum : std::uint32_t { direct, elsewhere };

/// The outcome of a field that was not read because an earlier one threw.
constexpr std::uint8_t skipped = 255;

} // namespace

std::string Detail::pathBelow(std::string path, std::string_view key) {
    if (!path.empty())
        path += '.';
    if (isPlain(key))
        return path.append(key);
    std::string quoted;
    try {
        WriterJson::Write(Element(Trivial_T<std::string>(std::string(key))), quoted);
    } catch (std::exception const&) {
        quoted = "\"?\""; // not valid UTF-8
    }
    return path + quoted;
}

/// A record that is being read, and its current field. Each nested record has one on the stack.
struct Recorder::Frame {
    Frame* const outer;
    Recorder& recorder;
    Element const& element;
    Element const* child = nullptr; ///< the value of the current field's key
    Array const* list = nullptr;    ///< the list within `child` in which the last record was found
    Array const* copyOfList = nullptr;
    std::uint32_t prefix = direct; ///< the path to that list
    std::uint32_t next = 0;        ///< the entry that is probably read next
    std::uint32_t read = none;
    std::uint32_t head = none; ///< the first walk over the latest object in the current field
    std::uint16_t field = 0;   ///< the current one
    bool isMuted = false;      ///< this element or an enclosing one is not an object
    bool isLost = false;       ///< a record of the current field was not found in `child`

    Frame(Recorder& owner, Element const& from)
        : outer(std::exchange(owner.frame_, this)), recorder(owner), element(from) {}
    Frame(Frame const&) = delete;
    Frame& operator=(Frame const&) = delete;
    ~Frame() { recorder.frame_ = outer; }

    void begin(std::uint16_t index, Element const* under) {
        field = index;
        child = under;
        list = nullptr;
        head = none;
        isLost = false;
    }

    [[nodiscard]] FieldOfRead place() const { return {read, field}; }

    /// Looks for `wanted` in the list in which the previous record was found. @return null if it is
    /// not there
    /// @param entry receives the index
    Element const* findInList(Element const& wanted, std::uint32_t& entry) {
        auto const size = list != nullptr ? list->size() : 0;
        for (unsigned int i = 0; i < size; ++i) {
            auto const at = (next + i) % size;
            if (isSame((*list)[at], wanted)) {
                next = at + 1;
                entry = at;
                return &(*copyOfList)[at];
            }
        }
        return nullptr;
    }

    /// Looks for `wanted` below `in`, of which `copy` is a copy. Stores the list that contains it
    /// in this frame.
    /// @param way receives the keys and indices of the path, at its front
    /// @return the counterpart of `wanted` below `copy`, or null
    Element const* search(Element const& in, Element const& copy, Element const& wanted,
                          std::string& way, std::uint32_t& entry, int levels) {
        if (in.isArray()) {
            list = &in.array();
            copyOfList = &copy.array();
            next = 0;
            if (auto const* const found = findInList(wanted, entry))
                return found;
            for (unsigned int i = 0; levels > 0 && i < in.array().size(); ++i)
                if (auto const* const found =
                        search(in.array()[i], copy.array()[i], wanted, way, entry, levels - 1)) {
                    way.insert(0, indexed(i));
                    return found;
                }
        } else if (in.isObject()) {
            auto counterpart = copy.object().begin();
            for (auto const& member : in.object()) {
                list = nullptr;
                auto const* found = isSame(member.value, wanted) ? &counterpart->value : nullptr;
                if (found == nullptr && levels > 0)
                    found =
                        search(member.value, counterpart->value, wanted, way, entry, levels - 1);
                if (found != nullptr) {
                    way.insert(0, '.' + Detail::pathBelow({}, member.key()));
                    return found;
                }
                ++counterpart;
            }
        }
        list = nullptr;
        return nullptr;
    }
};

Recorder* Recorder::current() noexcept { return mine; }

Recorder::Recorder() : outer_(std::exchange(mine, this)), prefixes_{"", ".?"} {
    ++Detail::openReports;
}

Recorder::~Recorder() {
    --Detail::openReports;
    mine = outer_;
}

Recorder::Shape const& Recorder::shapeOf(std::span<ReflectorBase* const> fields,
                                         std::type_info const& record) {
    auto const describe = [](ReflectorBase const& field) {
        return Shape::Field{&field.info(), field.isRequired()};
    };
    std::pair const name{&record, &fields.front()->info()};
    auto const [first, last] = shapes_.equal_range(name);
    auto const known = std::find_if(first, last, [&](auto const& entry) {
        auto const& those = entry.second.fields;
        return std::equal(fields.begin(), fields.end(), those.begin(), those.end(),
                          [&](auto* field, auto const& its) { return describe(*field) == its; });
    });
    if (known != last)
        return known->second;
    Shape shape{&record, {}};
    for (auto const* const field : fields)
        shape.fields.push_back(describe(*field));
    return shapes_.emplace(name, std::move(shape))->second;
}

/// Whether any walk over the object whose first walk is `head` has a field with this key.
bool Recorder::hasField(std::uint32_t head, std::string_view key) const {
    for (; head != none; head = reads_[head].sequel)
        for (auto const& field : reads_[head].shape->fields)
            if (field.info->text() == key)
                return true;
    return false;
}

/// Makes `read` the next walk over the same object as `head`.
void Recorder::continueObject(Read& read, std::uint32_t head) {
    read = reads_[head];
    while (reads_[head].sequel != none)
        head = reads_[head].sequel;
    reads_[head].sequel = static_cast<std::uint32_t>(reads_.size());
    read.sequel = none;
    read.isSequel = true;
}

/// Determines the path of a new frame's element below the current field of the enclosing frame.
void Recorder::locate(Frame& frame, Read& read) {
    auto& outer = *frame.outer;
    read.parent = outer.read;
    read.field = outer.field;
    Element const* found = nullptr;
    if (outer.child != nullptr && !outer.isLost) {
        auto const& parent = reads_[outer.read];
        auto const* const copy = parent.element.find(*parent.shape->fields[outer.field].info);
        if (copy == nullptr || isSame(*outer.child, frame.element)) {
            found = copy;
        } else if ((found = outer.findInList(frame.element, read.entry)) != nullptr) {
            read.prefix = outer.prefix;
        } else {
            std::string way;
            found = outer.search(*outer.child, *copy, frame.element, way, read.entry, deepest);
            if (!way.empty()) {
                read.prefix = static_cast<std::uint32_t>(prefixes_.size());
                prefixes_.push_back(std::move(way));
            }
            outer.prefix = read.prefix;
        }
        if (read.prefix == direct && read.entry != none)
            notes_[outer.place()].entry = read.entry;
    }
    if (found == nullptr) { // some payloads create temporary elements; do not search again
        outer.isLost = true;
        read.prefix = elsewhere;
    }
    read.element = found != nullptr ? *found : frame.element;
}

/// Determines which object the new frame walks over, and its path.
void Recorder::place(Frame& frame, Read& read, Key const& firstKey) {
    auto const number = static_cast<std::uint32_t>(reads_.size());
    auto const* const content = Detail::Access::container(frame.element);
    if (message_ != nullptr && message_->frame_ == frame.outer && message_->content_ == content) {
        if (message_->head_ != none && !hasField(message_->head_, firstKey.text()))
            return continueObject(read, message_->head_);
        message_->head_ = number;
    }
    if (frame.outer != nullptr)
        locate(frame, read);
    else
        read.element = frame.element;
    // The report shares the content that it has seen, so its address cannot have been reused.
    auto& head = frame.outer != nullptr ? frame.outer->head : head_;
    if (head != none && isSame(reads_[head].element, read.element) &&
        !hasField(head, firstKey.text()))
        continueObject(read, head);
    else
        head = number;
}

[[gnu::noinline]] void Recorder::open(Frame& frame, std::span<ReflectorBase* const> fields,
                                      std::type_info const& record) {
    if (frame.outer != nullptr && frame.outer->isMuted) {
        frame.isMuted = true;
        return;
    }
    Read read;
    place(frame, read, fields.front()->key());
    read.shape = &shapeOf(fields, record);
    read.outcomes = outcomes_.size();
    frame.isMuted = !read.element.isObject();
    frame.read = static_cast<std::uint32_t>(reads_.size());
    if (!frame.isMuted)
        outcomes_.resize(outcomes_.size() + fields.size(), skipped);
    reads_.push_back(std::move(read));
}

void Recorder::read(std::span<ReflectorBase* const> fields, std::type_info const& record,
                    Element const& element) {
    if (fields.empty())
        return;
    Frame frame(*this, element);
    open(frame, fields, record);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (frame.isMuted)
            fields[i]->copyFromMetaData(element);
        else
            read(frame, static_cast<std::uint16_t>(i), *fields[i]);
    }
}

std::uint8_t& Recorder::outcome(Frame const& frame) {
    return outcomes_[reads_[frame.read].outcomes + frame.field];
}

void Recorder::read(Frame& frame, std::uint16_t index, ReflectorBase& field) {
    frame.begin(index, frame.element.find(field.key()));
    thrower_ = {none, 0}; // any exception from now on comes from within this field
    outcome(frame) = static_cast<std::uint8_t>(Outcome::read);
    try {
        field.copyFromMetaData(frame.element);
    } catch (...) {
        outcome(frame) = static_cast<std::uint8_t>(Outcome::threw);
        noteException(frame);
        thrower_ = frame.place();
        throw;
    }
    if (frame.child == nullptr)
        outcome(frame) = static_cast<std::uint8_t>(Outcome::absent);
    else if (!field.initialized() && outcome(frame) != static_cast<std::uint8_t>(Outcome::kept))
        outcome(frame) = static_cast<std::uint8_t>(Outcome::unset);
}

/// Adds a note about the exception being handled.
[[gnu::noinline]] void Recorder::noteException(Frame const& frame) {
    auto& note = notes_[frame.place()];
    note.cause = std::exchange(thrower_, {none, 0});
    note.reason = textOfException();
}

void Recorder::swallowed() noexcept {
    if (frame_ == nullptr || frame_->isMuted)
        return;
    try {
        noteException(*frame_);
    } catch (...) { // the outcome is sufficient
    }
}

void Recorder::kept() noexcept {
    if (frame_ != nullptr && !frame_->isMuted)
        outcome(*frame_) = static_cast<std::uint8_t>(Outcome::kept);
}

/// Visits the fields of all walks. Fields before a nested walk are visited before it.
/// @param onRead is called with the number of each walk as it begins, and its nesting depth
/// @param onField is called with the numbers of the walk and the field, the outcome and the depth
template <class OnRead, class OnField>
void Recorder::walk(OnRead const& onRead, OnField const& onField) const {
    struct Level {
        std::uint32_t read;
        std::uint16_t next;
    };
    std::vector<Level> levels;
    auto const tellUpTo = [&](std::size_t end) {
        auto& level = levels.back();
        for (; level.next < end; ++level.next)
            if (auto const outcome = outcomes_[reads_[level.read].outcomes + level.next];
                outcome != skipped)
                onField(level.read, level.next, static_cast<Outcome>(outcome), levels.size() - 1);
    };
    auto const end = [&] {
        tellUpTo(reads_[levels.back().read].shape->fields.size());
        levels.pop_back();
    };
    for (std::uint32_t number = 0; number < reads_.size(); ++number) {
        auto const& read = reads_[number];
        while (!levels.empty() && levels.back().read != read.parent)
            end();
        if (!levels.empty())
            tellUpTo(read.field + std::size_t{1});
        onRead(number, levels.size());
        if (read.element.isObject())
            levels.push_back({number, 0});
    }
    while (!levels.empty())
        end();
}

/// Visits the members of all objects for which no walk over the object has a field.
template <class OnKey>
void Recorder::walkUnknownKeys(OnKey const& onKey) const {
    for (std::uint32_t number = 0; number < reads_.size(); ++number) {
        auto const& first = reads_[number];
        if (first.isSequel || !first.element.isObject())
            continue;
        for (auto const& member : first.element.object())
            if (!hasField(number, member.key()))
                onKey(number, member);
    }
}

/// Appends the path from the enclosing walk to this one.
void Recorder::appendStep(std::string& path, Read const& read) const {
    if (read.parent == none)
        return;
    path = Detail::pathBelow(std::move(path),
                             reads_[read.parent].shape->fields[read.field].info->text());
    path += prefixes_[read.prefix];
    if (read.entry != none)
        path += indexed(read.entry);
}

std::string Recorder::pathOf(std::uint32_t read) const {
    std::vector<std::uint32_t> way;
    for (; read != none; read = reads_[read].parent)
        way.push_back(read);
    std::string path;
    for (auto at = way.rbegin(); at != way.rend(); ++at)
        appendStep(path, reads_[*at]);
    return path;
}

void Recorder::forEach(std::function<void(ReadEvent const&)> const& call) const {
    std::string path;
    std::vector<std::size_t> sizes; // of the paths of the enclosing walks
    walk(
        [&](std::uint32_t number, std::size_t level) {
            auto const& read = reads_[number];
            path.resize(level == 0 ? 0 : sizes[level - 1]);
            appendStep(path, read);
            sizes.resize(level);
            sizes.push_back(path.size());
            if (read.element.isObject())
                return;
            ReadEvent event;
            event.path = path;
            event.outcome = Outcome::unreadable;
            event.record = *read.shape->record;
            event.found = read.element;
            call(event);
        },
        [&](std::uint32_t number, std::uint16_t index, Outcome outcome, std::size_t level) {
            auto const& read = reads_[number];
            auto const& field = read.shape->fields[index];
            ReadEvent event;
            event.key = field.info->text();
            event.path = Detail::pathBelow(path.substr(0, sizes[level]), event.key);
            event.outcome = outcome;
            event.required = field.isRequired;
            event.field = field.info;
            event.record = *read.shape->record;
            if (auto const* const found = read.element.find(*field.info))
                event.found = *found;
            if (auto const note = notes_.find({number, index}); note != notes_.end()) {
                auto const& [entry, cause, reason] = note->second;
                if (entry != none)
                    event.entry = entry;
                event.reason = reason;
                if (cause.first != none)
                    event.cause = Detail::pathBelow(
                        pathOf(cause.first),
                        reads_[cause.first].shape->fields[cause.second].info->text());
            }
            call(event);
        });
    std::optional<std::uint32_t> of;
    walkUnknownKeys([&](std::uint32_t number, auto const& member) {
        if (of != number)
            path = pathOf(number);
        of = number;
        ReadEvent event;
        event.key = member.key();
        event.path = Detail::pathBelow(path, event.key);
        event.outcome = Outcome::unknownKey;
        event.found = member.value;
        call(event);
    });
}

std::size_t Recorder::size() const {
    std::size_t count = 0;
    walk([&](std::uint32_t number,
             std::size_t) { count += reads_[number].element.isObject() ? 0U : 1U; },
         [&](auto&&...) { ++count; });
    walkUnknownKeys([&](auto&&...) { ++count; });
    return count;
}

void Recorder::clear() noexcept {
    reads_.clear();
    outcomes_.clear();
    notes_.clear();
    prefixes_.resize(elsewhere + 1);
    head_ = none;
}

ReadReport::ReadReport() : recorder_(std::make_unique<Recorder>()) {}
ReadReport::~ReadReport() = default;
std::size_t ReadReport::size() const { return recorder_->size(); }
void ReadReport::clear() noexcept { recorder_->clear(); }

void ReadReport::forEach(std::function<void(ReadEvent const&)> const& call) const {
    recorder_->forEach(call);
}

std::vector<ReadEvent> ReadReport::events() const {
    std::vector<ReadEvent> first;
    recorder_->forEach([&](ReadEvent const& event) {
        if (first.size() < Limits{}.reportEntries)
            first.push_back(event);
    });
    return first;
}

void Detail::MessageRead::begin(Element const& element) noexcept {
    recorder_ = Recorder::current();
    if (recorder_ == nullptr)
        return;
    outer_ = std::exchange(recorder_->message_, this);
    frame_ = recorder_->frame_;
    content_ = Access::container(element);
}

void Detail::MessageRead::end() noexcept { recorder_->message_ = outer_; }

bool Detail::readReported(ReflectorBase& field, Element const& parent) {
    auto* const recorder = Recorder::current();
    if (recorder == nullptr)
        return false;
    auto* const one = &field;
    recorder->read({&one, 1}, typeid(void), parent);
    return true;
}

void Detail::reportSwallowed() noexcept {
    if (auto* const recorder = Recorder::current())
        recorder->swallowed();
}

void Detail::reportKept() noexcept {
    if (auto* const recorder = Recorder::current())
        recorder->kept();
}

} // namespace Tolv::MetaData
