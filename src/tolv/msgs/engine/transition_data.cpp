#include <tolv/msgs/detail/message_list.h>
#include <tolv/msgs/engine/transition_data.h>

namespace Tolv::Msgs::Engine {

void TransitionData::ParamList::copyToMetaData(MetaData::Element& element) const {
    MetaData::Array& array = element;
    MessageList::write<Message>(*this, array);
}

void TransitionData::ParamList::copyFromMetaData(MetaData::Element const& element) {
    MessageList::read<Message>(element, *this);
}

} // namespace Tolv::Msgs::Engine
