// Signs a token that carries a message, and verifies and shows one.

#include <chrono>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

#include <tolv/messages.h>

#include "hmac_sha256.h"

namespace {

using namespace Tolv;
using Msgs::Structs::JsonWebToken;
using Msgs::Structs::Payload;

/// A token for listener 7, valid for an hour, with a trigger route in it.
std::string signedToken(std::shared_ptr<HmacSha256> const& algorithm) {
    Msgs::Structs::TriggerRoute route;
    route.setSource(Msgs::Structs::TriggerSources::gps1pps);
    route.setOutput(Msgs::Structs::TriggerOutputs::trig3);

    using namespace std::chrono;
    auto const now = floor<seconds>(system_clock::now()).time_since_epoch();
    Payload payload(7, std::to_string((now + hours(1)) / 1s), std::to_string(now / 1s));
    payload.setMessage(Msgs::Attrs::TriggerRouteMessage(route));

    JsonWebToken token(algorithm);
    token.setPayload(payload);
    return token.toJwtString();
}

void show(JsonWebToken const& token) {
    Payload payload(0, "", "");
    payload.copyFromMetaData(token.payload());
    std::cout << "for " << payload.getAudience() << ", from " << payload.getIssuedAt() << " to "
              << payload.getExpirationTime() << " (seconds since 1970)\n";

    auto const message = Msgs::Message::CreateFromMetaData(payload.message());
    if (auto const route = std::dynamic_pointer_cast<Msgs::Attrs::TriggerRouteMessage>(message))
        std::cout << "routes " << route->payload().getSource() << " to "
                  << route->payload().getOutput() << '\n';
    else
        std::cout << "carries another message than a trigger route\n";
}

/// The first line of the standard input.
std::string readToken() {
    std::string text;
    std::getline(std::cin, text);
    return text;
}

int usage() {
    std::cerr << "usage: example_token sign KEY_FILE            prints a token\n"
                 "       example_token verify KEY_FILE < TOKEN  shows an authentic token\n";
    return 2;
}

} // namespace

int main(int argc, char** argv) try {
    if (argc != 3)
        return usage();
    std::string_view const command = argv[1];
    auto const algorithm = std::make_shared<HmacSha256>(readKey(argv[2]));
    if (command == "sign") {
        std::cout << signedToken(algorithm) << '\n';
    } else if (command == "verify") {
        JsonWebToken const token(algorithm, readToken());
        token.authenticate(); // before anything in it is believed
        show(token);
    } else {
        return usage();
    }
} catch (std::exception const& exception) {
    std::cerr << "example_token: " << exception.what() << '\n';
    return 1;
}
