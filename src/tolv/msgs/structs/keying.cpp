#include <tolv/msgs/structs/detail/same_fields.h>
#include <tolv/msgs/structs/keying.h>

namespace Tolv::Msgs::Structs {

bool EKeyingEndpoint::operator==(EKeyingEndpoint const& other) const {
    return sameFields(*this, other, &EKeyingEndpoint::slot, &EKeyingEndpoint::lun,
                      &EKeyingEndpoint::deviceId, &EKeyingEndpoint::channel,
                      &EKeyingEndpoint::group);
}

bool EKeyingLink::operator==(EKeyingLink const& other) const {
    return sameFields(*this, other, &EKeyingLink::extension, &EKeyingLink::type,
                      &EKeyingLink::iface);
}

bool EKeyingData::operator==(EKeyingData const& other) const {
    return sameFields(*this, other, &EKeyingData::enabled, &EKeyingData::source,
                      &EKeyingData::destination, &EKeyingData::link, &EKeyingData::group,
                      &EKeyingData::ports);
}

} // namespace Tolv::Msgs::Structs
