#include <memory>
#include <string>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/structs/json_web_token.h>

#include "fuzzing.h"

namespace {

using namespace Tolv::Msgs::Structs;
using Tolv::Fuzzing::require;

/// Accepts exactly the signature "ok".
class FixedAlgorithm : public MacAlgorithm {
public:
    [[nodiscard]] std::string const& algorithmName() const override {
        static std::string const name = "HS256";
        return name;
    }
    [[nodiscard]] std::string sign(std::string const& /*data*/) const override { return "ok"; }
    [[nodiscard]] bool verify(std::string const& data,
                              std::string const& signature) const override {
        return signature == sign(data);
    }
};

bool accepts(JsonWebToken& token, std::string const& text) {
    try {
        token.fromJwtString(text);
        return true;
    } catch (Tolv::Exception::InvalidParameter const&) {
        return false;
    }
}

bool isAuthentic(JsonWebToken const& token) {
    try {
        token.authenticate();
        return true;
    } catch (Tolv::Exception::InvalidParameter const&) {
        return false;
    }
}

void readPayload(JsonWebToken const& token) {
    Payload payload(0, "", "");
    try {
        payload.copyFromMetaData(token.payload());
    } catch (Tolv::Exception::InvalidParameter const&) {
        return;
    }
    JsonWebToken again(std::make_shared<FixedAlgorithm>());
    again.setPayload(payload);
    require(again.payload()["msg"] == payload.message(), "another message");
}

} // namespace

// The input is the text of a token.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(data, data + size);

    JsonWebToken looked(nullptr);
    bool const isToken = accepts(looked, text);
    require(!looked.verify(), "verified without an algorithm");

    JsonWebToken token(std::make_shared<FixedAlgorithm>());
    bool const isAccepted = accepts(token, text);
    require(isAccepted == (isToken && looked.algorithm() == "HS256"), "another algorithm");
    if (!isAccepted)
        return 0;

    require(isAuthentic(token) == text.ends_with(".ok"), "the signature decides");
    readPayload(token);

    // What was read is written as a token with the same content.
    JsonWebToken const again(std::make_shared<FixedAlgorithm>(), token.toJwtString());
    require(isAuthentic(again), "what was signed is not authentic");
    require(again.payload() == token.payload(), "another payload");
    return 0;
}
