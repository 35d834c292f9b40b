#pragma once

#include <memory>
#include <utility>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/detail/replaced.h>
#include <tolv/core/msgs/detail/nested_message.h>
#include <tolv/core/msgs/message.h>
#include <tolv/fields/field.h>

namespace Tolv::MetaData {

/// An optional field that holds a whole message of any class derived from `T`. When reading, the
/// factory creates the message from its id. Copies of the field share the message.
template <class T, bool OwnerApart = true>
class PolymorphicReflector : public ReflectorBase {
    static_assert(OwnerApart, "only the form that never writes to its parent exists");

public:
    /// A field without a message.
    PolymorphicReflector(Owner const& owner, FieldOf<T> field, Presence required)
        : ReflectorBase(owner, field.info(), required) {
        uninit(); // there is no message yet, even if the field is required
    }
    /// The copy of a field in the copy of its record; both share the message.
    PolymorphicReflector(PolymorphicReflector const&) = default;
    ~PolymorphicReflector() override = default;

    /// The message.
    /// @throws Exception::InvalidOperation if there is none.
    T const& operator()() const& {
        throwIfAbsent();
        return *message_;
    }
    T const& operator()() && = delete; ///< the message may die with the field: use `pointer`
    /// The shared message; null if there is none.
    [[nodiscard]] std::shared_ptr<T> const& pointer() const& noexcept { return message_; }
    [[nodiscard]] std::shared_ptr<T> pointer() && noexcept { return std::move(message_); }

    /// Writes the whole message under the field's key into `parent`, or nothing if there is none.
    /// @throws Exception::InvalidOperation if the nesting exceeds `Limits::messageNesting`.
    void copyToMetaData(Element& parent) const override {
        if (!initialized() || message_ == nullptr)
            return;
        Msgs::Detail::NestedMessage const nested;
        auto& child = parent[key()];
        child.setNull(); // removes what remains of an older message
        SetAs<PartiallySerializableInterface>(*message_, child);
    }

    /// Calls the most derived `assign(Element const&)`.
    void copyFromMetaData(Element const& parent) override { assign(parent); }

    /// Reads the message from the object `parent`. A missing key or an element that is not a
    /// message resets the field silently.
    /// @throws Exception::InvalidOperation if the message's id is not registered, its class is not
    /// derived from `T` or the nesting exceeds `Limits::messageNesting`; the field is then
    /// unchanged.
    virtual void assign(Element const& parent) {
        Msgs::Detail::NestedMessage const nested;
        std::shared_ptr<T> read;
        try {
            auto const* const child = parent.find(key());
            if (child == nullptr) {
                reset();
                return;
            }
            read = std::dynamic_pointer_cast<T>(Msgs::Message::CreateFromMetaData(*child));
        } catch (...) {
            Detail::reportSwallowed();
            reset();
            return;
        }
        if (read == nullptr)
            throw Exception::InvalidOperation(
                "MetaData didn't contain a valid ErrorMessage structure");
        message_ = std::move(read);
        init();
    }

    /// Stores a shared message; null resets the field.
    void assign(std::shared_ptr<T> message) {
        message_ = std::move(message);
        if (message_ != nullptr)
            init();
        else
            uninit();
    }

    /// Releases the message.
    void reset() noexcept {
        message_.reset();
        uninit();
    }

    /// Copies the initialized flag and shares the message.
    PolymorphicReflector& operator=(PolymorphicReflector const& other) {
        ReflectorBase::operator=(other);
        auto message = other.message_;
        message_.swap(message);
        if (message != nullptr)
            Detail::Replaced::keep(std::move(message));
        return *this;
    }
    /// `assign`, for `record.field = message`.
    PolymorphicReflector& operator=(std::shared_ptr<T> message) {
        assign(std::move(message));
        return *this;
    }

private:
    void throwIfAbsent() const {
        if (message_ == nullptr || !initialized()) [[unlikely]] {
            throwIfUninited("Tolv::MetaData::PolymorphicReflector::operator()()");
            throw Exception::InvalidOperation(
                "Tolv::MetaData::PolymorphicReflector::operator()(): " + name() +
                " holds no message");
        }
    }

    std::shared_ptr<T> message_;
};

} // namespace Tolv::MetaData
