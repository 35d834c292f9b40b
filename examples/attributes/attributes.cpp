#include <attributes/attributes.h>

namespace Example {

using namespace Tolv::Msgs;

std::shared_ptr<Attributes::Message> const& Attributes::at(std::string const& name) const {
    auto const found = attributes_.find(name);
    if (found == attributes_.end())
        throw Tolv::Exception::InvalidParameter("no attribute has the name " + name);
    return found->second;
}

Attrs::AttrInfoData Attributes::describe(std::string const& name) const {
    Attrs::AttrInfoData info(at(name)->id());
    info.scaName = name;
    return info;
}

Attrs::ArrayDataConcrete<Attrs::AttrInfoMessage> Attributes::describe() const {
    Attrs::ArrayDataConcrete<Attrs::AttrInfoMessage> list;
    for (auto const& [name, message] : attributes_)
        list.attributes.edit().emplace_back(describe(name));
    return list;
}

std::vector<std::shared_ptr<Attributes::Message>> Attributes::all() const {
    std::vector<std::shared_ptr<Message>> messages;
    for (auto const& [name, message] : attributes_)
        messages.push_back(message);
    return messages;
}

} // namespace Example
