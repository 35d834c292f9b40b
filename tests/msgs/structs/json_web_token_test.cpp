#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include <gtest/gtest.h>

#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>
#include <tolv/msgs/attrs/structs_messages.h>
#include <tolv/msgs/structs/json_web_token.h>

#include "support/trees.h"
#include "token/hmac_sha256.h"

namespace Tolv::Msgs::Structs {
namespace {

using namespace Tolv::Testing;
using Exception::InvalidOperation;
using Exception::InvalidParameter;

constexpr auto key = "a key with 27 characters in";

std::shared_ptr<HmacSha256> hmac() { return std::make_shared<HmacSha256>(key); }

std::string base64(std::string_view text) {
    std::string encoded;
    encodeBase64(reinterpret_cast<unsigned char const*>(text.data()),
                 static_cast<unsigned int>(text.size()), encoded);
    return encoded;
}

constexpr auto goodHeader = R"({"alg":"HS256","typ":"JWT"})";

std::string unsignedToken(std::string_view header, std::string_view payload) {
    return base64(header) + "." + base64(payload) + ".";
}

Payload samplePayload() {
    Payload payload(7, "tomorrow", "today");
    payload.setMessage(Attrs::FanBankMessage(FanBankData(3, 50)));
    return payload;
}

std::string sampleToken() {
    JsonWebToken token(hmac());
    token.setPayload(samplePayload());
    return token.toJwtString();
}

/// Whether a token of this text verifies; parsing it must not fail.
bool verifies(std::string const& jwt) { return JsonWebToken(hmac(), jwt).verify(); }

TEST(JsonWebToken, TextIsThreeSegments) {
    JsonWebToken token(hmac());
    EXPECT_EQ(token.createJwtData(), base64(goodHeader) + "." + base64("null"));
    token.setPayload(Payload(7, "b", "a"));
    auto const data =
        base64(goodHeader) + "." + base64(R"({"aud":7,"exp":"b","iat":"a","msg":null})");
    EXPECT_EQ(token.createJwtData(), data);
    EXPECT_EQ(token.toJwtString(), data + "." + hmac()->sign(data));
}

TEST(JsonWebToken, Base64IsNotTheOneForUrls) {
    // The bytes of this text need a plus, a slash and padding.
    Payload const payload(0, "~~?>>?\xC3\xBF\xC3\xBF", "a");
    JsonWebToken token(hmac());
    token.setPayload(payload);
    auto const jwt = token.toJwtString();
    EXPECT_NE(jwt.find_first_of("+/"), std::string::npos);
    EXPECT_EQ(jwt.find_first_of("-_"), std::string::npos);
    EXPECT_EQ(written(payload), textOf(JsonWebToken(hmac(), jwt).payload()));
}

TEST(JsonWebToken, CarriesAMessage) {
    JsonWebToken const token(hmac(), sampleToken());
    token.authenticate();
    EXPECT_EQ(token.algorithm(), "HS256");

    Payload payload(0, "", "");
    payload.copyFromMetaData(token.payload());
    EXPECT_EQ(payload.getAudience(), 7);
    EXPECT_EQ(payload.getExpirationTime(), "tomorrow") << "no time is looked at";
    EXPECT_EQ(payload.getIssuedAt(), "today");
    auto const message = Message::CreateFromMetaData(payload.message());
    auto const* const fans = dynamic_cast<Attrs::FanBankMessage const*>(message.get());
    ASSERT_NE(fans, nullptr);
    EXPECT_TRUE(fans->payload() == FanBankData(3, 50));
}

TEST(JsonWebToken, AnyFlippedBitIsFoundOut) {
    auto const jwt = sampleToken();
    ASSERT_TRUE(verifies(jwt));
    auto const lastDot = jwt.rfind('.');
    auto const signature = jwt.substr(lastDot + 1);
    std::string bytes(decodeSize(signature), '\0');
    decodeBase64(signature, reinterpret_cast<unsigned char*>(bytes.data()),
                 static_cast<unsigned int>(bytes.size()));
    for (std::size_t bit = 0; bit < 8 * bytes.size(); ++bit) {
        auto flipped = bytes;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ 1 << bit % 8);
        EXPECT_FALSE(verifies(jwt.substr(0, lastDot + 1) + base64(flipped))) << bit;
    }
    EXPECT_FALSE(verifies(jwt + "=")) << "a longer signature";
    EXPECT_FALSE(verifies(jwt.substr(0, jwt.size() - 4))) << "a shorter one";
    EXPECT_FALSE(verifies(jwt.substr(0, lastDot + 1))) << "none";

    auto const forged = base64(goodHeader) + "." + base64(R"({"aud":8})") + "." + signature;
    EXPECT_FALSE(verifies(forged));
    EXPECT_EQ(thrownBy<InvalidParameter>([&] { JsonWebToken(hmac(), forged).authenticate(); }),
              "unable to authenticate JWT");
}

TEST(JsonWebToken, RefusedTexts) {
    auto const noDot = "expected JWT to contain '.' character";
    auto const oneDot = "expected JWT to contain 3 segments, got 2";
    auto const moreDots = "expected JWT to contain only 3 segments";
    auto const wrongType = "invalid type in JWT header";
    auto const mismatch = "hashing algorithm mismatch in JWT header";
    auto const good = unsignedToken(goodHeader, "{}");
    struct {
        std::string text;
        std::string expected; ///< empty: as the reader, the decoder or the lookup says
        char const* why;
    } const rows[] = {
        {"", noDot, "no dot at all"},
        {"abc", noDot, "no dot"},
        {"a.b", oneDot, "one dot"},
        {".", oneDot, "nothing but a dot"},
        {good + ".", moreDots, "three dots"},
        {"....", moreDots, "four dots"},
        {unsignedToken(R"({"alg":"HS256","typ":"jwt"})", "{}"), wrongType, "lower case"},
        {unsignedToken(R"({"alg":"none","typ":"JWE"})", "{}"), wrongType,
         "the type is looked at before the algorithm"},
        {unsignedToken(R"({"alg":"none","typ":"JWT"})", "{}"), mismatch, "no algorithm"},
        {unsignedToken(R"({"alg":"hs256","typ":"JWT"})", "{}"), mismatch, "another case"},
        {unsignedToken(R"({"alg":"HS2567","typ":"JWT"})", "{"), mismatch,
         "the header is looked at before the payload is parsed"},
        {unsignedToken(R"({"alg":"HS256"})", "{}"), "", "no type"},
        {unsignedToken(R"({"alg":1,"typ":"JWT"})", "{}"), "", "the algorithm is a number"},
        {unsignedToken("[]", "{}"), "", "the header is no object"},
        {unsignedToken("{", "{}"), "", "the header is no JSON"},
        {unsignedToken(goodHeader, "{\"a\":}"), "", "the payload is no JSON"},
        {base64(goodHeader) + "..", "", "the payload is empty"},
        {"..", "", "all is empty"},
        {base64(goodHeader) + ".e30.", "", "no padding"},
        {base64(goodHeader) + ".e3-=.", "", "the alphabet for URLs"},
        {"%%%%." + base64("{}") + ".", "", "no base64"},
        {base64("[]") + ".%%%%.", "", "both segments are decoded before either is parsed"},
    };
    for (auto const& row : rows) {
        auto const text =
            thrownBy<InvalidParameter>([&] { JsonWebToken const token(hmac(), row.text); });
        if (row.expected.empty())
            EXPECT_NE(text, "nothing thrown") << row.why;
        else
            EXPECT_EQ(text, row.expected) << row.why;
    }
    EXPECT_FALSE(verifies(good)) << "an empty signature is a signature";

    // Error texts of base64 and JSON are passed on unchanged.
    MetaData::Element element;
    auto const parse = [](std::string const& text) {
        return thrownBy<InvalidParameter>([&] { JsonWebToken const token(nullptr, text); });
    };
    EXPECT_EQ(parse(unsignedToken(goodHeader, "{\"a\":}")),
              thrownBy<InvalidParameter>([&] { MetaData::ReaderJson::Read(element, "{\"a\":}"); }));
    EXPECT_EQ(parse(base64("[]") + ".%%%%."),
              thrownBy<InvalidParameter>([] { (void)decodeBase64("%%%%", nullptr, 0); }));
}

TEST(JsonWebToken, NeverVerifiesAfterAFailedParse) {
    auto const jwt = sampleToken();
    auto const authentic = [](std::string const& data) { return data + '.' + hmac()->sign(data); };
    struct {
        std::string text;
        char const* algorithm;
        char const* why;
    } const rows[] = {
        {"no dot", "HS256", "nothing is stored before the first step"},
        {"ab.cd", "HS256", "the two halves are stored"},
        {unsignedToken(R"({"alg":"none","typ":"jwt"})", "{}"), "HS256", "before the name"},
        {unsignedToken(R"({"alg":"none","typ":"JWT"})", "{}"), "none", "the name too"},
        {authentic("ab"), "HS256", "a right signature of no token"},
        {authentic(base64(goodHeader) + '.' + base64("{")), "HS256", "up to the payload"},
    };
    for (auto const& row : rows) {
        JsonWebToken parsedBefore(hmac(), jwt);
        JsonWebToken fresh(hmac());
        auto const payload = textOf(parsedBefore.payload());
        for (auto* const token : {&parsedBefore, &fresh}) {
            EXPECT_THROW(token->fromJwtString(row.text), InvalidParameter) << row.why;
            for (auto const& verdict : {thrownBy<InvalidOperation>([&] { (void)token->verify(); }),
                                        thrownBy<InvalidOperation>([&] { token->authenticate(); })})
                EXPECT_EQ(verdict, "data has changed since JWT was parsed") << row.why;
        }
        EXPECT_EQ(parsedBefore.algorithm(), row.algorithm) << row.why;
        EXPECT_EQ(textOf(parsedBefore.payload()), payload) << row.why;
        parsedBefore.fromJwtString(jwt);
        EXPECT_TRUE(parsedBefore.verify()) << row.why;
    }
}

TEST(JsonWebToken, WithoutAlgorithm) {
    JsonWebToken token(nullptr);
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { (void)token.createJwtData(); }),
              "MAC algorithm is required to create JWT");
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { (void)token.toJwtString(); }),
              "MAC algorithm is required to create JWT");

    token.fromJwtString(unsignedToken(R"({"alg":"anything","typ":"JWT"})", "[1]"));
    EXPECT_EQ(token.algorithm(), "anything");
    EXPECT_EQ(textOf(token.payload()), "[1]");
    EXPECT_FALSE(token.verify());
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { token.authenticate(); }),
              "MAC algorithm is required to authenticate JWT");

    token.fromJwtString(sampleToken());
    token.setMacAlgorithm(hmac());
    EXPECT_TRUE(token.verify()) << "the flag says nothing about the algorithm";
    token.setMacAlgorithm(std::make_shared<HmacSha256>("another key"));
    EXPECT_FALSE(token.verify());
}

/// Writes a part of itself and fails.
struct Failing : MetaData::PartiallySerializableInterface {
    void copyToMetaData(MetaData::Element& element) const override {
        MetaData::SetAs<int>(1, element["aud"]);
        throw std::runtime_error("half-way");
    }
    void copyFromMetaData(MetaData::Element const& /*element*/) override {}
};

TEST(JsonWebToken, OnlyWhatWasParsedIsVerified) {
    auto const changed = "data has changed since JWT was parsed";
    JsonWebToken token(hmac());
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { (void)token.verify(); }), changed);

    auto const jwt = sampleToken();
    token.fromJwtString(jwt);
    EXPECT_TRUE(token.verify());
    EXPECT_EQ(token.toJwtString(), jwt);
    EXPECT_TRUE(token.verify()) << "making text changes nothing";

    token.setPayload(samplePayload()); // the same content
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { (void)token.verify(); }), changed);
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { token.authenticate(); }), changed);
    token.fromJwtString(jwt);
    EXPECT_TRUE(token.verify());

    EXPECT_THROW(token.setPayload(Failing()), std::runtime_error);
    EXPECT_EQ(thrownBy<InvalidOperation>([&] { (void)token.verify(); }), changed)
        << "the payload is no longer what was parsed";
}

TEST(JsonWebToken, SignatureIsOverTheTextAsItCame) {
    // Other white space and key order than ours.
    auto const data =
        base64(R"({ "typ": "JWT", "alg": "HS256", "kid": 1 })") + "." + base64(R"({ "aud": 7.0 })");
    JsonWebToken const token(hmac(), data + "." + hmac()->sign(data));
    EXPECT_TRUE(token.verify());
    EXPECT_NE(token.createJwtData(), data);
    EXPECT_TRUE(verifies(token.toJwtString()));
}

TEST(TokenPayload, IsReadKeyByKey) {
    static_assert(!std::is_base_of_v<MetaData::MirroredObject, Payload>);
    struct {
        char const* json;
        char const* after;
        char const* why;
    } const rows[] = {
        {R"({"aud":7,"exp":"b","iat":"a","msg":5})", R"({"aud":7,"exp":"b","iat":"a","msg":5})",
         "all four"},
        {R"({"aud":7,"exp":"b","iat":"a"})", R"({"aud":7,"exp":"b","iat":"a","msg":null})",
         "no message"},
        {R"({"aud":7,"exp":"b","iat":1,"msg":5})", R"({"aud":7,"exp":"b","iat":"","msg":null})",
         "a number for a text"},
        {R"({"aud":7,"iat":"a","msg":5})", R"({"aud":7,"exp":"","iat":"","msg":null})",
         "no expiration"},
        {R"({"aud":3e10,"exp":"b","iat":"a","msg":5})", R"({"aud":0,"exp":"","iat":"","msg":null})",
         "an audience that doesn't fit"},
        {"null", R"({"aud":0,"exp":"","iat":"","msg":null})", "no object"},
    };
    for (auto const& row : rows) {
        Payload payload(0, "", "");
        if (&row == &rows[0])
            readInto(payload, row.json);
        else
            EXPECT_THROW(readInto(payload, row.json), InvalidParameter) << row.why;
        EXPECT_EQ(written(payload), row.after) << row.why;
    }
}

TEST(TokenPayload, Accessors) {
    Payload payload(1, "b", "a");
    EXPECT_TRUE(payload.message().isNull());
    payload.setAudience(-2);
    payload.setExpirationTime("d");
    payload.setIssuedAt("c");
    payload.setMessage(FanBankData(1, 2));
    payload.setMessage(VersionData("x", "y")); // nothing of the first remains
    EXPECT_EQ(written(payload),
              R"({"aud":-2,"exp":"d","iat":"c","msg":{"name":"x","version":"y"}})");
}

} // namespace
} // namespace Tolv::Msgs::Structs
