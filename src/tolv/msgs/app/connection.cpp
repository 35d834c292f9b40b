#include <string>

#include <tolv/core/metadata/conversion.h>
#include <tolv/msgs/app/connection.h>

namespace Tolv::Msgs::App {

using MetaData::Element;
using MetaData::GetAs;
using MetaData::SetAs;
using MetaData::Trivial_T;

Connect::Connect(Lossless<int> maxVersion, Lossless<int> minVersion,
                 Lossless<bool> binaryTransmission) {
    this->maxVersion = maxVersion;
    this->minVersion = minVersion;
    this->binaryTransmission = binaryTransmission;
}

Connected::Connected(Lossless<int> maxVersion, Lossless<int> minVersion, Lossless<int> versionToUse,
                     Lossless<bool> binaryTransmission) {
    this->maxVersion = maxVersion;
    this->minVersion = minVersion;
    this->versionToUse = versionToUse;
    this->binaryTransmission = binaryTransmission;
}

std::vector<MetaData::FieldInfo const*> PingData::mirroredKeys() {
    using MetaData::keyInfo;
    return {&keyInfo<unsigned int>(
                field<"MaxVersion", Doc{"the highest protocol version that the peer supports"},
                      Example{"3"}>),
            &keyInfo<unsigned int>(
                field<"MinVersion", Doc{"the lowest protocol version that the peer supports"},
                      Example{"1"}>),
            &keyInfo<unsigned int>(
                field<"MessageType", Doc{"a number whose meaning the peers define"}>),
            &keyInfo<bool>(
                field<"SupportsBinary", Doc{"whether the peer supports binary transmission"}>)};
}

void PingData::copyToMetaData(Element& element) const {
    SetAs<unsigned int>(maxVersion_, element["MaxVersion"_key]);
    SetAs<unsigned int>(minVersion_, element["MinVersion"_key]);
    SetAs<unsigned int>(messageType_, element["MessageType"_key]);
    element["SupportsBinary"_key] = Element(Trivial_T<bool>(supportsBinary_));
}

void PingData::copyFromMetaData(Element const& element) {
    setMaxVersion(GetAs<unsigned int>(element["MaxVersion"_key]));
    setMinVersion(GetAs<unsigned int>(element["MinVersion"_key]));
    setMessageType(GetAs<unsigned int>(element["MessageType"_key]));
    setSupportsBinary(element["SupportsBinary"_key].asBoolean());
}

} // namespace Tolv::Msgs::App
