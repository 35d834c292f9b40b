#include <tolv/core/msgs/address.h>

namespace Tolv::MetaData {
template class ReflectorArray<std::string>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs {

ReflectedAddress::ReflectedAddress(MetaData::Owner const& owner, Field field,
                                   MetaData::Presence required)
    : ReflectorArray(owner, field, required) {
    letListsMoveIn();
}

ReflectedAddress::ReflectedAddress(MetaData::Owner const& owner, Field field,
                                   Address const& initial)
    : ReflectorArray(owner, field, MetaData::Optional, initial) {
    init();
    letListsMoveIn();
}

ReflectedAddress::~ReflectedAddress() = default;

} // namespace Tolv::Msgs
