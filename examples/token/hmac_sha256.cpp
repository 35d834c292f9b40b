#include "hmac_sha256.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <tolv/core/base64.h>

HmacSha256::HmacSha256(std::string key) : key_(std::move(key)) {}

HmacSha256::~HmacSha256() { OPENSSL_cleanse(key_.data(), key_.size()); }

std::string const& HmacSha256::algorithmName() const {
    static std::string const name = "HS256";
    return name;
}

std::string HmacSha256::sign(std::string const& data) const {
    unsigned char bytes[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    if (HMAC(EVP_sha256(), key_.data(), static_cast<int>(key_.size()),
             reinterpret_cast<unsigned char const*>(data.data()), data.size(), bytes,
             &length) == nullptr)
        throw std::runtime_error("OpenSSL failed to make an HMAC");
    std::string text;
    Tolv::encodeBase64(bytes, length, text);
    return text;
}

bool HmacSha256::verify(std::string const& data, std::string const& signature) const {
    // Bytes have one text only, so the texts can be compared. Their length is no secret.
    auto const expected = sign(data);
    return signature.size() == expected.size() &&
           CRYPTO_memcmp(signature.data(), expected.data(), expected.size()) == 0;
}

std::string readKey(std::filesystem::path const& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string key{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (!stream)
        throw std::runtime_error("cannot read the key file " + file.string());
    if (key.ends_with('\n'))
        key.pop_back();
    if (key.ends_with('\r'))
        key.pop_back();
    if (key.empty())
        throw std::runtime_error("no key in " + file.string());
    return key;
}
