#include <algorithm>

#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;

namespace {

constexpr int lowestVersion = 2;
constexpr int highestVersion = 5;

std::string range(int lowest, int highest) {
    return std::to_string(lowest) + " to " + std::to_string(highest);
}

App::Connected agree(App::Connect const& wanted) {
    auto const highest = std::min(wanted.maxVersion(), highestVersion);
    if (highest < std::max(wanted.minVersion(), lowestVersion))
        throw Tolv::Exception::InconsistentParameters(
            "the client speaks versions " + range(wanted.minVersion(), wanted.maxVersion()) +
            ", the instrument " + range(lowestVersion, highestVersion));
    return {highestVersion, lowestVersion, highest, wanted.binaryTransmission()};
}

} // namespace

void offerHandshake(Service& service) {
    service.on<App::ConnectMessage>([&service](App::ConnectMessage const& request) {
        service.send(App::ConnectedMessage(agree(request.payload())));
    });
    service.on<App::PingMessage>([&service](App::PingMessage const&) {
        App::PingData data;
        data.setMinVersion(lowestVersion);
        data.setMaxVersion(highestVersion);
        data.setSupportsBinary(true);
        service.send(App::PingAnswerMessage(data));
    });
}

} // namespace Example
