#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <tolv/core/export.h>
#include <tolv/core/limits.h>
#include <tolv/core/metadata/element.h>
#include <tolv/core/metadata/key.h>
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
/// A record derives from this class, declares its fields as reflectors, and is copied by default
/// construction followed by member-wise assignment:
///
///     struct Connect : MirroredObject {
///         Reflector<int> maxVersion{this, "MaxVersion"_key, Required, 1};
///         ...
///         Connect() = default;
///         Connect(Connect const& other) : Connect() { *this = other; }
///         Connect& operator=(Connect const&) = default;
///     };
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
        /// construction leave it in constant time.
        ReflectorBase* newest_ = nullptr;
    };

    MirroredObject() noexcept = default;
    MirroredObject(MirroredObject const&) = delete;
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

    alignas(8) MembersStorage members_; ///< a field keeps flags in its owner's address
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
    ReflectorBase(MirroredObject* owner, Key const& key, Presence required) noexcept;
    /// The same with the key as text, which is kept until the process ends.
    ReflectorBase(MirroredObject* owner, std::string const& name, Presence required);
    ReflectorBase(ReflectorBase const&) = delete; ///< a copy would have no owner
    /// Leaves the owner, if that is still there.
    ~ReflectorBase() override;

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
    [[nodiscard]] std::string const& name() const { return key_->name(); }
    /// Extension: whether this is a field of `record`.
    [[nodiscard]] bool isOwnedBy(MirroredObject const& record) const noexcept {
        return owner() == &record;
    }
    /// Extension: the key in the form that lookups want.
    [[nodiscard]] Key const& key() const noexcept { return *key_; }

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

    static constexpr std::uintptr_t initializedBit = 1;
    static constexpr std::uintptr_t requiredBit = 2;
    static constexpr std::uintptr_t pristineBit = 4;
    static constexpr std::uintptr_t flagBits = 7; ///< zero in the address of a MirroredObject

    [[nodiscard]] MirroredObject* owner() const noexcept {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the price of 8 bytes less in each field
        return reinterpret_cast<MirroredObject*>(state_ & ~flagBits);
    }
    void forgetOwner() noexcept { state_ &= flagBits; }
    /// To be called wherever a field may become one that is required and has no value.
    void noteIfLacking() const noexcept {
        if (isRequired() && !initialized()) [[unlikely]]
            Detail::noteCopyDoubt();
    }
    void set(std::uintptr_t bit, bool on) noexcept { state_ = on ? state_ | bit : state_ & ~bit; }

    ReflectorBase* older_ = nullptr; ///< the field that registered before this one
    std::uintptr_t state_;           ///< the owner's address and the flags: fields are many
    Key const* key_;
};

} // namespace Tolv::MetaData
