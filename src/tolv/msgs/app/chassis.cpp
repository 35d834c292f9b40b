#include <tolv/msgs/app/chassis.h>

// The interface of these records takes strings by value. The extra copy does not matter: a chassis
// is described once per session.
// NOLINTBEGIN(performance-unnecessary-value-param)
namespace Tolv::Msgs::App {

using MetaData::Element;
using MetaData::Trivial_T;

std::vector<MetaData::FieldInfo const*> SystemInfoResponseData::mirroredKeys() {
    using MetaData::keyInfo;
    return {
        &keyInfo<std::string>(
            field<"Name", Doc{"the name of the system, for people"}, Example{"Test bench 3"}>),
        &keyInfo<std::string>(field<"UUID", Doc{"the id of the system"},
                                    Example{"7c9e6679-7425-40de-944b-e07fc1f90ae7"}>),
        &keyInfo<std::string>(field<"Description", Doc{"a description of the system, for people"},
                                    Example{"Two-channel receiver"}>),
        &keyInfo<std::string>(
            field<"SerialNumber", Doc{"the serial number of the system"}, Example{"SN-004217"}>)};
}

void SystemInfoResponseData::copyToMetaData(Element& element) const {
    element["Name"_key] = Element(Trivial_T<std::string>(name_));
    element["UUID"_key] = Element(Trivial_T<std::string>(uuid_));
    element["Description"_key] = Element(Trivial_T<std::string>(description_));
    element["SerialNumber"_key] = Element(Trivial_T<std::string>(serialNumber_));
}

void SystemInfoResponseData::copyFromMetaData(Element const& element) {
    setName(element["Name"_key].asString());
    setUuid(element["UUID"_key].asString());
    setDescription(element["Description"_key].asString());
    setSerialNumber(element["SerialNumber"_key].asString());
}

ResourceData::ResourceData(std::string name, std::string id, std::string type, std::string position,
                           std::string inUseBy) {
    this->name = name;
    this->id = id;
    this->type = type;
    this->position = position;
    this->inUseBy = inUseBy;
}

HardwareComponent::HardwareComponent(HardwareComponentType type, Lossless<int> position,
                                     Lossless<int> width) {
    this->type = static_cast<int>(type);
    this->position = position;
    this->width = width;
}

HardwareComponent::HardwareComponent(HardwareComponentType type, Lossless<int> position,
                                     Lossless<int> width, std::string resourceId)
    : HardwareComponent(type, position, width) {
    this->resourceId = resourceId;
}

HardwareConfiguration::HardwareConfiguration(Lossless<int> divisions) {
    this->divisions = divisions;
}

HardwareModule::HardwareModule(std::string make, std::string model) {
    this->make = make;
    this->model = model;
}

ChassisInformation::ChassisInformation(std::string make, std::string model) {
    this->make = make;
    this->model = model;
}

} // namespace Tolv::Msgs::App
// NOLINTEND(performance-unnecessary-value-param)
