#pragma once

#include <memory>
#include <string>
#include <utility>

#include <tolv/core/metadata/element.h>
#include <tolv/core/metadata/lossless.h>
#include <tolv/core/metadata/serializable.h>
#include <tolv/msgs/export.h>

/// @file
/// Signed tokens in the compact form of a JSON Web Token: header, payload and signature, joined by
/// dots. Header and payload are JSON in base64 with the standard alphabet and padding, not the
/// URL-safe alphabet. An object of these classes may be used by one thread at a time.
namespace Tolv::Msgs::Structs {

/// A message authentication code. The library contains no implementation; users supply one.
class TOLV_MESSAGES_API MacAlgorithm {
public:
    virtual ~MacAlgorithm();

    /// The name of the algorithm in the header, under "alg": "HS256".
    [[nodiscard]] virtual std::string const& algorithmName() const = 0;

    /// The signature of `data` as text, stored in the token unchanged. It must not contain a ".".
    [[nodiscard]] virtual std::string sign(std::string const& data) const = 0;

    /// Whether `signature`, as found in the token, is valid for `data`. The signature comes from a
    /// peer, so compare in constant time.
    [[nodiscard]] virtual bool verify(std::string const& data,
                                      std::string const& signature) const = 0;

protected:
    MacAlgorithm() = default;
    MacAlgorithm(MacAlgorithm const&) = default;
    MacAlgorithm& operator=(MacAlgorithm const&) = default;
};

/// A token, created from a payload or parsed from text.
///
/// Parsing does not check the signature. Call `verify` or `authenticate` before trusting the
/// payload. The expiration time is never checked: an expired token verifies like any other.
///
/// A token whose parse threw never verifies, because its payload may come from an earlier text and
/// its signature from the new one. `verify` and `authenticate` then throw until a text has been
/// parsed.
class TOLV_MESSAGES_API JsonWebToken {
public:
    /// A token without content.
    /// @param algorithm may be null, for a token that is only inspected.
    explicit JsonWebToken(std::shared_ptr<MacAlgorithm> algorithm);
    /// A token parsed from `jwt`.
    /// @throws as `fromJwtString`.
    JsonWebToken(std::shared_ptr<MacAlgorithm> algorithm, std::string const& jwt);

    /// Replaces the algorithm and nothing else.
    void setMacAlgorithm(std::shared_ptr<MacAlgorithm> algorithm);

    /// Replaces the payload with what `object` writes. A previously parsed text can then no
    /// longer be verified.
    /// @throws what `object` throws.
    void setPayload(MetaData::PartiallySerializableInterface const& object);

    /// The current header and payload as text: the data to be signed.
    /// @throws Exception::InvalidOperation without an algorithm, and Exception::InvalidParameter if
    /// the payload cannot be written as JSON.
    [[nodiscard]] std::string createJwtData() const;

    /// The whole current token, newly signed. The parsed text and its signature do not change.
    /// @throws as `createJwtData`, and what the algorithm throws.
    [[nodiscard]] std::string toJwtString() const;

    /// Parses a token. A failure is not undone, and the token cannot be verified afterwards.
    /// @throws Exception::InvalidParameter if the text does not consist of exactly three segments,
    /// if the first two are not JSON in base64, if the "typ" of the header is not "JWT", or if its
    /// "alg" is not the name of the algorithm, if there is one.
    void fromJwtString(std::string const& jwt);

    /// Whether the parsed signature is valid; false without an algorithm.
    /// @throws Exception::InvalidOperation "data has changed since JWT was parsed" if the payload
    /// was set, the last parse threw or nothing has been parsed yet; also what the algorithm
    /// throws.
    [[nodiscard]] bool verify() const;

    /// Throws unless the parsed signature is valid.
    /// @throws Exception::InvalidOperation without an algorithm, Exception::InvalidParameter if the
    /// signature is invalid, and as `verify`.
    void authenticate() const;

    /// The payload. The reference is valid until the token is destroyed, or until the next parse or
    /// `setPayload`.
    [[nodiscard]] MetaData::Element const& payload() const& noexcept { return payload_; }
    [[nodiscard]] MetaData::Element payload() && noexcept { return std::move(payload_); }

    /// The "alg" of the header that was parsed last; empty before the first parse.
    [[nodiscard]] std::string const& algorithm() const& noexcept { return algorithm_; }
    [[nodiscard]] std::string algorithm() && noexcept { return std::move(algorithm_); }

private:
    std::string algorithm_;
    std::string signedData_; ///< the parsed text before its last dot
    std::string signature_;  ///< the parsed text after its last dot
    std::shared_ptr<MacAlgorithm> macAlgorithm_;
    MetaData::Element payload_;
    bool modified_ = true; ///< the payload is not that of a completely parsed text
};

/// The payload of a token: audience, time of issue, expiration time and a message. Both times are
/// opaque strings.
class TOLV_MESSAGES_API Payload : public MetaData::PartiallySerializableInterface {
public:
    /// A payload with a null message.
    Payload(MetaData::Lossless<int> audience, std::string const& expiration,
            std::string const& issuedAt);
    ~Payload() override;
    Payload(Payload const&) = default;
    Payload& operator=(Payload const&) = default;

    /// The audience: "aud".
    [[nodiscard]] int getAudience() const noexcept { return audience_; }
    /// The expiration time: "exp".
    [[nodiscard]] std::string const& getExpirationTime() const& noexcept { return expiration_; }
    [[nodiscard]] std::string getExpirationTime() && noexcept { return std::move(expiration_); }
    /// The time of issue: "iat".
    [[nodiscard]] std::string const& getIssuedAt() const& noexcept { return issuedAt_; }
    [[nodiscard]] std::string getIssuedAt() && noexcept { return std::move(issuedAt_); }
    /// Sets "aud".
    void setAudience(MetaData::Lossless<int> audience) noexcept { audience_ = audience.get(); }
    /// Sets "exp".
    void setExpirationTime(std::string const& expiration) { expiration_ = expiration; }
    /// Sets "iat".
    void setIssuedAt(std::string const& issuedAt) { issuedAt_ = issuedAt; }

    /// The tree of the message, for `Message::CreateFromMetaData`. The reference is valid until the
    /// payload is destroyed, or until the next read or `setMessage`.
    [[nodiscard]] MetaData::Element const& message() const& noexcept { return message_; }
    [[nodiscard]] MetaData::Element message() && noexcept { return std::move(message_); }
    /// Replaces the message with what `object` writes.
    /// @throws what `object` throws.
    void setMessage(MetaData::PartiallySerializableInterface const& object);

    /// Writes "aud", "exp", "iat" and "msg".
    /// @throws Exception::InvalidParameter if `element` is neither an object nor null.
    void copyToMetaData(MetaData::Element& element) const override;
    /// Reads the same four keys, all of which are required.
    /// @throws Exception::InvalidParameter at the first key that is missing or whose value is of
    /// the wrong kind; the members before it then have their new values.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    int audience_;
    std::string expiration_;
    std::string issuedAt_;
    MetaData::Element message_;
};

} // namespace Tolv::Msgs::Structs
