#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <cereal/archives/json.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>
#include <nlohmann/json.hpp>

/// @file
/// The same messages as a user of nlohmann-json and cereal would write them. Members are named like
/// the keys on the wire, as the macros of both require.
namespace Tolv::Bench::Peer {

template <class Payload>
struct Message {
    std::uint64_t MessageID = 0;
    std::vector<std::string> Sender;
    std::vector<std::string> Destination;
    Payload Data;

    NLOHMANN_DEFINE_TYPE_INTRUSIVE(Message, MessageID, Sender, Destination, Data)
    template <class Archive>
    void serialize(Archive& archive) {
        archive(CEREAL_NVP(MessageID), CEREAL_NVP(Sender), CEREAL_NVP(Destination),
                CEREAL_NVP(Data));
    }
};

struct Connect {
    int MaxVersion = 1;
    int MinVersion = 1;
    bool BinaryTransmission = true;

    NLOHMANN_DEFINE_TYPE_INTRUSIVE(Connect, MaxVersion, MinVersion, BinaryTransmission)
    template <class Archive>
    void serialize(Archive& archive) {
        archive(CEREAL_NVP(MaxVersion), CEREAL_NVP(MinVersion), CEREAL_NVP(BinaryTransmission));
    }
};

struct Icon {
    std::string Type;
    std::string Image;

    NLOHMANN_DEFINE_TYPE_INTRUSIVE(Icon, Type, Image)
    template <class Archive>
    void serialize(Archive& archive) {
        archive(CEREAL_NVP(Type), CEREAL_NVP(Image));
    }
};

struct Resource {
    std::string Name;
    std::string ID;
    std::string Description;
    bool Required = true;
    std::vector<std::string> MatchingIDs;

    NLOHMANN_DEFINE_TYPE_INTRUSIVE(Resource, Name, ID, Description, Required, MatchingIDs)
    template <class Archive>
    void serialize(Archive& archive) {
        archive(CEREAL_NVP(Name), CEREAL_NVP(ID), CEREAL_NVP(Description), CEREAL_NVP(Required),
                CEREAL_NVP(MatchingIDs));
    }
};

struct Properties {
    std::string Name;
    std::string Description;
    Peer::Icon Icon;
    std::string Version;
    std::vector<Resource> RequiredResources;

    NLOHMANN_DEFINE_TYPE_INTRUSIVE(Properties, Name, Description, Icon, Version, RequiredResources)
    template <class Archive>
    void serialize(Archive& archive) {
        archive(CEREAL_NVP(Name), CEREAL_NVP(Description), CEREAL_NVP(Icon), CEREAL_NVP(Version),
                CEREAL_NVP(RequiredResources));
    }
};

struct EncodedArray {
    unsigned int type = 3;
    std::uint64_t len = 0;
    std::string base64;

    NLOHMANN_DEFINE_TYPE_INTRUSIVE(EncodedArray, type, len, base64)
};

/// A trace, with its samples in the form `Samples`. Nothing else is set, not even an address.
template <class Samples>
struct Trace {
    struct Payload {
        Samples trace;
        NLOHMANN_DEFINE_TYPE_INTRUSIVE(Payload, trace)
    };

    std::uint64_t MessageID = 0;
    Payload Data;
    NLOHMANN_DEFINE_TYPE_INTRUSIVE(Trace, MessageID, Data)
};

} // namespace Tolv::Bench::Peer
