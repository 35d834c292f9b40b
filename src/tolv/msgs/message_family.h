#pragma once

#include <tolv/core/msgs/message.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs {

/// The common part of all family base classes: the fixed fields of the id, the id of the family
/// itself and the constructors. `Parent` is `Message` or the enclosing family. The class has
/// default visibility so that `MsgID()` is one object in all libraries of a process.
template <class Parent, unsigned short Number, unsigned short Sub1 = 0, unsigned short Sub2 = 0>
class TOLV_VISIBLE MessageFamily : public Parent {
public:
    /// The id of the family itself, built once. No message uses its type, 0xFFFF. Thread-safe.
    static Identifier const& MsgID() {
        static Identifier const myMessageID(numbered(0xFFFF));
        return myMessageID;
    }

    /// The id of the message with this number in the family.
    static constexpr unsigned long long numbered(unsigned short type) noexcept {
        return Identifier::toValue(Number, Sub1, Sub2, type);
    }

    /// A message with this id. An empty address leaves its field unset.
    MessageFamily(unsigned long long id, Address const& sender, Address const& destination)
        : Parent(id, sender, destination) {}
    /// A message with this number in the family.
    MessageFamily(unsigned short type, Address const& sender, Address const& destination)
        : Parent(numbered(type), sender, destination) {}
    /// A message read from a parsed tree.
    explicit MessageFamily(MetaData::Object const& object) : Parent(object) {}
};

/// A family whose ids may have any sub-fields.
template <class Parent, unsigned short Number>
class OpenMessageFamily : public MessageFamily<Parent, Number> {
public:
    using MessageFamily<Parent, Number>::MessageFamily;

    static Identifier idBuilder(unsigned short type, unsigned short sub1, unsigned short sub2) {
        return Identifier::toValue(Number, sub1, sub2, type);
    }
};

} // namespace Tolv::Msgs
