#include <tolv/msgs/attrs/arrays.h>

#include <tolv/msgs/detail/message_list.h>

namespace Tolv::Msgs::Attrs {

using MetaData::Element;
using MetaData::GetAs;
using MetaData::SetAs;

namespace {

constexpr auto attributesField =
    field<"Attributes", Doc{"the attribute messages, whole and of any classes"}>;

} // namespace

template <class M>
void ArrayDataPolymorphic<M>::copyToMetaData(Element& element) const {
    MessageList::write(attributes, element["Attributes"_key]);
}

template <class M>
void ArrayDataPolymorphic<M>::copyFromMetaData(Element const& element) {
    MessageList::read(element["Attributes"_key], attributes);
}

template <class M>
std::vector<MetaData::FieldInfo const*> ArrayDataPolymorphic<M>::mirroredKeys() {
    return {&MetaData::keyInfo<decltype(attributes)>(attributesField)};
}

template class ArrayDataPolymorphic<AttrMessage>;

std::vector<MetaData::FieldInfo const*> ArrayWithRangeRequestData::mirroredKeys() {
    using MetaData::keyInfo;
    return {&keyInfo<unsigned int>(
                field<"StartElementIndex",
                      Doc{"the index of the first requested element, counted from 0"}>),
            &keyInfo<unsigned int>(
                field<"NumberOfElement", Doc{"how many elements are requested"}, Example{"10"}>)};
}

void ArrayWithRangeRequestData::copyToMetaData(Element& element) const {
    SetAs<unsigned int>(offset_, element["StartElementIndex"_key]);
    SetAs<unsigned int>(number_, element["NumberOfElement"_key]);
}

void ArrayWithRangeRequestData::copyFromMetaData(Element const& element) {
    offset_ = GetAs<unsigned int>(element["StartElementIndex"_key]);
    number_ = GetAs<unsigned int>(element["NumberOfElement"_key]);
}

std::vector<MetaData::FieldInfo const*> ArrayWithRangeResponseData::mirroredKeys() {
    auto keys = ArrayDataPolymorphic::mirroredKeys();
    keys.push_back(&MetaData::keyInfo<unsigned int>(
        field<"StartElementIndex",
              Doc{"the index of the first message in the list, counted from 0"}>));
    return keys;
}

void ArrayWithRangeResponseData::copyToMetaData(Element& element) const {
    ArrayDataPolymorphic::copyToMetaData(element);
    SetAs<unsigned int>(offset_, element["StartElementIndex"_key]);
}

void ArrayWithRangeResponseData::copyFromMetaData(Element const& element) {
    ArrayDataPolymorphic::copyFromMetaData(element);
    offset_ = GetAs<unsigned int>(element["StartElementIndex"_key]);
}

} // namespace Tolv::Msgs::Attrs
