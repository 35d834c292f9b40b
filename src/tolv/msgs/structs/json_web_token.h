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
/// dots. The first two are JSON in base64 with the standard alphabet and padding, not the alphabet
/// for URLs. Objects of these classes are used by one thread at a time.
namespace Tolv::Msgs::Structs {

/// A keyed signature. The library has none of its own: its users supply one.
class TOLV_MESSAGES_API MacAlgorithm {
public:
    virtual ~MacAlgorithm();

    /// The name that stands in the header under "alg": "HS256".
    [[nodiscard]] virtual std::string const& algorithmName() const = 0;

    /// The signature of `data` as text, which goes into the token as it is: without a ".".
    [[nodiscard]] virtual std::string sign(std::string const& data) const = 0;

    /// Whether `signature`, as it stands in the token, is right for `data`. It comes from a peer:
    /// compare in constant time.
    [[nodiscard]] virtual bool verify(std::string const& data,
                                      std::string const& signature) const = 0;

protected:
    MacAlgorithm() = default;
    MacAlgorithm(MacAlgorithm const&) = default;
    MacAlgorithm& operator=(MacAlgorithm const&) = default;
};

/// A token: made from a payload, or parsed from text.
///
/// Parsing checks no signature: `verify` or `authenticate` do, and only after that can the payload
/// be trusted. Nothing here looks at the clock: an expired token verifies like any other.
///
/// A token whose parse threw never verifies: its payload may be that of an earlier text and its
/// signature that of the new one. `verify` and `authenticate` then throw until a text is parsed.
class TOLV_MESSAGES_API JsonWebToken {
public:
    /// A token without content. @param algorithm may be empty, for a token that is only looked at.
    explicit JsonWebToken(std::shared_ptr<MacAlgorithm> algorithm);
    /// A token parsed from `jwt`. @throws as `fromJwtString`.
    JsonWebToken(std::shared_ptr<MacAlgorithm> algorithm, std::string const& jwt);

    /// Replaces the algorithm and nothing else.
    void setMacAlgorithm(std::shared_ptr<MacAlgorithm> algorithm);

    /// Replaces the payload by what `object` writes. What was parsed before can then no longer be
    /// verified. @throws what `object` throws.
    void setPayload(MetaData::PartiallySerializableInterface const& object);

    /// Header and payload as they are now, as text: what gets signed.
    /// @throws Exception::InvalidOperation without an algorithm, and Exception::InvalidParameter
    /// when the payload cannot be written as JSON.
    [[nodiscard]] std::string createJwtData() const;

    /// The whole token as it is now, signed anew. What was parsed stays as it is.
    /// @throws as `createJwtData`, and what the algorithm throws.
    [[nodiscard]] std::string toJwtString() const;

    /// Parses a token. A failure is not undone, and the token cannot be verified after it.
    /// @throws Exception::InvalidParameter when the text has not exactly three segments, when the
    /// first two are no JSON in base64, when the header's "typ" is not "JWT" or its "alg" is not
    /// the name of the algorithm, if there is one.
    void fromJwtString(std::string const& jwt);

    /// Whether the signature that was parsed is right; false without an algorithm.
    /// @throws Exception::InvalidOperation "data has changed since JWT was parsed" when the payload
    /// was set, the last parse threw or nothing was parsed yet; and what the algorithm throws.
    [[nodiscard]] bool verify() const;

    /// Throws unless the signature that was parsed is right.
    /// @throws Exception::InvalidOperation without an algorithm, Exception::InvalidParameter when
    /// the signature is wrong, and as `verify`.
    void authenticate() const;

    /// The payload. It lives as long as the token, until the next parse or `setPayload`.
    [[nodiscard]] MetaData::Element const& payload() const& noexcept { return payload_; }
    [[nodiscard]] MetaData::Element payload() && noexcept { return std::move(payload_); }

    /// The "alg" of the header that was parsed last; empty before.
    [[nodiscard]] std::string const& algorithm() const& noexcept { return algorithm_; }
    [[nodiscard]] std::string algorithm() && noexcept { return std::move(algorithm_); }

private:
    std::string algorithm_;
    std::string signedData_; ///< the parsed text before its last dot
    std::string signature_;  ///< the parsed text behind its last dot
    std::shared_ptr<MacAlgorithm> macAlgorithm_;
    MetaData::Element payload_;
    bool modified_ = true; ///< the payload is not that of a text that was parsed to its end
};

/// A payload of a token: for whom it is, when it was made and until when it holds, and a message.
/// The two times are opaque texts.
class TOLV_MESSAGES_API Payload : public MetaData::PartiallySerializableInterface {
public:
    /// A payload with a null message.
    Payload(MetaData::Lossless<int> audience, std::string const& expiration,
            std::string const& issuedAt);
    ~Payload() override;
    Payload(Payload const&) = default;
    Payload& operator=(Payload const&) = default;

    /// For whom the token is: "aud".
    [[nodiscard]] int getAudience() const noexcept { return audience_; }
    /// Until when it holds: "exp".
    [[nodiscard]] std::string const& getExpirationTime() const& noexcept { return expiration_; }
    [[nodiscard]] std::string getExpirationTime() && noexcept { return std::move(expiration_); }
    /// When it was made: "iat".
    [[nodiscard]] std::string const& getIssuedAt() const& noexcept { return issuedAt_; }
    [[nodiscard]] std::string getIssuedAt() && noexcept { return std::move(issuedAt_); }
    /// Sets "aud".
    void setAudience(MetaData::Lossless<int> audience) noexcept { audience_ = audience.get(); }
    /// Sets "exp".
    void setExpirationTime(std::string const& expiration) { expiration_ = expiration; }
    /// Sets "iat".
    void setIssuedAt(std::string const& issuedAt) { issuedAt_ = issuedAt; }

    /// The message's tree, from which `Message::CreateFromMetaData` makes the message. It lives as
    /// long as the payload, until the next read or `setMessage`.
    [[nodiscard]] MetaData::Element const& message() const& noexcept { return message_; }
    [[nodiscard]] MetaData::Element message() && noexcept { return std::move(message_); }
    /// Replaces the message by what `object` writes. @throws what `object` throws.
    void setMessage(MetaData::PartiallySerializableInterface const& object);

    /// Writes "aud", "exp", "iat" and "msg".
    /// @throws Exception::InvalidParameter when `element` is neither an object nor null.
    void copyToMetaData(MetaData::Element& element) const override;
    /// Reads the same four keys, which all must be there.
    /// @throws Exception::InvalidParameter at the first that is missing or of the wrong kind; the
    /// ones before it then have their new values.
    void copyFromMetaData(MetaData::Element const& element) override;

private:
    int audience_;
    std::string expiration_;
    std::string issuedAt_;
    MetaData::Element message_;
};

} // namespace Tolv::Msgs::Structs
