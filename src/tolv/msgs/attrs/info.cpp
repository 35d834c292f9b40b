#include <tolv/msgs/attrs/info.h>

#include <tolv/msgs/attrs/message_type_mapper.h>

namespace Tolv::Msgs::Attrs {

std::vector<MetaData::Literal> AttributeTypes::literals() {
    std::vector<MetaData::Literal> words;
    for (auto const& [word, id] : messageTypeMapper)
        words.push_back({word, static_cast<long long>(static_cast<unsigned long long>(id))});
    return words;
}

AttrInfoData::AttrInfoData(Identifier const& id) {
    auto const* const literal = messageTypeMapper.tryLiteral(id);
    scaType = literal != nullptr ? *literal : messageTypeMapper.defaultLiteral();
    type = id;
}

AttrInfoData::AttrInfoData(AttrMessage const& /*message*/) : AttrInfoData(AttrMessage::MsgID()) {}

void AttrInfoData::setTypes(std::string const& scaType) {
    auto const* const id = messageTypeMapper.tryValue(scaType);
    this->scaType = scaType;
    type = id != nullptr ? *id : messageTypeMapper.defaultValue();
}

} // namespace Tolv::Msgs::Attrs
