#pragma once

#include <filesystem>
#include <string>

#include <tolv/msgs/structs/json_web_token.h>

/// HMAC with SHA-256, which tokens call "HS256", by OpenSSL. The text of a signature is the base64
/// form of its 32 bytes.
class HmacSha256 : public Tolv::Msgs::Structs::MacAlgorithm {
public:
    /// @param key the bytes that signer and verifier share
    explicit HmacSha256(std::string key);
    /// The key is wiped from memory.
    ~HmacSha256() override;
    HmacSha256(HmacSha256 const&) = delete;
    HmacSha256& operator=(HmacSha256 const&) = delete;

    [[nodiscard]] std::string const& algorithmName() const override;
    /// @throws std::runtime_error when OpenSSL fails.
    [[nodiscard]] std::string sign(std::string const& data) const override;
    /// Compares in constant time. @throws as `sign`.
    [[nodiscard]] bool verify(std::string const& data, std::string const& signature) const override;

private:
    std::string key_;
};

/// The content of a key file, without a line end behind it, if there is one.
/// @throws std::runtime_error when the file cannot be read or holds no key.
std::string readKey(std::filesystem::path const& file);
