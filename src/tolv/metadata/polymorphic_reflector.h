#pragma once

#include <memory>
#include <utility>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/msgs/detail/nested_message.h>
#include <tolv/core/msgs/message.h>

namespace Tolv::MetaData {

/// An optional field with a whole message of any class derived from `T`, which the factory makes by
/// the id that the message carries. The message is shared, not copied, by copies of the field.
template <class T, bool OwnerApart = true>
class PolymorphicReflector : public ReflectorBase {
    static_assert(OwnerApart, "only the form that never writes to its parent exists");

public:
    /// A field without a message.
    PolymorphicReflector(MirroredObject* owner, Key const& key, Presence required)
        : ReflectorBase(owner, key, required) {
        uninit(); // there is no message yet, whatever the flag says
    }
    PolymorphicReflector(MirroredObject* owner, std::string const& key, Presence required)
        : PolymorphicReflector(owner, Key::intern(key), required) {}
    PolymorphicReflector(PolymorphicReflector const&) = delete;
    ~PolymorphicReflector() override = default;

    /// The message. @throws Exception::InvalidOperation when there is none.
    T const& operator()() const& {
        throwIfAbsent();
        return *message_;
    }
    T const& operator()() && = delete; ///< the message may end with the field: use `pointer`
    /// The message to be shared; empty when there is none.
    [[nodiscard]] std::shared_ptr<T> const& pointer() const& noexcept { return message_; }
    [[nodiscard]] std::shared_ptr<T> pointer() && noexcept { return std::move(message_); }

    /// Writes the message as a whole under the field's key into `parent`; nothing when there is
    /// none. @throws Exception::InvalidOperation beyond `Limits::messageNesting`.
    void copyToMetaData(Element& parent) const override {
        if (!initialized() || message_ == nullptr)
            return;
        Msgs::Detail::NestedMessage const nested;
        auto& child = parent[key()];
        child.setNull(); // nothing of an older message may remain
        SetAs<PartiallySerializableInterface>(*message_, child);
    }

    /// As `assign(Element const&)` of the actual class.
    void copyFromMetaData(Element const& parent) override { assign(parent); }

    /// Reads the message from the object `parent`. A missing key and an element that is no message
    /// reset the field, in silence.
    /// @throws Exception::InvalidOperation when the message's id is not registered or its class
    /// doesn't derive from `T`, or beyond `Limits::messageNesting`; the field is then as it was.
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

    /// Takes the message; an empty pointer resets the field.
    void assign(std::shared_ptr<T> message) {
        message_ = std::move(message);
        if (message_ != nullptr)
            init();
        else
            uninit();
    }

    /// Drops the message.
    void reset() noexcept {
        message_.reset();
        uninit();
    }

    /// Takes over the initialized flag and a share of the message.
    PolymorphicReflector& operator=(PolymorphicReflector const&) = default;
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
