#include <algorithm>
#include <utility>

#include <tolv/core/detail/type_name.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/encoding_scope.h>
#include <tolv/core/metadata/detail/passing_tree.h>
#include <tolv/core/metadata/detail/read_recorder.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/mirrored_object.h>

namespace Tolv::MetaData {

PartiallySerializableInterface::~PartiallySerializableInterface() = default;

namespace {

/// The fields of one record in registration order. Almost all records have few, so they are
/// listed without an allocation.
template <class Field, class Older>
class InOrder {
public:
    InOrder(Field* newest, Older const& older) {
        auto* field = newest;
        for (; field != nullptr && first_ != few_; field = older(*field))
            *--first_ = field;
        if (field == nullptr)
            return;
        for (field = newest; field != nullptr; field = older(*field))
            many_.push_back(field);
        std::reverse(many_.begin(), many_.end());
        first_ = many_.data();
        end_ = first_ + many_.size();
    }

    [[nodiscard]] Field** begin() const noexcept { return first_; }
    [[nodiscard]] Field** end() const noexcept { return end_; }
    [[nodiscard]] std::size_t size() const noexcept {
        return static_cast<std::size_t>(end_ - first_);
    }

private:
    static constexpr std::size_t few = 32;

    Field* few_[few];
    Field** end_ = few_ + few;
    Field** first_ = end_;
    std::vector<Field*> many_;
};

// Apart from their callers, whose frames would hold the list of `InOrder` on each level of nested
// records, needed or not.

template <class Field, class Older>
[[gnu::noinline]] std::vector<Field*> listed(Field* newest, Older const& older) {
    InOrder const fields(newest, older);
    return {fields.begin(), fields.end()};
}

template <class Older>
[[gnu::noinline]] void readEach(ReflectorBase* newest, Older const& older, Element const& element) {
    InOrder const fields(newest, older);
    for (auto* const field : fields)
        field->copyFromMetaData(element);
}

thread_local constinit unsigned int doubts = 0;

} // namespace

unsigned int Detail::copyDoubts() noexcept { return doubts; }

void Detail::noteCopyDoubt() noexcept { ++doubts; }

MirroredObject::~MirroredObject() {
    // Only fields that outlive their record are still in the list.
    for (auto* field = members_.newest_; field != nullptr; field = field->older_)
        field->forgetOwner();
}

void MirroredObject::copyToMetaData(Element& element) const {
    InOrder const fields(members_.newest_, [](ReflectorBase const& field) { return field.older_; });
    element.makeObject(static_cast<unsigned int>(fields.size()));
    for (auto const* const field : fields)
        field->copyToMetaData(element);
}

void MirroredObject::copyFromMetaData(Element const& element) {
    auto const older = [](ReflectorBase const& field) { return field.older_; };
    if (Detail::anyReport()) [[unlikely]]
        if (auto* const recorder = ReadReport::Recorder::current())
            return recorder->read(listed(members_.newest_, older), typeid(*this), element);
    readEach(members_.newest_, older, element);
}

void MirroredObject::copyToText(std::string& text, bool compact) const {
    Detail::EncodingScope const scope(*this);
    Element tree;
    copyToMetaData(tree);
    WriterJson::Write(tree, text, compact);
}

void MirroredObject::copyFromText(std::string_view text, Limits const& limits) {
    std::string const copy(text); // `text` may be part of this record, which changes below
    Detail::PassingTree const tree(copy, limits);
    copyFromMetaData(tree.root());
}

std::vector<ReflectorBase const*> MirroredObject::members() const {
    auto const older = [](ReflectorBase const& field) { return field.older_; };
    return listed<ReflectorBase const>(members_.newest_, older);
}

ReflectorBase::ReflectorBase(MirroredObject* owner, Key const& key, Presence required) noexcept
    : state_(reinterpret_cast<std::uintptr_t>(owner) |
             (required ? requiredBit | initializedBit : std::uintptr_t{0})),
      key_(&key) {
    if (owner != nullptr)
        older_ = std::exchange(owner->members_.newest_, this);
}

ReflectorBase::ReflectorBase(MirroredObject* owner, std::string const& name, Presence required)
    : ReflectorBase(owner, Key::intern(name), required) {}

ReflectorBase::~ReflectorBase() {
    auto* const record = owner();
    if (record == nullptr)
        return;
    for (auto** at = &record->members_.newest_; *at != nullptr; at = &(*at)->older_) {
        if (*at == this) {
            *at = older_;
            return;
        }
    }
}

void ReflectorBase::throwIfUninited(std::string const& where) const {
    if (initialized())
        return;
    auto text = where + ": " + name() + " is not initialized";
    if (auto const* const record = owner();
        record != nullptr && typeid(*record) != typeid(MirroredObject))
        text += " in " + Tolv::Detail::nameOf(typeid(*record));
    throw Exception::InvalidOperation(text);
}

} // namespace Tolv::MetaData
