#include <tolv/msgs/communications/service_data.h>

namespace Tolv::Msgs::Communications::Forwarder {

ServiceData::ServiceData(MessageKey const& key, unsigned long long count,
                         unsigned long long shortestDistance) {
    msgKey = Structs::MessageKeyData(key);
    this->count = count;
    this->shortestDistance = shortestDistance;
}

ServiceData::ServiceData(ServiceData const& other) : ServiceData() {
    msgKey = other.msgKey();
    count = other.count;
    shortestDistance = other.shortestDistance;
}

} // namespace Tolv::Msgs::Communications::Forwarder
