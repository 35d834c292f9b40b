#include <algorithm>
#include <utility>

#include <tolv/core/detail/type_name.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/encoding_scope.h>
#include <tolv/core/metadata/detail/guests.h>
#include <tolv/core/metadata/detail/open_copies.h>
#include <tolv/core/metadata/detail/passing_tree.h>
#include <tolv/core/metadata/detail/read_recorder.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/mirrored_object.h>

namespace Tolv::MetaData {

PartiallySerializableInterface::~PartiallySerializableInterface() = default;

/// The fields of one record in registration order. Almost all records have few, all of them inside,
/// so they are listed without an allocation.
template <class Field, class Record>
class MirroredObject::InOrder {
public:
    explicit InOrder(Record& record) {
        auto at = record.members_.newest_;
        for (; at != 0 && first_ != few_; at = (*first_)->older_)
            *--first_ = fieldAt<Field>(&record, at);
        if (at != 0 || record.members_.hasGuests_) [[unlikely]]
            listMany(record);
    }

    [[nodiscard]] Field** begin() const noexcept { return first_; }
    [[nodiscard]] Field** end() const noexcept { return end_; }
    [[nodiscard]] std::size_t size() const noexcept {
        return static_cast<std::size_t>(end_ - first_);
    }

private:
    [[gnu::noinline]] void listMany(Record& record) {
        std::vector<Detail::Guest> guests;
        if (record.members_.hasGuests_)
            guests = Detail::guestsOf(record);
        // Backwards, like the chain: guests come after the field that had registered before them.
        auto guest = guests.rbegin();
        auto const addGuestsAfter = [&](std::int32_t field) {
            for (; guest != guests.rend() && guest->after == field; ++guest)
                many_.push_back(guest->field);
        };
        for (auto at = record.members_.newest_; at != 0; at = many_.back()->older_) {
            addGuestsAfter(at);
            many_.push_back(fieldAt<Field>(&record, at));
        }
        addGuestsAfter(0);
        std::reverse(many_.begin(), many_.end());
        first_ = many_.data();
        end_ = first_ + many_.size();
    }

    static constexpr std::size_t few = 32;

    Field* few_[few];
    Field** end_ = few_ + few;
    Field** first_ = end_;
    std::vector<Field*> many_;
};

// Apart from their callers, whose frames would hold the list of `InOrder` on each level of nested
// records, needed or not.

template <class Field, class Record>
[[gnu::noinline]] std::vector<Field*> MirroredObject::listed(Record& record) {
    InOrder<Field, Record> const fields(record);
    return {fields.begin(), fields.end()};
}

[[gnu::noinline]] void MirroredObject::readEach(Element const& element) {
    InOrder<ReflectorBase, MirroredObject> const fields(*this);
    for (auto* const field : fields)
        field->copyFromMetaData(element);
}

namespace {

thread_local constinit unsigned int doubts = 0;

} // namespace

unsigned int Detail::copyDoubts() noexcept { return doubts; }

void Detail::noteCopyDoubt() noexcept { ++doubts; }

MirroredObject::MirroredObject(MirroredObject const& other) {
    if (other.members_.hasGuests_) {
        auto const guests = Detail::guestsOf(other);
        throw Exception::InvalidOperation(
            "cannot copy a " + Tolv::Detail::nameOf(typeid(other)) + ": its field " +
            guests.front().field->name() +
            " lies outside of it, or was made with a MirroredObject* instead of `this`");
    }
    if (other.members_.newest_ != 0) {
        Detail::openCopies().push(*this);
        members_.isOpenCopy_ = true;
    }
}

MirroredObject::~MirroredObject() {
    if (members_.hasGuests_ || members_.isOpenCopy_) [[unlikely]]
        leaveLists();
}

void MirroredObject::leaveLists() noexcept {
    if (members_.isOpenCopy_)
        Detail::openCopies().remove(*this);
    if (members_.hasGuests_)
        for (auto const& guest : Detail::forgetGuestsOf(*this))
            guest.field->set(ReflectorBase::guestBit, false);
}

void MirroredObject::copyToMetaData(Element& element) const {
    InOrder<ReflectorBase const, MirroredObject const> const fields(*this);
    element.makeObject(static_cast<unsigned int>(fields.size()));
    for (auto const* const field : fields)
        field->copyToMetaData(element);
}

void MirroredObject::copyFromMetaData(Element const& element) {
    if (Detail::anyReport()) [[unlikely]]
        if (auto* const recorder = ReadReport::Recorder::current())
            return recorder->read(listed<ReflectorBase>(*this), typeid(*this), element);
    readEach(element);
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
    return listed<ReflectorBase const>(*this);
}

RecordForm formOf(MirroredObject const& record) {
    RecordForm form;
    form.type = &typeid(record);
    for (auto const* const field : record.members())
        form.fields.push_back({&field->info(), field->isRequired()});
    record.copyToMetaData(form.written);
    return form;
}

ReflectorBase::ReflectorBase(ReflectorBase const& other)
    : PartiallySerializableInterface(other), info_(other.info_),
      state_(other.state_ & (initializedBit | declaredBit | pristineBit)) {
    if ((other.state_ & declaredBit) != 0)
        state_ |= requiredBit;
    auto const distance = other.distance();
    if (distance == 0)
        return;
    // The record that this field is part of is known to be one only while it is being copied.
    auto* const record = ownerAt(distance);
    auto& copies = Detail::openCopies();
    if (!copies.reach(*record))
        return;
    link(*record);
    if (other.ownerAt(distance)->members_.newest_ == distance) { // the last one
        copies.pop();
        record->members_.isOpenCopy_ = false;
    }
}

MirroredObject const* ReflectorBase::owner() const noexcept {
    if ((state_ & guestBit) != 0)
        return Detail::hostOf(*this);
    auto const from = distance();
    return from != 0 ? ownerAt(from) : nullptr;
}

void ReflectorBase::becomeGuest(MirroredObject& owner) {
    Detail::addGuest(owner, {this, owner.members_.newest_});
    owner.members_.hasGuests_ = true;
    set(guestBit, true);
}

void ReflectorBase::leave() noexcept {
    if ((state_ & guestBit) != 0) {
        Detail::removeGuest(*this);
        return;
    }
    auto const from = distance();
    auto* const record = ownerAt(from);
    for (auto* at = &record->members_.newest_; *at != 0;
         at = &MirroredObject::fieldAt<ReflectorBase>(record, *at)->older_) {
        if (*at == from) {
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
