#include <algorithm>
#include <exception>
#include <utility>

#include <tolv/core/metadata/detail/read_recorder.h>
#include <tolv/core/metadata/detail/tree.h>
#include <tolv/core/metadata/json.h>

namespace Tolv::MetaData {

std::atomic<unsigned int> Detail::openReports = 0;

namespace {

using Recorder = ReadReport::Recorder;

// Trivially destructible, so that reads while the thread ends find it, too.
thread_local constinit Recorder* mine = nullptr;

std::string textOfException() {
    try {
        throw;
    } catch (std::exception const& e) {
        return e.what();
    } catch (...) {
        return "an exception of another kind";
    }
}

bool isPlain(std::string_view key) {
    return !key.empty() && std::all_of(key.begin(), key.end(), [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
               std::string_view("_-:+@/$#").find(c) != std::string_view::npos;
    });
}

std::string indexed(std::string path, std::size_t index) {
    return std::move(path) + '[' + std::to_string(index) + ']';
}

/// The same element, or another handle of the same content.
bool isSame(Element const& left, Element const& right) {
    auto const* const content = Detail::Access::container(left);
    return &left == &right || (content != nullptr && content == Detail::Access::container(right));
}

constexpr int deepest = 6; ///< levels that a hand-written payload is searched for a record

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
        quoted = "\"?\""; // no UTF-8
    }
    return path + quoted;
}

/// One record that is being read, and the field of it that is.
struct Recorder::Frame {
    Frame* const outer;
    Recorder& recorder;
    Element const& element;
    std::type_index record;
    std::string path;
    std::size_t object = 0; ///< where its object stands in the list
    bool isMuted = false;   ///< it is no object, or inside of one that is none
    std::size_t event = 0;  ///< that of the present field
    Element const* child = nullptr;
    unsigned int next = 0; ///< the entry of a list that probably comes next

    Frame(Recorder& owner, std::type_index ofRecord, Element const& from)
        : outer(std::exchange(owner.frame_, this)), recorder(owner), element(from),
          record(ofRecord) {}
    Frame(Frame const&) = delete;
    Frame& operator=(Frame const&) = delete;
    ~Frame() { recorder.frame_ = outer; }

    [[nodiscard]] ReadEvent& now() const { return recorder.events_[event]; }

    /// Where below the present field `wanted` stands. False when it doesn't: some payload makes
    /// elements of its own.
    bool locate(Element const& wanted, std::string& where) {
        return child != nullptr && locate(*child, wanted, where, deepest);
    }

private:
    bool locate(Element const& in, Element const& wanted, std::string& where, int levels) {
        if (isSame(in, wanted))
            return true;
        if (levels == 0)
            return false;
        if (in.isArray())
            return locateIn(in.array(), wanted, where, levels);
        if (in.isObject())
            for (auto const& member : in.object())
                if (auto inner = Detail::pathBelow(where, member.key());
                    locate(member.value, wanted, inner, levels - 1)) {
                    where = std::move(inner);
                    return true;
                }
        return false;
    }

    bool locateIn(Array const& array, Element const& wanted, std::string& where, int levels) {
        auto const size = array.size();
        for (unsigned int i = 0; i < size; ++i) { // by address first, from where it probably is
            auto const at = (next + i) % size;
            auto const isEntry = &array[at] == &wanted;
            if (!isEntry && !isSame(array[at], wanted))
                continue;
            where = indexed(std::move(where), at);
            now().entry = at;
            next = isEntry ? at + 1 : at; // a message is read in two steps, the first by a copy
            return true;
        }
        for (unsigned int i = 0; i < size; ++i)
            if (auto inner = indexed(where, i); locate(array[i], wanted, inner, levels - 1)) {
                where = std::move(inner);
                return true;
            }
        return false;
    }
};

/// One object that records were read from: two for a message, whose payload is read apart.
struct Recorder::Object {
    Element element;
    void const* content; ///< where the original is, which may be gone
    std::string path;
    std::vector<Key const*> keys; ///< of all fields
};

Recorder* Recorder::current() noexcept { return mine; }

Recorder::Recorder() : outer_(std::exchange(mine, this)) { ++Detail::openReports; }

Recorder::~Recorder() {
    --Detail::openReports;
    mine = outer_;
}

void Recorder::open(Frame& frame, Key const& key) {
    auto const* const outer = frame.outer;
    if (outer != nullptr) {
        frame.path = outer->now().path;
        frame.isMuted = outer->isMuted;
        if (!frame.isMuted && !frame.outer->locate(frame.element, frame.path))
            frame.path += ".?";
    }
    if (frame.isMuted)
        return;
    if (!frame.element.isObject()) {
        frame.isMuted = true;
        auto& event = events_.emplace_back();
        event.path = frame.path;
        event.outcome = ReadEvent::Outcome::unreadable;
        event.record = frame.record;
        event.found = frame.element;
        return;
    }
    auto const isRest = [&](Object const& last) {
        auto const isFirst = std::find(last.keys.begin(), last.keys.end(), &key) == last.keys.end();
        return isFirst && last.path == frame.path &&
               last.content == Detail::Access::container(frame.element);
    };
    if (objects_.empty() || !isRest(objects_.back()))
        objects_.push_back(
            {frame.element, Detail::Access::container(frame.element), frame.path, {}});
    frame.object = objects_.size() - 1;
}

void Recorder::read(std::span<ReflectorBase* const> fields, std::type_index record,
                    Element const& element) {
    if (fields.empty())
        return;
    Frame frame(*this, record, element);
    open(frame, fields.front()->key());
    if (!frame.isMuted)
        for (auto const* const field : fields) // also those that an exception will skip
            objects_[frame.object].keys.push_back(&field->key());
    for (auto* const field : fields) {
        if (frame.isMuted)
            field->copyFromMetaData(element);
        else
            read(frame, *field);
    }
}

void Recorder::read(Frame& frame, ReflectorBase& field) {
    using Outcome = ReadEvent::Outcome;
    frame.child = frame.element.find(field.key());
    frame.next = 0;
    frame.event = events_.size();
    auto& event = events_.emplace_back();
    event.key = field.key().text();
    event.path = Detail::pathBelow(frame.path, event.key);
    event.required = field.isRequired();
    event.field = typeid(field);
    event.record = frame.record;
    if (frame.child != nullptr)
        event.found = *frame.child;
    try {
        field.copyFromMetaData(frame.element);
    } catch (...) {
        frame.now().outcome = Outcome::threw;
        frame.now().reason = textOfException();
        throw;
    }
    auto& result = frame.now(); // the list may have grown meanwhile
    if (frame.child == nullptr)
        result.outcome = Outcome::absent;
    else if (!field.initialized() && result.outcome != Outcome::kept)
        result.outcome = Outcome::unset;
}

void Recorder::swallowed() noexcept {
    if (frame_ == nullptr || frame_->isMuted)
        return;
    try {
        frame_->now().reason = textOfException();
    } catch (...) { // the outcome tells enough
    }
}

void Recorder::kept() noexcept {
    if (frame_ != nullptr && !frame_->isMuted)
        frame_->now().outcome = ReadEvent::Outcome::kept;
}

std::vector<ReadEvent> Recorder::events() const {
    auto all = events_;
    for (auto const& object : objects_) {
        for (auto const& member : object.element.object()) {
            if (std::any_of(object.keys.begin(), object.keys.end(),
                            [&](auto const* key) { return key->text() == member.key(); }))
                continue;
            auto& event = all.emplace_back();
            event.key = member.key();
            event.path = Detail::pathBelow(object.path, event.key);
            event.outcome = ReadEvent::Outcome::unknownKey;
            event.found = member.value;
        }
    }
    return all;
}

void Recorder::clear() noexcept {
    events_.clear();
    objects_.clear();
}

ReadReport::ReadReport() : recorder_(std::make_unique<Recorder>()) {}
ReadReport::~ReadReport() = default;
std::vector<ReadEvent> ReadReport::events() const { return recorder_->events(); }
void ReadReport::clear() noexcept { recorder_->clear(); }

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
