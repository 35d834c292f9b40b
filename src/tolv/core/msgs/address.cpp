#include <tolv/core/msgs/address.h>

namespace Tolv::MetaData {
template class ReflectorArray<std::string>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs {

ReflectedAddress::ReflectedAddress(MetaData::MirroredObject* owner, MetaData::Key const& name,
                                   MetaData::Presence required)
    : ReflectorArray(owner, name, required) {
    letListsMoveIn();
}

ReflectedAddress::ReflectedAddress(MetaData::MirroredObject* owner, std::string const& name,
                                   MetaData::Presence required)
    : ReflectedAddress(owner, MetaData::Key::intern(name), required) {}

ReflectedAddress::ReflectedAddress(MetaData::MirroredObject* owner, MetaData::Key const& name,
                                   Address const& initial)
    : ReflectorArray(owner, name, MetaData::Optional, initial) {
    init();
    letListsMoveIn();
}

ReflectedAddress::ReflectedAddress(MetaData::MirroredObject* owner, std::string const& name,
                                   Address const& initial)
    : ReflectedAddress(owner, MetaData::Key::intern(name), initial) {}

ReflectedAddress::~ReflectedAddress() = default;

} // namespace Tolv::Msgs
