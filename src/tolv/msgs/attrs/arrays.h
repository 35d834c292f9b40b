#pragma once

#include <memory>
#include <vector>

#include <tolv/msgs/attrs/info.h>
#include <tolv/msgs/message_helpers.h>
#include <tolv/msgs/payload_interface.h>

/// @file
/// Lists of attribute messages, whole and by range.
namespace Tolv::Msgs::Attrs {

/// A list of messages of one class, whose number stands once beside the list.
template <class M>
class ArrayDataConcrete : public MirroredObject {
public:
    ReflectorArray<M> attributes{this, "Attributes"_key, Required}; ///< whole messages
    /// Their number in the family.
    Reflector<unsigned short> attrType{this, "AttrType"_key, Required, M::MsgID().type()};
    Reflector<unsigned short> attrSub1{this, "AttrSub1"_key,
                                       Optional}; ///< required unless 0 in `M`
    Reflector<unsigned short> attrSub2{this, "AttrSub2"_key,
                                       Optional}; ///< required unless 0 in `M`

    ArrayDataConcrete() {
        requireUnlessZero(attrSub1, M::MsgID().sub1());
        requireUnlessZero(attrSub2, M::MsgID().sub2());
    }
    ArrayDataConcrete(ArrayDataConcrete const& other) : ArrayDataConcrete() { *this = other; }
    ArrayDataConcrete& operator=(ArrayDataConcrete const&) = default;

private:
    static void requireUnlessZero(Reflector<unsigned short>& field, unsigned short number) {
        if (number != 0) {
            field = number;
            field.makeRequired();
        }
    }
};

/// A list of messages of any classes that derive from `M`. Each travels as a whole message and
/// comes back with its class.
template <class M>
class ArrayDataPolymorphic : public SerializablePayloadInterface {
public:
    /// Copies of this payload share the messages.
    std::vector<std::shared_ptr<M>> attributes;

    /// @throws Exception::InvalidOperation when one of the pointers is null.
    void copyToMetaData(MetaData::Element& element) const override;
    /// Releases the messages and reads those of `element`.
    /// @throws Exception::InvalidParameter when the key is missing or holds no list; the messages
    /// then stay. Exception::InvalidOperation when an entry is no message, or its class is unknown
    /// or does not derive from `M`; the list is then empty.
    void copyFromMetaData(MetaData::Element const& element) override;
};

/// Asks for a part of a list.
class TOLV_MESSAGES_API ArrayWithRangeRequestData : public SerializablePayloadInterface {
public:
    /// Which element of the list is the first one wanted, counted from 0.
    [[nodiscard]] unsigned int offset() const noexcept { return offset_; }
    /// How many are wanted.
    [[nodiscard]] unsigned int number() const noexcept { return number_; }
    void setOffset(MetaData::Lossless<unsigned int> offset) noexcept {
        offset_ = offset.get();
    } ///< of the first element
    void setNumber(MetaData::Lossless<unsigned int> number) noexcept {
        number_ = number.get();
    } ///< of elements

    void copyToMetaData(MetaData::Element& element) const override;
    /// @throws Exception::InvalidParameter at the first key that is missing or doesn't fit.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    unsigned int offset_ = 0;
    unsigned int number_ = 0;
};

extern template class TOLV_MESSAGES_API ArrayDataPolymorphic<AttrMessage>;

/// A part of a list, and where it starts.
class TOLV_MESSAGES_API ArrayWithRangeResponseData : public ArrayDataPolymorphic<AttrMessage> {
public:
    /// Which element of the list is the first one here, counted from 0.
    [[nodiscard]] unsigned int offset() const noexcept { return offset_; }
    void setOffset(MetaData::Lossless<unsigned int> offset) noexcept {
        offset_ = offset.get();
    } ///< of the first element

    void copyToMetaData(MetaData::Element& element) const override;
    /// @throws what the base throws, and Exception::InvalidParameter when the offset is missing or
    /// doesn't fit; the list is then the new one.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    unsigned int offset_ = 0;
};

} // namespace Tolv::Msgs::Attrs
