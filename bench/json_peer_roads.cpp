// The roads of nlohmann-json and cereal to the same content, and of RapidJSON, which has no typed
// messages, to its tree. The text of each is compared once with ours.
#include <sstream>
#include <stdexcept>

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <tolv/core/base64.h>

#include "payloads.h"
#include "peer_structs.h"
#include "roads.h"

namespace Tolv::Bench {
namespace {

/// `write` returns the text of the message of `text`.
template <class Write>
Prepared provedWriting(std::string const& text, Write write) {
    if (nlohmann::json::parse(write()) != nlohmann::json::parse(text))
        throw std::logic_error("a peer writes another message than " + text.substr(0, 200));
    return writingWith([write]() mutable { keep(write()); });
}

using TextOf = std::string const& (*)();

// ---- nlohmann-json ---------------------------------------------------------------------------

template <class T>
T fromNlohmann(std::string const& text) {
    return nlohmann::json::parse(text).get<T>();
}

template <class T>
Road nlohmannReads(std::string const& road, TextOf text) {
    return {road + "/nlohmann",
            [text] { return readingWith([&json = text()] { return fromNlohmann<T>(json); }); }};
}

template <class T>
Road nlohmannWrites(std::string const& road, TextOf text) {
    return {road + "/nlohmann", [text] {
                return provedWriting(text(), [message = fromNlohmann<T>(text())] {
                    return nlohmann::json(message).dump();
                });
            }};
}

using EncodedTrace = Peer::Trace<Peer::EncodedArray>;

std::vector<double> decoded(EncodedTrace const& message) {
    auto const& text = message.Data.trace.base64;
    std::vector<double> samples(Base64::decodedSize(text) / sizeof(double));
    Base64::decode(text, reinterpret_cast<unsigned char*>(samples.data()),
                   samples.size() * sizeof(double));
    return samples;
}

EncodedTrace encoded(std::uint64_t id, std::vector<double> const& samples) {
    EncodedTrace message;
    message.MessageID = id;
    message.Data.trace.len = samples.size();
    Base64::encode(reinterpret_cast<unsigned char const*>(samples.data()),
                   samples.size() * sizeof(double), message.Data.trace.base64);
    return message;
}

Prepared nlohmannReadsTrace() {
    return readingWith([] { return decoded(fromNlohmann<EncodedTrace>(traceText())); });
}

Prepared nlohmannWritesTrace() {
    auto const message = fromNlohmann<EncodedTrace>(traceText());
    return provedWriting(traceText(), [id = message.MessageID, samples = decoded(message)] {
        return nlohmann::json(encoded(id, samples)).dump();
    });
}

// ---- cereal ----------------------------------------------------------------------------------

template <class T>
T fromCereal(std::string const& text) {
    std::istringstream stream(text);
    cereal::JSONInputArchive archive(stream);
    T message;
    message.serialize(archive);
    return message;
}

template <class T>
Road cerealReads(std::string const& road, TextOf text) {
    return {road + "/cereal",
            [text] { return readingWith([&json = text()] { return fromCereal<T>(json); }); }};
}

template <class T>
Road cerealWrites(std::string const& road, TextOf text) {
    return {road + "/cereal", [text] {
                return provedWriting(text(), [message = fromCereal<T>(text())]() mutable {
                    std::ostringstream stream;
                    {
                        cereal::JSONOutputArchive archive(
                            stream, cereal::JSONOutputArchive::Options::NoIndent());
                        message.serialize(archive);
                    }
                    return std::move(stream).str();
                });
            }};
}

// ---- RapidJSON -------------------------------------------------------------------------------

/// Memory from `operator new`, so that it is counted.
struct NewAllocator {
    [[maybe_unused]] static constexpr bool kNeedFree = true;
    static void* Malloc(std::size_t size) { return size != 0 ? ::operator new(size) : nullptr; }
    static void* Realloc(void* block, std::size_t oldSize, std::size_t newSize) {
        if (newSize <= oldSize && newSize != 0)
            return block;
        void* const larger = Malloc(newSize);
        if (block != nullptr && larger != nullptr)
            std::memcpy(larger, block, oldSize);
        Free(block);
        return larger;
    }
    static void Free(void* block) { ::operator delete(block); }
};

using RapidDocument =
    rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::MemoryPoolAllocator<NewAllocator>,
                               NewAllocator>;

/// As strict and as exact as possible.
RapidDocument fromRapid(std::string const& text) {
    RapidDocument tree;
    tree.Parse<rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag |
               rapidjson::kParseIterativeFlag>(text.data(), text.size());
    if (tree.HasParseError())
        throw std::runtime_error("RapidJSON refuses a text");
    return tree;
}

Road rapidReads(std::string const& road, TextOf text) {
    return {road + "/RapidJSON tree",
            [text] { return readingWith([&json = text()] { return fromRapid(json); }); }};
}

Road rapidWrites(std::string const& road, TextOf text) {
    using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, NewAllocator>;
    return {road + "/RapidJSON tree", [text] {
                return writingWith([tree = std::make_shared<RapidDocument>(fromRapid(text())),
                                    buffer = std::make_shared<Buffer>()] {
                    buffer->Clear();
                    rapidjson::Writer<Buffer, rapidjson::UTF8<>, rapidjson::UTF8<>, NewAllocator,
                                      rapidjson::kWriteValidateEncodingFlag>
                        writer(*buffer);
                    tree->Accept(writer);
                    keep(*buffer);
                });
            }};
}

using Connect = Peer::Message<Peer::Connect>;
using Properties = Peer::Message<Peer::Properties>;
using PlainTrace = Peer::Trace<std::vector<double>>;

Entered const entered{
    nlohmannReads<Connect>("S read", &connectText),
    nlohmannWrites<Connect>("S write", &connectText),
    nlohmannReads<Properties>("M read", &propertiesText),
    nlohmannWrites<Properties>("M write", &propertiesText),
    {"T read/nlohmann", &nlohmannReadsTrace},
    {"T write/nlohmann", &nlohmannWritesTrace},
    nlohmannReads<PlainTrace>("P read", &plainTraceText),
    nlohmannWrites<PlainTrace>("P write", &plainTraceText),

    cerealReads<Connect>("S read", &connectText),
    cerealWrites<Connect>("S write", &connectText),
    cerealReads<Properties>("M read", &propertiesText),
    cerealWrites<Properties>("M write", &propertiesText),

    rapidReads("S read", &connectText),
    rapidWrites("S write", &connectText),
    rapidReads("M read", &propertiesText),
    rapidWrites("M write", &propertiesText),
    rapidReads("T read", &traceText),
    rapidWrites("T write", &traceText),
    rapidReads("P read", &plainTraceText),
    rapidWrites("P write", &plainTraceText),
};

} // namespace
} // namespace Tolv::Bench
