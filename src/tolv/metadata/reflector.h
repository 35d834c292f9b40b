#pragma once

#include <string>
#include <type_traits>
#include <utility>

#include <tolv/core/metadata/detail/encoding.h>
#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/metadata/traits.h>

namespace Tolv::MetaData {

/// A field with one value. It never writes to its parent: a change shows in a tree only when the
/// owner is written.
///
/// A field is initialized or not. Required fields start initialized; `assign` and a successful
/// read make a field initialized; a failed read and `reset` make it uninitialized, with the type's
/// zero as value. An uninitialized field writes no key, and reading its value throws.
template <class T, bool OwnerApart = true>
class ReflectorNoWriteParend : public ReflectorBase {
    static_assert(OwnerApart, "only the form that never writes to its parent exists");

public:
    /// The value. @throws Exception::InvalidOperation when the field is uninitialized.
    T const& operator()() const {
        if (!initialized()) [[unlikely]]
            throwIfUninited("Tolv::MetaData::Reflector::operator()()");
        return value_;
    }

    /// Writes the value under the field's key into `parent`; nothing when uninitialized.
    void copyToMetaData(Element& parent) const override {
        if (!initialized())
            return;
        if constexpr (Detail::WrittenByItsFields<T>) {
            Detail::LastingFields const lasting(*this, value_);
            Detail::write(value_, parent[key()]);
        } else {
            Detail::write(value_, parent[key()]);
        }
    }

    /// Reads the field from the object `parent`, as `assign(Element const&)` of the actual class
    /// does.
    void copyFromMetaData(Element const& parent) override { assign(parent); }

    /// Stores a value. A record is copied field by field; its fields stay with their owner. A record
    /// from a list inside of this field's own value must be copied first: the list goes on the way.
    virtual void assign(T const& value) {
        setPristine(false);
        value_ = value;
        init();
    }

    /// Reads the field from the object `parent`. A missing key, an element of the wrong kind, a
    /// number that doesn't fit and any exception of a record reset the field, in silence.
    virtual void assign(Element const& parent) {
        if (tryRead(parent)) {
            init();
            return;
        }
        reset();
        if (isRequired()) [[unlikely]]
            Detail::noteRequiredFieldMissed();
    }

    /// Gives the value the type's default, whatever it was constructed with, and makes the field
    /// uninitialized.
    void reset() {
        uninit();          // first: nobody reads what is left when memory runs out
        if (!isPristine()) // and never again, since somebody may still hold what `edit` gave
            value_ = DefaultOf<T>::make();
    }

    /// Extension: the value, to be changed in place, and marks the field initialized. The checks of
    /// a derived class do not see such a change.
    T& edit() {
        setPristine(false);
        init();
        return value_;
    }

    /// Takes over value and state. An uninitialized source makes a required field its type's
    /// default, initialized, and resets an optional one. Key, owner and required flag stay.
    ReflectorNoWriteParend& operator=(ReflectorNoWriteParend const& other) {
        if (other.initialized())
            assign(other.value_);
        else if (isRequired())
            assign(DefaultOf<T>::make());
        else
            reset();
        return *this;
    }

    ReflectorNoWriteParend(ReflectorNoWriteParend const&) = delete;
    ~ReflectorNoWriteParend() override = default;

protected:
    /// A field with the type's default as value, initialized when required.
    template <class Name>
    ReflectorNoWriteParend(MirroredObject* owner, Name const& key, bool required)
        : ReflectorBase(owner, key, required), value_(DefaultOf<T>::make()) {
        setPristine(true);
    }

    /// A field with an initial value, initialized when required.
    template <class Name>
    ReflectorNoWriteParend(MirroredObject* owner, Name const& key, bool required, T const& initial)
        : ReflectorBase(owner, key, required), value_(initial) {}

private:
    bool tryRead(Element const& parent) noexcept {
        auto const* const child = parent.find(key());
        if (child == nullptr)
            return false;
        setPristine(false);
        try {
            return Detail::read(*child, value_);
        } catch (...) {
            Detail::reportSwallowed();
            return false;
        }
    }

    T value_;
};

/// The field of a record: `Reflector<int> maxVersion{this, "MaxVersion"_key, Required, 1};`.
///
/// `IsRecord` says whether `T` is a record; it changes no behaviour.
template <class T, bool IsRecord = Record<T>, bool OwnerApart = true>
class Reflector : public ReflectorNoWriteParend<T, OwnerApart> {
    using Base = ReflectorNoWriteParend<T, OwnerApart>;

public:
    /// A field with the type's default as value, initialized when required.
    Reflector(MirroredObject* owner, Key const& key, bool required) : Base(owner, key, required) {}
    Reflector(MirroredObject* owner, std::string const& key, bool required)
        : Base(owner, key, required) {}

    /// A field with an initial value, initialized when required.
    Reflector(MirroredObject* owner, Key const& key, bool required, T const& initial)
        : Base(owner, key, required, initial) {}
    Reflector(MirroredObject* owner, std::string const& key, bool required, T const& initial)
        : Base(owner, key, required, initial) {}

    Reflector(Reflector const&) = delete;
    ~Reflector() override = default;

    Reflector& operator=(Reflector const&) = default;
    /// `assign`, for `record.field = value`.
    Reflector& operator=(T const& value) {
        this->assign(value);
        return *this;
    }
};

} // namespace Tolv::MetaData
