#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <vector>

#include <tolv/core/export.h>
#include <tolv/core/limits.h>
#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/mirrored_object.h>
#include <tolv/core/msgs/address.h>
#include <tolv/core/msgs/identifier.h>
#include <tolv/fields/reflector.h>

namespace Tolv::MetaData {
extern template class TOLV_CORE_API ReflectorNoWriteParend<Msgs::Identifier>;
extern template class TOLV_CORE_API Reflector<Msgs::Identifier>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs {

/// The base class of all messages: the id and the addresses of sender and destination, under the
/// keys "MessageID", "Sender" and "Destination".
///
/// A message may be used by one thread at a time.
class TOLV_CORE_API Message : public MetaData::MirroredObject {
    MetaData::Reflector<Identifier> id_; // first in the list of fields

public:
    class MsgFactory;
    template <class M>
    class Registrar;

    ReflectedAddress sender;      ///< of the sending endpoint; may be unset
    ReflectedAddress destination; ///< of the receiving endpoint; may be unset

    /// A new message. An empty address leaves its field unset.
    Message(unsigned long long id, Address const& sender, Address const& destination);

    /// Reads id and addresses from a parsed tree. The fields of derived classes do not exist yet at
    /// this point; each derived class reads its own.
    explicit Message(MetaData::Object const& object);

    Message(Message const& other) = default;
    /// Copies the addresses and, if both messages are of the same class, the id. A message assigned
    /// from one of another class through a common base keeps its own id.
    Message& operator=(Message const& other);
    ~Message() override;

    /// The id, fixed at construction.
    /// @throws Exception::InvalidOperation if the message was read from a tree without an id.
    [[nodiscard]] Identifier const& id() const& { return id_(); }
    [[nodiscard]] Identifier id() && { return id_(); } ///< the id of a temporary message

    /// Writes the id, the addresses that are set, and the fields of derived classes.
    void copyToMetaData(MetaData::Element& element) const override;

    /// Reads all fields from `element`. The class of this message does not change, whatever id
    /// `element` holds.
    /// @throws Exception::InvalidParameter if `element` is not an object; the message is then
    /// unchanged.
    void copyFromMetaData(MetaData::Element const& element) override;

    /// Creates the message in `element` as an object of the class registered for its id. If the
    /// payload cannot be read, the payload of the message is uninitialized. Thread-safe.
    /// @return null if no class is registered for the id, or if its creator returns null.
    /// @throws Exception::InvalidParameter if `element` is not an object or has no valid id.
    static std::shared_ptr<Message> CreateFromMetaData(MetaData::Element const& element);

    /// Extension: creates a message from JSON text. Equivalent to `MetaData::ReaderJson::Read`
    /// followed by `CreateFromMetaData`, but faster because the intermediate tree refers to the
    /// text instead of copying it. Thread-safe.
    /// @throws Exception::InvalidParameter as either of these functions.
    static std::shared_ptr<Message> CreateFromText(std::string_view text,
                                                   Limits const& limits = {});
};

/// The table of message classes by id. All functions may be called from any thread at any time,
/// including in the child process after a fork. Creating messages takes no lock.
class TOLV_CORE_API Message::MsgFactory {
public:
    /// Creates a message of one class from its tree, with `new`.
    using Creator = Message* (*)(MetaData::Element const&);

    /// A registered class.
    struct Entry {
        unsigned long long id; ///< of messages of this class
        std::string typeName;  ///< mangled name of the class
    };

    MsgFactory(MsgFactory const&) = delete;
    MsgFactory& operator=(MsgFactory const&) = delete;

    /// The only factory. It exists before its first use and outlives all static objects.
    static MsgFactory& Instance() noexcept;

    /// Registers a class. The creator must remain callable until `deregisterMessage` has returned
    /// and no other thread is creating a message with it.
    /// @return false if the creator is null or the id is taken; the class registered first is kept.
    bool registerMessage(unsigned long long id, Creator creator, std::string const& typeName);

    /// Removes a class. An unknown id is ignored.
    void deregisterMessage(unsigned long long id) noexcept;

    /// Extension: the creator for an id, or null.
    [[nodiscard]] Creator find(unsigned long long id) const noexcept;

    /// Extension: the number of registered classes.
    [[nodiscard]] std::size_t size() const noexcept;

    /// Extension: all registered classes, by ascending id.
    [[nodiscard]] std::vector<Entry> entries() const;

private:
    struct Slot;

    MsgFactory() noexcept = default;
    ~MsgFactory() = default;

    [[nodiscard]] Slot* slotOf(unsigned long long id) const noexcept;
};

/// Registers the class `M` for the lifetime of this object. Define one static object per class.
///
/// The factory calls the constructor of `M` that takes an `Object`. If `M` has a member `Data`,
/// `Data` is then read from the tree, and reset if it cannot be read.
template <class M>
class Message::Registrar {
public:
    /// Registers `M` under this id unless the id is taken.
    explicit Registrar(unsigned long long id)
        : id_(id),
          registered_(MsgFactory::Instance().registerMessage(id, &create, typeid(M).name())) {}
    Registrar(Registrar const&) = delete;
    Registrar& operator=(Registrar const&) = delete;

    ~Registrar() {
        if (registered_)
            MsgFactory::Instance().deregisterMessage(id_);
    }

    /// The id passed to the constructor.
    [[nodiscard]] unsigned long long id() const noexcept { return id_; }
    /// False if another class had already been registered for the id.
    [[nodiscard]] bool registered() const noexcept { return registered_; }

private:
    static Message* create(MetaData::Element const& element) {
        MetaData::Object const& object = element; // throws if it is not an object
        auto message = std::make_unique<M>(object);
        if constexpr (requires { message->Data.assign(element); })
            MetaData::Detail::readField(message->Data, element);
        return message.release();
    }

    unsigned long long id_;
    bool registered_;
};

} // namespace Tolv::Msgs
