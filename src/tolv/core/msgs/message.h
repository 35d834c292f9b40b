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
#include <tolv/metadata/reflector.h>

namespace Tolv::MetaData {
extern template class TOLV_CORE_API ReflectorNoWriteParend<Msgs::Identifier>;
extern template class TOLV_CORE_API Reflector<Msgs::Identifier>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs {

/// Root of all messages: the id, and the addresses of sender and destination. Their keys are
/// "MessageID", "Sender" and "Destination".
///
/// A message is used by one thread at a time.
class TOLV_CORE_API Message : public MetaData::MirroredObject {
    MetaData::Reflector<Identifier> id_; // first in the list of fields

public:
    class MsgFactory;
    template <class M>
    class Registrar;

    ReflectedAddress sender;      ///< who sends it; unset: nobody said
    ReflectedAddress destination; ///< to whom it goes; unset: nobody said

    /// A new message. An empty address leaves its field unset.
    Message(unsigned long long id, Address const& sender, Address const& destination);

    /// A message read from a parsed tree: id and addresses. Fields of derived classes do not exist
    /// yet at this point; whoever derives reads its own.
    explicit Message(MetaData::Object const& object);

    Message(Message const& other);
    /// Takes over the addresses and, from a message of the same class, the id. A message keeps its
    /// id when one of another class is assigned to it through a common base.
    Message& operator=(Message const& other);
    ~Message() override;

    /// The id, fixed at construction.
    /// @throws Exception::InvalidOperation when the message was read from a tree without one.
    [[nodiscard]] Identifier const& id() const& { return id_(); }
    [[nodiscard]] Identifier id() && { return id_(); } ///< the same of a temporary message

    /// Writes the id, the addresses that are set, and the fields of the derived classes.
    void copyToMetaData(MetaData::Element& element) const override;

    /// Reads all of them from `element`, into this message, whatever class the id there names.
    /// @throws Exception::InvalidParameter when `element` is no object; the message is then as it
    /// was.
    void copyFromMetaData(MetaData::Element const& element) override;

    /// The message that `element` holds, as an object of the class that is registered for its id.
    /// A payload that doesn't read leaves the message with an uninitialized payload. Thread-safe.
    /// @return empty when no class is registered for the id.
    /// @throws Exception::InvalidParameter when `element` is no object or has no valid id.
    static std::shared_ptr<Message> CreateFromMetaData(MetaData::Element const& element);

    /// Extension: the message of a JSON text, as by `MetaData::ReaderJson::Read` and
    /// `CreateFromMetaData`, but faster: the tree between them refers to the text and goes at once.
    /// @throws Exception::InvalidParameter what either of them throws.
    static std::shared_ptr<Message> CreateFromText(std::string_view text,
                                                   Limits const& limits = {});
};

/// The table of message classes by id. All operations may be called from any thread at any time,
/// also in the child of a fork; creating messages takes no lock.
class TOLV_CORE_API Message::MsgFactory {
public:
    /// Makes a message of one class from its tree, with `new`.
    using Creator = Message* (*)(MetaData::Element const&);

    /// What is known of a registered class.
    struct Entry {
        unsigned long long id; ///< of the messages of this class
        std::string typeName;  ///< mangled name of the class
    };

    MsgFactory(MsgFactory const&) = delete;
    MsgFactory& operator=(MsgFactory const&) = delete;

    /// The one factory. It exists before the first use and outlives all static objects.
    static MsgFactory& Instance() noexcept;

    /// Enters a class. The creator must stay callable until `deregisterMessage`, and so long as
    /// another thread may be creating a message with it.
    /// @return false when the id is taken, whose first class then stays, or the creator is null.
    bool registerMessage(unsigned long long id, Creator creator, std::string const& typeName);

    /// Takes a class out; an unknown id is ignored.
    void deregisterMessage(unsigned long long id) noexcept;

    /// Extension: the creator for an id, or null.
    [[nodiscard]] Creator find(unsigned long long id) const noexcept;

    /// Extension: number of classes.
    [[nodiscard]] std::size_t size() const noexcept;

    /// Extension: all classes, by ascending id.
    [[nodiscard]] std::vector<Entry> entries() const;

private:
    struct Slot;

    MsgFactory() noexcept = default;
    ~MsgFactory() = default;

    [[nodiscard]] Slot* slotOf(unsigned long long id) const noexcept;
};

/// Registers the class `M` for as long as this object lives. One static object a class.
///
/// `M` is built from a tree by its constructor from an `Object`; if it has a member `Data`, that is
/// then read from the tree, and resets itself when it doesn't read.
template <class M>
class Message::Registrar {
public:
    /// Enters `M` for this id, unless that is taken.
    explicit Registrar(unsigned long long id)
        : id_(id),
          registered_(MsgFactory::Instance().registerMessage(id, &create, typeid(M).name())) {}
    Registrar(Registrar const&) = delete;
    Registrar& operator=(Registrar const&) = delete;

    ~Registrar() {
        if (registered_)
            MsgFactory::Instance().deregisterMessage(id_);
    }

    /// The id that was given to the constructor.
    [[nodiscard]] unsigned long long id() const noexcept { return id_; }
    /// False when another class had taken the id before.
    [[nodiscard]] bool registered() const noexcept { return registered_; }

private:
    static Message* create(MetaData::Element const& element) {
        MetaData::Object const& object = element; // throws unless it is one
        auto message = std::make_unique<M>(object);
        if constexpr (requires { message->Data.assign(element); })
            MetaData::Detail::readField(message->Data, element);
        return message.release();
    }

    unsigned long long id_;
    bool registered_;
};

} // namespace Tolv::Msgs
