#include <tolv/msgs/app/applications.h>

namespace Tolv::Msgs::App {

using MetaData::Element;
using MetaData::Trivial_T;

InstalledAppData::InstalledAppData(std::string const& name, std::string const& id) {
    this->name = name;
    this->id = id;
}

InstantiateAppCommandData::InstantiateAppCommandData(std::string const& name,
                                                     std::string const& id) {
    this->name = name;
    this->id = id;
}

ConnectToAppCommandData::ConnectToAppCommandData(std::string const& uuid) { this->uuid = uuid; }

ConnectToAppResultData::ConnectToAppResultData(Lossless<bool> result, Lossless<int> port) {
    this->port = port;
    this->result = result;
}

std::vector<MetaData::FieldInfo const*> AppLocationData::mirroredKeys() {
    using MetaData::keyInfo;
    return {&keyInfo<std::string>(
        field<"AppInstallFromLocation",
              Doc{"where the application is, in the format of the instrument"},
              Example{"/media/usb/spectrum.pkg"}>)};
}

void AppLocationData::copyToMetaData(Element& element) const {
    element["AppInstallFromLocation"_key] = Element(Trivial_T<std::string>(location_));
}

void AppLocationData::copyFromMetaData(Element const& element) {
    setLocation(element["AppInstallFromLocation"_key].asString());
}

AppPropertiesResponseData::IconData::IconData(std::string const& type, std::string const& image) {
    this->type = type;
    this->image = image;
}

} // namespace Tolv::Msgs::App
