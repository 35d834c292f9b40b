#include <limits>
#include <utility>

#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/conversion.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/key.h>
#include <tolv/msgs/structs/json_web_token.h>

namespace Tolv::Msgs::Structs {

using MetaData::Element;
using MetaData::GetAs;
using MetaData::SetAs;
using MetaData::operator""_key;

namespace {

std::string segmentOf(Element const& tree) {
    std::string json;
    MetaData::WriterJson::Write(tree, json, true);
    if (json.size() > std::numeric_limits<unsigned int>::max())
        throw Exception::InvalidParameter("the content of a JWT is too large");
    std::string segment;
    encodeBase64(reinterpret_cast<unsigned char const*>(json.data()),
                 static_cast<unsigned int>(json.size()), segment);
    return segment;
}

std::string decoded(std::string const& segment) {
    auto const size = decodeSize(segment);
    std::string bytes(size, '\0');
    decodeBase64(segment, reinterpret_cast<unsigned char*>(bytes.data()), size);
    return bytes;
}

} // namespace

MacAlgorithm::~MacAlgorithm() = default;

JsonWebToken::JsonWebToken(std::shared_ptr<MacAlgorithm> algorithm)
    : macAlgorithm_(std::move(algorithm)) {}

JsonWebToken::JsonWebToken(std::shared_ptr<MacAlgorithm> algorithm, std::string const& jwt)
    : JsonWebToken(std::move(algorithm)) {
    fromJwtString(jwt);
}

void JsonWebToken::setMacAlgorithm(std::shared_ptr<MacAlgorithm> algorithm) {
    macAlgorithm_ = std::move(algorithm);
}

void JsonWebToken::setPayload(MetaData::PartiallySerializableInterface const& object) {
    modified_ = true; // even if the object throws
    payload_ = Element();
    object.copyToMetaData(payload_);
}

std::string JsonWebToken::createJwtData() const {
    if (macAlgorithm_ == nullptr)
        throw Exception::InvalidOperation("MAC algorithm is required to create JWT");
    Element header;
    SetAs<std::string>(macAlgorithm_->algorithmName(), header["alg"_key]);
    SetAs<std::string>("JWT", header["typ"_key]);
    return segmentOf(header) + "." + segmentOf(payload_);
}

std::string JsonWebToken::toJwtString() const {
    auto const data = createJwtData();
    return data + "." + macAlgorithm_->sign(data);
}

void JsonWebToken::fromJwtString(std::string const& jwt) {
    modified_ = true; // until the whole text has been parsed
    auto const lastDot = jwt.rfind('.');
    if (lastDot == std::string::npos)
        throw Exception::InvalidParameter("expected JWT to contain '.' character");
    signedData_ = jwt.substr(0, lastDot);
    signature_ = jwt.substr(lastDot + 1);

    auto const firstDot = signedData_.find('.');
    if (firstDot == std::string::npos)
        throw Exception::InvalidParameter("expected JWT to contain 3 segments, got 2");
    if (signedData_.find('.', firstDot + 1) != std::string::npos)
        throw Exception::InvalidParameter("expected JWT to contain only 3 segments");
    auto const headerJson = decoded(signedData_.substr(0, firstDot));
    auto const payloadJson = decoded(signedData_.substr(firstDot + 1));

    Element parsed;
    MetaData::ReaderJson::Read(parsed, headerJson);
    auto const& header = std::as_const(parsed);
    if (GetAs<std::string>(header["typ"_key]) != "JWT")
        throw Exception::InvalidParameter("invalid type in JWT header");
    algorithm_ = GetAs<std::string>(header["alg"_key]);
    if (macAlgorithm_ != nullptr && algorithm_ != macAlgorithm_->algorithmName())
        throw Exception::InvalidParameter("hashing algorithm mismatch in JWT header");

    MetaData::ReaderJson::Read(payload_, payloadJson);
    modified_ = false;
}

bool JsonWebToken::verify() const {
    if (macAlgorithm_ == nullptr)
        return false;
    if (modified_)
        throw Exception::InvalidOperation("data has changed since JWT was parsed");
    return macAlgorithm_->verify(signedData_, signature_);
}

void JsonWebToken::authenticate() const {
    if (macAlgorithm_ == nullptr)
        throw Exception::InvalidOperation("MAC algorithm is required to authenticate JWT");
    if (!verify())
        throw Exception::InvalidParameter("unable to authenticate JWT");
}

Payload::Payload(MetaData::Lossless<int> audience, std::string const& expiration,
                 std::string const& issuedAt)
    : audience_(audience.get()), expiration_(expiration), issuedAt_(issuedAt) {}

Payload::~Payload() = default;

void Payload::setMessage(MetaData::PartiallySerializableInterface const& object) {
    message_ = Element();
    object.copyToMetaData(message_);
}

void Payload::copyToMetaData(Element& element) const {
    SetAs<int>(audience_, element["aud"_key]);
    SetAs<std::string>(expiration_, element["exp"_key]);
    SetAs<std::string>(issuedAt_, element["iat"_key]);
    element["msg"_key] = message_;
}

void Payload::copyFromMetaData(Element const& element) {
    audience_ = GetAs<int>(element["aud"_key]);
    expiration_ = GetAs<std::string>(element["exp"_key]);
    issuedAt_ = GetAs<std::string>(element["iat"_key]);
    message_ = element["msg"_key];
}

} // namespace Tolv::Msgs::Structs
