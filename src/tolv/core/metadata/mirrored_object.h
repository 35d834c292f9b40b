#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <tolv/core/export.h>
#include <tolv/core/limits.h>
#include <tolv/core/metadata/element.h>
#include <tolv/core/metadata/field_info.h>
#include <tolv/core/metadata/lossless.h>
#include <tolv/core/metadata/serializable.h>

namespace Tolv::MetaData {

class MirroredObject;
class ReflectorBase;

/// Whether a field is required. It is made from a `bool`, and converts to one only where that is
/// written out, so that it is not taken for an initial value.
using Presence = Flag;

/// The field starts initialized with its default value.
inline constexpr Presence Required = true;
/// The field starts uninitialized, and has no key in the tree until it is set.
inline constexpr Presence Optional = false;

/// A record: the list of its fields in declaration order. Writing or reading it is a walk over
/// them. Records are used by one thread at a time.
///
/// A record derives from this class, not virtually, and declares its fields; nothing else:
///
///     struct Connect : MirroredObject {
///         Reflector<int> maxVersion{this, field<"MaxVersion", Doc{"..."}>, Required, 1};
///         ...
///     };
///
/// The compiler makes its copies: each field of the copy belongs to the copy and has the value and
/// state that an assignment gives (see `ReflectorNoWriteParend::operator=`). A record that has a
/// copy constructor of its own may either copy its fields in the list of initializers or
/// default-construct itself and assign; classes that derive from a record of the second kind and
/// have fields of their own need a copy constructor, too.
///
/// A field outside of its record (made on the heap, say) takes part in reading and writing, but is
/// not copied with it: the copy constructor throws.
///
/// As with any class that holds a list of its own kind, do not assign an entry of its list to the
/// record directly (`record = record.list()[0]`); a field that holds the record may be assigned it.
class TOLV_CORE_API MirroredObject : public virtual PartiallySerializableInterface {
public:
    /// The reflectors that registered with a record, in construction order.
    class MembersStorage {
    public:
        MembersStorage() = default;
        MembersStorage(MembersStorage const&) = delete;
        ~MembersStorage() = default;

        /// Keeps this list as it is: the entries of `other` are the fields of another record.
        // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): nothing is assigned
        MembersStorage& operator=([[maybe_unused]] MembersStorage const& other) noexcept {
            return *this;
        }

    private:
        friend class MirroredObject;
        friend class ReflectorBase;

        /// The chain starts at the newest, so that fields that are destroyed in reverse order of
        /// construction leave it in constant time. Like all of the chain, it is a distance in bytes
        /// from the start of the record; 0: none.
        std::int32_t newest_ = 0;
        bool hasGuests_ = false;  ///< fields outside of the record, which detail/guests.h lists
        bool isOpenCopy_ = false; ///< its fields are still being copied
    };

    MirroredObject() noexcept = default;
    /// A record without fields, in which the copies of the fields of `other` register.
    /// @throws Exception::InvalidOperation if a field of `other` lies outside of it.
    MirroredObject(MirroredObject const& other);
    MirroredObject& operator=(MirroredObject const&) = default;
    ~MirroredObject() override;

    /// Makes `element` an object, an empty one when no field is set, and has each field write
    /// itself into it, in registration order.
    /// @throws Exception::InvalidParameter when `element` holds something other than an object, and
    /// what the fields throw.
    void copyToMetaData(Element& element) const override;

    /// Has each field read itself from `element`, in registration order. A value field that fails
    /// is reset in silence; what an array field throws passes through.
    void copyFromMetaData(Element const& element) override;

    /// Extension: this object as JSON text, as by `copyToMetaData` and `WriterJson::Write`, but
    /// faster where a message holds large arrays in the encoded form. A message class that
    /// overrides `copyToMetaData` must leave its fields as they are until this returns.
    /// @param text is replaced; its memory is used again. It may be a text of this record itself
    /// @param compact as in `WriterJson::Write`
    /// @throws what either of them throws
    void copyToText(std::string& text, bool compact = true) const;

    /// Extension: reads from a JSON text, as by `ReaderJson::Read` and `copyFromMetaData`, but
    /// faster: the tree between them is never kept.
    /// @param text may be a text of this record itself
    /// @param limits of the text
    /// @throws what either of them throws
    void copyFromText(std::string_view text, Limits const& limits = {});

    /// Extension: the fields in registration order. @throws std::bad_alloc
    [[nodiscard]] std::vector<ReflectorBase const*> members() const;

private:
    friend class ReflectorBase;

    template <class Field, class Record>
    static Field* fieldAt(Record* record, std::int32_t distance) noexcept {
        auto const address =
            reinterpret_cast<std::uintptr_t>(record) + static_cast<std::uintptr_t>(distance);
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the chain is kept as distances
        return reinterpret_cast<Field*>(address);
    }
    template <class Field, class Record>
    class InOrder;
    template <class Field, class Record>
    static std::vector<Field*> listed(Record& record);
    void readEach(Element const& element);
    void leaveLists() noexcept;

    MembersStorage members_;
};

/// The record that a field is made for, and how large that is: what lies outside of it is not
/// copied with it. Implicitly made from `this` of the record.
class Owner {
public:
    // NOLINTBEGIN(google-explicit-constructor): stands for a pointer to a record
    template <std::derived_from<MirroredObject> Record>
    requires(!std::same_as<Record, MirroredObject>) constexpr Owner(Record* record) noexcept
        : record_(record), start_(record),
          size_(sizeof(Record) < maximumSize ? sizeof(Record) : 0) {
        static_assert(
            requires(MirroredObject * base) { static_cast<Record*>(base); },
            "a record derives from MirroredObject once, and not virtually");
    }
    /// A record of unknown size: the field is taken for one outside of it.
    constexpr Owner(MirroredObject* record) noexcept : record_(record) {}
    constexpr Owner(std::nullptr_t) noexcept {}
    // NOLINTEND(google-explicit-constructor)

private:
    friend class ReflectorBase;

    static constexpr std::size_t maximumSize = std::size_t{1} << 29U; ///< see ReflectorBase::state_

    MirroredObject* record_ = nullptr;
    void const* start_ = nullptr;
    std::size_t size_ = 0;
};

namespace Detail {

/// How often this thread has had reason to expect that a copy of a record differs from the record:
/// a required field was left without a value, in place of which a copy has a default, or was given
/// functions that may judge a copy otherwise. The count wraps. While it stays the same, no record
/// that is built and read meanwhile holds such a field, however deep inside.
TOLV_CORE_API unsigned int copyDoubts() noexcept;

/// Counts one more.
TOLV_CORE_API void noteCopyDoubt() noexcept;

} // namespace Detail

/// What all mirrored fields have in common: the key, the owner, and two flags, required and
/// initialized.
class TOLV_CORE_API ReflectorBase : public virtual PartiallySerializableInterface {
public:
    /// Appends this field to the members of `owner`, which may be null.
    /// @param info must outlive the field
    /// @throws std::bad_alloc for a field outside of its owner
    ReflectorBase(Owner const& owner, FieldInfo const& info, Presence required)
        : info_(&info), state_(required ? requiredBit | declaredBit | initializedBit : 0U) {
        if (owner.record_ == nullptr)
            return;
        auto const place = reinterpret_cast<std::uintptr_t>(this);
        if (place - reinterpret_cast<std::uintptr_t>(owner.start_) < owner.size_) [[likely]]
            link(*owner.record_);
        else
            becomeGuest(*owner.record_);
    }
    /// The same with the key as text, which is kept until the process ends.
    ReflectorBase(Owner const& owner, std::string const& name, Presence required)
        : ReflectorBase(owner, FieldInfo::intern(name, nullptr), required) {}
    /// The copy of a field in the copy of its record. It takes over the initialized flag, and
    /// whether the field was declared as required. The copy of a field on its own has no owner.
    ReflectorBase(ReflectorBase const& other);
    /// Leaves the owner, if that is still there.
    ~ReflectorBase() override {
        if ((state_ & (distanceBits | guestBit)) != 0)
            leave();
    }

    /// Takes over the initialized flag; key, owner and required flag stay.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): one flag, which may come from itself
    ReflectorBase& operator=(ReflectorBase const& other) noexcept {
        set(initializedBit, other.initialized());
        noteIfLacking();
        return *this;
    }

    // Declared once more, so that a record calls its fields without the way through the virtual
    // base, which costs a load and a jump for each field.
    void copyToMetaData(Element& parent) const override = 0;
    void copyFromMetaData(Element const& parent) override = 0;

    /// Marks the field initialized; the value stays.
    void init() noexcept { state_ |= initializedBit; }
    /// Marks the field uninitialized; the value stays, out of reach.
    void uninit() noexcept {
        state_ &= ~initializedBit;
        noteIfLacking();
    }
    /// Whether the field has a value to be read and written.
    [[nodiscard]] bool initialized() const noexcept { return (state_ & initializedBit) != 0; }
    /// Whether the field is a required one.
    [[nodiscard]] bool isRequired() const noexcept { return (state_ & requiredBit) != 0; }
    /// Sets the required flag; the value and the initialized flag stay.
    void makeRequired() noexcept {
        state_ |= requiredBit;
        noteIfLacking();
    }

    /// The key; it outlives the field.
    [[nodiscard]] std::string const& name() const { return info_->name(); }
    /// Extension: whether this is a field of `record`.
    [[nodiscard]] bool isOwnedBy(MirroredObject const& record) const noexcept {
        return owner() == &record;
    }
    /// Extension: the key in the form that lookups want.
    [[nodiscard]] Key const& key() const noexcept { return *info_; }
    /// Extension: what the record says of the field.
    [[nodiscard]] FieldInfo const& info() const noexcept { return *info_; }

    /// @throws Exception::InvalidOperation unless the field is initialized. The text is `where`,
    /// the key, "is not initialized" and, of a field that has one, the class of the owner:
    /// "operator()(): MaxVersion is not initialized in App::Connect".
    void throwIfUninited(std::string const& where) const;

protected:
    /// Whether nobody has touched the value since construction and it is the one that `reset`
    /// gives, so that resetting can be left out. Kept by the derived classes.
    [[nodiscard]] bool isPristine() const noexcept { return (state_ & pristineBit) != 0; }
    /// Sets what `isPristine` gives.
    void setPristine(bool pristine) noexcept { set(pristineBit, pristine); }

private:
    friend class MirroredObject;

    static constexpr std::uint32_t initializedBit = 1;
    static constexpr std::uint32_t requiredBit = 2;
    static constexpr std::uint32_t declaredBit = 4; ///< as required, which `makeRequired` leaves
    static constexpr std::uint32_t pristineBit = 8;
    static constexpr std::uint32_t guestBit = 16; ///< outside of its owner
    static constexpr std::uint32_t distanceBits = ~std::uint32_t{31};
    /// The distance from the owner stands in the upper bits, in units of 4 bytes.
    static constexpr unsigned int distanceShift = 3;

    /// From the start of the owner in bytes; 0: no owner, or a guest.
    [[nodiscard]] std::int32_t distance() const noexcept {
        return static_cast<std::int32_t>((state_ & distanceBits) >> distanceShift);
    }
    [[nodiscard]] MirroredObject* ownerAt(std::int32_t distance) const noexcept {
        auto const address =
            reinterpret_cast<std::uintptr_t>(this) - static_cast<std::uintptr_t>(distance);
        // NOLINTNEXTLINE(performance-no-int-to-ptr): an owner is kept as a distance
        return reinterpret_cast<MirroredObject*>(address);
    }
    [[nodiscard]] MirroredObject const* owner() const noexcept;

    void link(MirroredObject& owner) noexcept {
        auto const distance = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(this) -
                                                         reinterpret_cast<std::uintptr_t>(&owner));
        state_ |= distance << distanceShift;
        older_ = std::exchange(owner.members_.newest_, static_cast<std::int32_t>(distance));
    }
    void becomeGuest(MirroredObject& owner);
    void leave() noexcept;

    /// To be called wherever a field may become one that is required and has no value.
    void noteIfLacking() const noexcept {
        if (isRequired() && !initialized()) [[unlikely]]
            Detail::noteCopyDoubt();
    }
    void set(std::uint32_t bit, bool on) noexcept { state_ = on ? state_ | bit : state_ & ~bit; }

    FieldInfo const* info_;
    std::int32_t older_ = 0; ///< the field that registered before this one; 0: none
    std::uint32_t state_;    ///< flags, and the distance from the owner: fields are many
};

} // namespace Tolv::MetaData
