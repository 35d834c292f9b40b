#include <tolv/msgs/attrs/arrays.h>

#include <tolv/msgs/detail/message_list.h>

namespace Tolv::Msgs::Attrs {

using MetaData::Element;
using MetaData::GetAs;
using MetaData::SetAs;

template <class M>
void ArrayDataPolymorphic<M>::copyToMetaData(Element& element) const {
    MessageList::write(attributes, element["Attributes"_key]);
}

template <class M>
void ArrayDataPolymorphic<M>::copyFromMetaData(Element const& element) {
    MessageList::read(element["Attributes"_key], attributes);
}

template class ArrayDataPolymorphic<AttrMessage>;

void ArrayWithRangeRequestData::copyToMetaData(Element& element) const {
    SetAs<unsigned int>(offset_, element["StartElementIndex"_key]);
    SetAs<unsigned int>(number_, element["NumberOfElement"_key]);
}

void ArrayWithRangeRequestData::copyFromMetaData(Element const& element) {
    offset_ = GetAs<unsigned int>(element["StartElementIndex"_key]);
    number_ = GetAs<unsigned int>(element["NumberOfElement"_key]);
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
