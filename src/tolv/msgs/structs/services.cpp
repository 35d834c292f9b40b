#include <boost/lexical_cast.hpp>

#include <tolv/msgs/structs/detail/same_fields.h>
#include <tolv/msgs/structs/services.h>

namespace Tolv::Msgs::Structs {

namespace {

EnumStringsThrow<NetworkMode> const networkModeTable{
    {NetworkMode::staticAddress, "static"},
    {NetworkMode::dhcp, "dhcp"},
};

EnumStringsThrow<UpdateMode> const updateModeTable{
    {UpdateMode::ipAddress, "ipAddress"},
    {UpdateMode::usb, "usb"},
    {UpdateMode::filePath, "filePath"},
};

EnumStringsThrow<FileMode> const fileModeTable{
    {FileMode::input, "input"},
    {FileMode::output, "output"},
    {FileMode::append, "append"},
    {FileMode::inputBinary, "inputBinary"},
    {FileMode::outputBinary, "outputBinary"},
    {FileMode::appendBinary, "appendBinary"},
};

EnumStringsThrow<SeekType> const seekTypeTable{
    {SeekType::input, "input"},
    {SeekType::output, "output"},
};

EnumStringsThrow<FileType> const fileTypeTable{
    {FileType::notFound, "notFound"},
    {FileType::regular, "regular"},
    {FileType::directory, "directory"},
    {FileType::unknown, "unknown"},
};

EnumStringsThrow<PtpUdpVersion> const ptpUdpVersionTable{
    {PtpUdpVersion::udp4, "udp4"},
    {PtpUdpVersion::udp6, "udp6"},
};

} // namespace

// References, for the same reason as `messageTypeMapper`.
constinit EnumStringsThrow<NetworkMode> const& NetworkModeStrings = networkModeTable;
constinit EnumStringsThrow<UpdateMode> const& UpdateModeEnums = updateModeTable;
constinit EnumStringsThrow<FileMode> const& FileModeEnums = fileModeTable;
constinit EnumStringsThrow<SeekType> const& SeekTypeEnums = seekTypeTable;
constinit EnumStringsThrow<FileType> const& FileTypeEnums = fileTypeTable;
constinit EnumStringsThrow<PtpUdpVersion> const& PtpUdpVersionEnums = ptpUdpVersionTable;

VersionData::VersionData(std::string const& name, std::string const& version) {
    this->name = name;
    this->version = version;
}

bool VersionData::operator==(VersionData const& other) const {
    return sameFields(*this, other, &VersionData::name, &VersionData::version);
}

MdnsResult::MdnsResult(std::string const& serialNumber, std::string const& ipAddress) {
    this->serialNumber = serialNumber;
    this->ipAddress = ipAddress;
}

bool MdnsResult::operator==(MdnsResult const& other) const {
    return sameFields(*this, other, &MdnsResult::serialNumber, &MdnsResult::ipAddress);
}

namespace {

unsigned long long numberOf(std::string const& text) {
    return boost::lexical_cast<unsigned long long>(text);
}

std::string textOf(unsigned long long number) { return boost::lexical_cast<std::string>(number); }

} // namespace

unsigned long long FilesystemSpace::getCapacity() const { return numberOf(capacity()); }
unsigned long long FilesystemSpace::getFree() const { return numberOf(free()); }
unsigned long long FilesystemSpace::getAvailable() const { return numberOf(available()); }
void FilesystemSpace::setCapacity(Lossless<unsigned long long> value) {
    capacity = textOf(value.get());
}
void FilesystemSpace::setFree(Lossless<unsigned long long> value) { free = textOf(value.get()); }
void FilesystemSpace::setAvailable(Lossless<unsigned long long> value) {
    available = textOf(value.get());
}

GPS::GPS(Lossless<double> latitude, Lossless<double> longitude, Lossless<double> altitude,
         Lossless<unsigned long long> time, Lossless<int> satellites, FixStatus status) {
    this->latitude = latitude;
    this->longitude = longitude;
    this->altitude = altitude;
    this->time = time;
    this->satellites = satellites;
    this->status = status;
}

} // namespace Tolv::Msgs::Structs
