#pragma once

#include <concepts>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <utility>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/encoding.h>
#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/detail/replaced.h>
#include <tolv/core/metadata/lossless.h>
#include <tolv/fields/field.h>
#include <tolv/fields/traits.h>

namespace Tolv::MetaData {

/// A single-valued field. Assigning to it does not touch any tree; the new value appears when the
/// owning record is next written.
///
/// A field is initialized or not. Required fields start initialized. `assign` and a successful read
/// initialize a field; a failed read and `reset` make it uninitialized, with the type's default as
/// its value. An uninitialized field writes no key, and reading its value throws.
template <class T, bool OwnerApart = true>
class ReflectorNoWriteParend : public ReflectorBase {
    static_assert(OwnerApart, "only the form that never writes to its parent exists");
    static_assert(
        FieldType<T>,
        "a field holds a bool, an unsigned char or short, an int or unsigned int, a (unsigned) "
        "long long, a double, a std::string, a std::complex<double>, a std::vector<int>, an "
        "enumeration with a table of words (stringsOf), or a record");

public:
    /// The value.
    /// @throws Exception::InvalidOperation if the field is uninitialized.
    T const& operator()() const& {
        if (!initialized()) [[unlikely]]
            throwIfUninited("Tolv::MetaData::Reflector::operator()()");
        return value_;
    }
    /// The value of a temporary field, by value. A template, so that it is instantiated only for
    /// the types that use it.
    template <class = void>
    T operator()() && {
        throwIfUninited("Tolv::MetaData::Reflector::operator()()");
        return std::move(value_);
    }
    template <class = void>
    T operator()() const&& { ///< the same
        throwIfUninited("Tolv::MetaData::Reflector::operator()()");
        return value_;
    }

    /// Writes the value under the field's key into `parent`, or nothing if the field is
    /// uninitialized.
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

    /// Calls the most derived `assign(Element const&)`.
    void copyFromMetaData(Element const& parent) override { assign(parent); }

    /// Stores a value. A record is copied field by field; its fields remain with their owner.
    /// `value` may be part of the present value, such as an entry of a list in a record; it is gone
    /// once this returns.
    virtual void assign(T const& value) {
        auto const holdsDefault = isPristine();
        setPristine(false);
        if constexpr (Record<T>) {
            if (holdsDefault) // in which `value` cannot lie
                value_ = value;
            else
                Detail::replaceRecord(value_, value);
        } else {
            value_ = value;
        }
        init();
    }

    /// Stores a value of another type through the overload above, if it fits without loss (see
    /// `Lossless`); otherwise this does not compile.
    /// @throws Exception::InvalidParameter for an integer of a wider type, or of the other
    /// signedness, whose value does not fit: only `=` checks literals at compile time.
    template <Detail::Another<T> Given>
    void assign(Given&& given) {
        using Part = typename Detail::PartOf<T>::Type;
        if constexpr (Detail::passageOf<Given, Part>() == Detail::Passage::byValue) {
            if (!Detail::fits<Part>(given))
                throw Exception::InvalidParameter(std::to_string(given) + " does not fit into " +
                                                  name() + " without loss");
            assign(static_cast<T>(static_cast<Part>(given)));
        } else {
            assign(Lossless<T>(std::forward<Given>(given)).get());
        }
    }

    /// Reads the field from the object `parent`. A missing key, an element of the wrong kind, a
    /// number that does not fit or any exception of a record resets the field silently.
    virtual void assign(Element const& parent) {
        if (tryRead(parent))
            init();
        else
            reset();
    }

    /// Sets the value to the type's default, whatever the field was constructed with, and makes the
    /// field uninitialized.
    void reset() {
        uninit();          // first, so that nobody reads the old value if memory runs out
        if (!isPristine()) // stays false: a reference from `edit` may be in use
            restoreDefault();
    }

    /// Extension: the value for changes in place; the field is initialized from now on. Checks of a
    /// derived class do not see the change.
    T& edit() & {
        setPristine(false);
        init();
        return value_;
    }

    /// Copies value and state. An uninitialized source sets a required field to its type's default,
    /// initialized, and resets an optional one. Key, owner and required flag do not change.
    ReflectorNoWriteParend& operator=(ReflectorNoWriteParend const& other) {
        if (other.initialized())
            assign(other.value_);
        else if (isRequired())
            assign(DefaultOf<T>::make());
        else
            reset();
        return *this;
    }

    /// The copy of a field in the copy of its record, with the state that an assignment to a new
    /// field gives. It does not call `assign`. The copy of a field on its own has no owner.
    ReflectorNoWriteParend(ReflectorNoWriteParend const& other)
        : ReflectorBase(other), value_(other.initialized() ? other.value_ : DefaultOf<T>::make()) {
        if (isRequired())
            init();
    }
    /// The same; the value is moved, and the source keeps its state.
    ReflectorNoWriteParend(ReflectorNoWriteParend&& other)
        : ReflectorBase(other),
          value_(other.initialized() ? std::move(other.value_) : DefaultOf<T>::make()) {
        other.setPristine(false);
        if (isRequired())
            init();
    }
    ~ReflectorNoWriteParend() override = default;

protected:
    /// A field with the type's default as its value, initialized if required.
    ReflectorNoWriteParend(Owner const& owner, FieldOf<T> field, Presence required)
        : ReflectorBase(owner, field.info(), required), value_(DefaultOf<T>::make()) {
        setPristine(true);
    }

    /// A field with an initial value, initialized if required.
    ReflectorNoWriteParend(Owner const& owner, FieldOf<T> field, Presence required,
                           T const& initial)
        : ReflectorBase(owner, field.info(), required), value_(initial) {}

private:
    /// Apart, so that the default of a record takes no stack while nested records are read.
    [[gnu::noinline]] void restoreDefault() { value_ = DefaultOf<T>::make(); }

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

/// The field of a record: `Reflector<int> maxVersion{this, field<"MaxVersion">, Required, 1};`.
///
/// A field accepts only values that lose nothing: `maxVersion = 3.7` does not compile (see
/// `Lossless`). `IsRecord` says whether `T` is a record or a payload, which derive from
/// `PartiallySerializableInterface`; `Msgs::Identifier` has a conversion of its own and is neither.
/// The parameter does not change the behavior.
template <class T, bool IsRecord = std::derived_from<T, PartiallySerializableInterface>,
          bool OwnerApart = true>
class Reflector : public ReflectorNoWriteParend<T, OwnerApart> {
    using Base = ReflectorNoWriteParend<T, OwnerApart>;

public:
    /// A field with the type's default as its value, initialized if required.
    Reflector(Owner const& owner, FieldOf<T> field, Presence required)
        : Base(owner, field, required) {}

    /// A field with an initial value, initialized if required.
    Reflector(Owner const& owner, FieldOf<T> field, Presence required, Parameter<T> initial)
        : Base(owner, field, required, valueOf<T>(initial)) {}

    Reflector(Reflector const&) = default;
    Reflector(Reflector&&) = default;
    ~Reflector() override = default;

    Reflector& operator=(Reflector const&) = default;
    /// `assign`, for `record.field = value`.
    Reflector& operator=(Parameter<T> value) {
        this->assign(valueOf<T>(value));
        return *this;
    }
    /// @cond rejected with a clear message; otherwise a 0 would be taken for a null pointer
    template <class Given>
    requires((std::same_as<T, std::string> ||
              std::is_enum_v<T>)&&(std::is_arithmetic_v<Given> ||
                                   std::is_null_pointer_v<Given>)) Reflector&
    operator=(Given /*number*/) {
        static_assert(
            !std::same_as<Given, Given>,
            "a number is neither a text nor an enumerator: write the text, or the name of the "
            "enumerator");
        return *this;
    }
    /// @endcond
    /// `assign`, for `record.field = {1, 2, 3}`.
    template <class List = T>
    Reflector& operator=(std::initializer_list<typename Detail::EntryOf<List>::Type> entries) {
        this->assign(T(entries));
        return *this;
    }
};

} // namespace Tolv::MetaData
