#pragma once

#include <concepts>
#include <initializer_list>
#include <type_traits>
#include <utility>

#include <tolv/core/msgs/message.h>
#include <tolv/fields/reflector.h>
#include <tolv/fields/reflector_array.h>

/// @file
/// The class templates for concrete messages.
///
/// Each instance registers itself with the factory while its library loads, through its static
/// member `factoryRegistration`. A static member of a template exists only if the template is
/// instantiated explicitly: `template class PayloadMessageHelper<Base, Payload, 42>;` in one source
/// file, and `extern template class ...` in the header.
namespace Tolv::Msgs {

namespace Detail {

/// The id of message `type` in the family of `Base`.
template <class Base>
Identifier idInFamily(unsigned short type) {
    if constexpr (requires { Base::idBuilder(type, type, type); })
        return Base::idBuilder(type, 0, 0);
    else
        return Base::numbered(type);
}

} // namespace Detail

/// A message without content.
template <class Base, unsigned short last>
class SimpleMessageHelper : public Base {
    static_assert(std::derived_from<Base, Message>,
                  "the base of a message is a family: a class derived from Message");

public:
    static Message::Registrar<SimpleMessageHelper> factoryRegistration;

    /// The id of this class. Thread-safe.
    static Identifier const& MsgID() {
        static Identifier const myMessageID(Detail::idInFamily<Base>(last));
        return myMessageID;
    }

    SimpleMessageHelper() : SimpleMessageHelper({}, {}) {}
    SimpleMessageHelper(Address const& sender, Address const& destination)
        : Base(static_cast<unsigned long long>(MsgID()), sender, destination) {}
    explicit SimpleMessageHelper(MetaData::Object const& object) : Base(object) {}
};

template <class Base, unsigned short last>
Message::Registrar<SimpleMessageHelper<Base, last>>
    SimpleMessageHelper<Base, last>::factoryRegistration(MsgID());

/// Typed access to the payload of the message class `Self`.
template <class Self, class Payload>
class PayloadAccessorIf {
public:
    /// @throws Exception::InvalidOperation if the payload is uninitialized because it could not be
    /// read.
    [[nodiscard]] Payload const& payload() const& { return self().Data(); }
    /// The payload of a temporary message, by value.
    [[nodiscard]] Payload payload() && { return self().Data(); }
    /// Replaces the payload with a copy.
    void setPayload(Payload const& payload) { self().Data.assign(payload); }
    /// The payload for changes in place; it is initialized from now on.
    Payload& editPayload() & { return self().Data.edit(); }

private:
    friend Self;
    PayloadAccessorIf() = default;

    [[nodiscard]] Self const& self() const { return static_cast<Self const&>(*this); }
    Self& self() { return static_cast<Self&>(*this); }
};

/// A message with one record, under the key "Data".
template <class Base, class Payload, unsigned short last>
class PayloadMessageHelper
    : public Base,
      public PayloadAccessorIf<PayloadMessageHelper<Base, Payload, last>, Payload> {
    static_assert(std::derived_from<Base, Message>,
                  "the base of a message is a family: a class derived from Message");
    static_assert(MetaData::Record<Payload>,
                  "a payload is a record: a class with copyToMetaData and copyFromMetaData");

public:
    static Message::Registrar<PayloadMessageHelper> factoryRegistration;

    /// The payload. It is uninitialized after a failed read: reading the payload then throws, and
    /// writing the message omits the key.
    MetaData::Reflector<Payload, true, true> Data;

    /// The id of this class. Thread-safe.
    static Identifier const& MsgID() {
        static Identifier const myMessageID(Detail::idInFamily<Base>(last));
        return myMessageID;
    }

    PayloadMessageHelper() : PayloadMessageHelper(Address(), Address()) {}
    PayloadMessageHelper(Address const& sender, Address const& destination)
        : Base(static_cast<unsigned long long>(MsgID()), sender, destination),
          Data(this, dataField, MetaData::Required) {}
    /// Takes addresses as lists of literals, so that the first braces of `SomeMessage({}, {"to"})`
    /// are an address, not a payload.
    template <class Part = char const*>
    PayloadMessageHelper(std::initializer_list<std::type_identity_t<Part>> sender,
                         std::initializer_list<std::type_identity_t<Part>> destination)
        : PayloadMessageHelper(Address(sender.begin(), sender.end()),
                               Address(destination.begin(), destination.end())) {}
    template <class Part = char const*>
    PayloadMessageHelper(std::initializer_list<std::type_identity_t<Part>> sender,
                         Address const& destination)
        : PayloadMessageHelper(Address(sender.begin(), sender.end()), destination) {}

    /// A message with this payload.
    explicit PayloadMessageHelper(Payload const& payload, Address const& sender = {},
                                  Address const& destination = {})
        : PayloadMessageHelper(sender, destination) {
        Data.assign(payload);
    }
    /// An attribute message with this value and without metadata.
    template <class P = Payload>
    explicit PayloadMessageHelper(MetaData::Parameter<typename P::ValueType> value,
                                  Address const& sender = {}, Address const& destination = {})
        : PayloadMessageHelper(sender, destination) {
        Data.edit().value = value;
    }

    /// Reads the id and addresses of a message from a parsed tree. The payload keeps its default;
    /// the caller must read `Data` afterwards.
    explicit PayloadMessageHelper(MetaData::Object const& object)
        : Base(object), Data(this, dataField, MetaData::Required) {}

    /// @throws Exception::InvalidOperation if the payload of `other` is uninitialized.
    PayloadMessageHelper(PayloadMessageHelper const& other)
        : Base(other), PayloadAccessorIf<PayloadMessageHelper, Payload>(),
          Data((static_cast<void>(other.Data()), other.Data)) {}
    PayloadMessageHelper& operator=(PayloadMessageHelper const&) = default;
    ~PayloadMessageHelper() override = default;

private:
    static constexpr auto dataField =
        MetaData::field<"Data", MetaData::Doc{"the payload of the message"}>;
};

template <class Base, class Payload, unsigned short last>
Message::Registrar<PayloadMessageHelper<Base, Payload, last>>
    PayloadMessageHelper<Base, Payload, last>::factoryRegistration(MsgID());

/// A message of class `M` that requires a destination.
template <class M>
class DestID_Required : public M {
public:
    static Message::Registrar<DestID_Required> factoryRegistration;

    DestID_Required() { this->destination.makeRequired(); }
    DestID_Required(Address const& sender, Address const& destination) : M(sender, destination) {
        this->destination.makeRequired();
    }
    explicit DestID_Required(MetaData::Object const& object) : M(object) {
        this->destination.makeRequired();
    }
    DestID_Required(DestID_Required const& other) : M(other) { this->destination.makeRequired(); }
    DestID_Required& operator=(DestID_Required const&) = default;
    ~DestID_Required() override = default;
};

template <class M>
Message::Registrar<DestID_Required<M>> DestID_Required<M>::factoryRegistration(M::MsgID());

} // namespace Tolv::Msgs
