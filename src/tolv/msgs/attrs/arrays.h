#pragma once

#include <memory>
#include <vector>

#include <tolv/msgs/attrs/info.h>
#include <tolv/msgs/message_helpers.h>
#include <tolv/msgs/payload_interface.h>

/// @file
/// Lists of attribute messages, complete or by range.
namespace Tolv::Msgs::Attrs {

/// A list of messages of one class. The number of that class is stored once, next to the list.
template <class M>
class ArrayDataConcrete : public MirroredObject {
public:
    ReflectorArray<M> attributes{
        this, field<"Attributes", Doc{"the attribute messages, whole and of one class"}>, Required};
    Reflector<unsigned short> attrType{
        this,
        field<"AttrType", Doc{"the number of the class of the messages within the family"},
              Example{"14"}>,
        Required, M::MsgID().type()};
    /// Required unless 0 in `M`.
    Reflector<unsigned short> attrSub1{
        this, field<"AttrSub1", Doc{"the first sub-field in the id of the class; 0 if absent"}>,
        M::MsgID().sub1() != 0, M::MsgID().sub1()};
    /// Required unless 0 in `M`.
    Reflector<unsigned short> attrSub2{
        this, field<"AttrSub2", Doc{"the second sub-field in the id of the class; 0 if absent"}>,
        M::MsgID().sub2() != 0, M::MsgID().sub2()};
};

/// A list of messages of any classes derived from `M`. Each is written as a whole message and read
/// back as an object of its own class.
template <class M>
class ArrayDataPolymorphic : public SerializablePayloadInterface {
public:
    /// Copies of this payload share the messages.
    std::vector<std::shared_ptr<M>> attributes;

    /// The keys, for descriptions.
    static std::vector<MetaData::FieldInfo const*> mirroredKeys();

    /// @throws Exception::InvalidOperation if a pointer is null.
    void copyToMetaData(MetaData::Element& element) const override;
    /// Releases the messages and reads those of `element`.
    /// @throws Exception::InvalidParameter if the key is missing or its value is not a list; the
    /// messages are then unchanged. Exception::InvalidOperation if an entry is not a message, or
    /// its class is unknown or not derived from `M`; the list is then empty.
    void copyFromMetaData(MetaData::Element const& element) override;
};

/// Requests a part of a list.
class TOLV_MESSAGES_API ArrayWithRangeRequestData : public SerializablePayloadInterface {
public:
    /// The index of the first requested element, counted from 0.
    [[nodiscard]] unsigned int offset() const noexcept { return offset_; }
    /// The number of requested elements.
    [[nodiscard]] unsigned int number() const noexcept { return number_; }
    void setOffset(MetaData::Lossless<unsigned int> offset) noexcept {
        offset_ = offset.get();
    } ///< index of the first element
    void setNumber(MetaData::Lossless<unsigned int> number) noexcept {
        number_ = number.get();
    } ///< number of elements

    /// The keys, for descriptions.
    static std::vector<MetaData::FieldInfo const*> mirroredKeys();

    void copyToMetaData(MetaData::Element& element) const override;
    /// @throws Exception::InvalidParameter at the first key that is missing or whose value does not
    /// fit.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    unsigned int offset_ = 0;
    unsigned int number_ = 0;
};

extern template class TOLV_MESSAGES_API ArrayDataPolymorphic<AttrMessage>;

/// A part of a list and its position.
class TOLV_MESSAGES_API ArrayWithRangeResponseData : public ArrayDataPolymorphic<AttrMessage> {
public:
    /// The index of the first element in the list, counted from 0.
    [[nodiscard]] unsigned int offset() const noexcept { return offset_; }
    void setOffset(MetaData::Lossless<unsigned int> offset) noexcept {
        offset_ = offset.get();
    } ///< index of the first element

    /// The keys, for descriptions.
    static std::vector<MetaData::FieldInfo const*> mirroredKeys();

    void copyToMetaData(MetaData::Element& element) const override;
    /// @throws what the base throws, and Exception::InvalidParameter if the offset is missing or
    /// does not fit; the messages have then been replaced.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    unsigned int offset_ = 0;
};

} // namespace Tolv::Msgs::Attrs
