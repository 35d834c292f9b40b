#pragma once

#include <string>

#include <tolv/msgs/record.h>
#include <tolv/msgs/structs/enum_words.h>

/// @file
/// The services of the platform: versions, network, files, position, waveform sequences.
namespace Tolv::Msgs::Structs {

/// How the instrument obtains its address.
enum class NetworkMode : int {
    dhcp = 0,
    staticAddress = 1 ///< "static"
};

/// The source of an update.
enum class UpdateMode : int { usb = 0, ipAddress = 1, filePath = 2 };

/// How a file is opened.
enum class FileMode : int {
    input = 0,
    output = 1,
    append = 2,
    inputBinary = 3,
    outputBinary = 4,
    appendBinary = 5
};

/// Which position of a file is moved.
enum class SeekType : int { input = 0, output = 1 };

/// The kind of object that a path names.
enum class FileType : int { notFound = 0, regular = 1, directory = 2, unknown = 3 };

/// The IP version that carries the Precision Time Protocol.
enum class PtpUdpVersion : int { udp4 = 0, udp6 = 1 };

extern TOLV_MESSAGES_API EnumStringsThrow<NetworkMode> const& NetworkModeStrings;
extern TOLV_MESSAGES_API EnumStringsThrow<UpdateMode> const& UpdateModeEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<FileMode> const& FileModeEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<SeekType> const& SeekTypeEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<FileType> const& FileTypeEnums;
extern TOLV_MESSAGES_API EnumStringsThrow<PtpUdpVersion> const& PtpUdpVersionEnums;

inline std::string_view wordOf(NetworkMode value) noexcept {
    return wordIn(NetworkModeStrings, value);
}
inline std::string_view wordOf(UpdateMode value) noexcept { return wordIn(UpdateModeEnums, value); }
inline std::string_view wordOf(FileMode value) noexcept { return wordIn(FileModeEnums, value); }
inline std::string_view wordOf(SeekType value) noexcept { return wordIn(SeekTypeEnums, value); }
inline std::string_view wordOf(FileType value) noexcept { return wordIn(FileTypeEnums, value); }
inline std::string_view wordOf(PtpUdpVersion value) noexcept {
    return wordIn(PtpUdpVersionEnums, value);
}

/// The version of a software component.
class TOLV_MESSAGES_API VersionData : public MirroredObject {
public:
    Reflector<std::string> name{
        this, field<"name", Doc{"the name of the software"}, Example{"Acquisition service"}>,
        Required};
    Reflector<std::string> version{
        this,
        field<"version", Doc{"the version of the software, in its vendor's format"},
              Example{"4.2.1"}>,
        Required};

    VersionData() = default;
    /// The version of this software.
    VersionData(std::string const& name, std::string const& version);

    /// Whether both fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(VersionData const& other) const;
};

/// An instrument found on the network.
class TOLV_MESSAGES_API MdnsResult : public MirroredObject {
public:
    Reflector<std::string> serialNumber{
        this,
        field<"serialNumber", Doc{"the serial number of the instrument"}, Example{"MI-200117"}>,
        Required};
    Reflector<std::string> ipAddress{
        this, field<"ipAddress", Doc{"the IP address of the instrument"}, Example{"192.168.10.20"}>,
        Required};

    MdnsResult() = default;
    /// An instrument with both fields.
    MdnsResult(std::string const& serialNumber, std::string const& ipAddress);

    /// Whether both fields are equal.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
    bool operator==(MdnsResult const& other) const;
};

/// The capacity of a file system. The numbers are stored as decimal strings; in a new record the
/// strings are empty.
///
/// The accessors convert with `boost::lexical_cast`, which formats and accepts digit grouping
/// according to the global locale. The getters throw `boost::bad_lexical_cast` (a `std::bad_cast`)
/// if the string is not a number that fits, and Exception::InvalidOperation if the field is
/// uninitialized.
class TOLV_MESSAGES_API FilesystemSpace : public MirroredObject {
public:
    Reflector<std::string> capacity{
        this,
        field<"capacity",
              Doc{"the total size of the file system, as a decimal number in the reporter's unit"},
              Example{"64000000000"}>,
        Required};
    Reflector<std::string> free{
        this,
        field<"free", Doc{"the unused space, as a decimal number in the reporter's unit"},
              Example{"42000000000"}>,
        Required};
    Reflector<std::string> available{
        this,
        field<
            "available",
            Doc{"the space that the requester may use, as a decimal number in the reporter's unit"},
            Example{"38500000000"}>,
        Required};

    /// "capacity" as a number.
    [[nodiscard]] unsigned long long getCapacity() const;
    /// "free" as a number.
    [[nodiscard]] unsigned long long getFree() const;
    /// "available" as a number.
    [[nodiscard]] unsigned long long getAvailable() const;
    /// Sets "capacity".
    void setCapacity(Lossless<unsigned long long> value);
    /// Sets "free".
    void setFree(Lossless<unsigned long long> value);
    /// Sets "available".
    void setAvailable(Lossless<unsigned long long> value);
};

/// A position fix.
class TOLV_MESSAGES_API GPS : public MirroredObject {
public:
    /// The quality of the fix, numbered as in the GGA sentence of NMEA 0183. The field is an
    /// integer, which can be compared with these constants and may hold other numbers.
    enum FixStatus : int {
        noFix = 0,
        standardFix = 1,
        differentialFix = 2,
        preciseFix = 3,
        rtkFix = 4,
        rtkFloat = 5,
        estimated = 6
    };

    Reflector<double> latitude{
        this,
        field<"Latitude", Doc{"the latitude of the position, in the receiver's unit"},
              Example{"52.2297"}>,
        Required, 0.0};
    Reflector<double> longitude{
        this,
        field<"Longitude", Doc{"the longitude of the position, in the receiver's unit"},
              Example{"21.0122"}>,
        Required, 0.0};
    Reflector<double> altitude{
        this,
        field<"Altitude", Doc{"the altitude of the position, in the receiver's unit"},
              Example{"113.4"}>,
        Required, 0.0};
    Reflector<unsigned long long> time{
        this,
        field<"Time", Doc{"the time of the fix, in the receiver's unit and on its time scale"},
              Example{"1764008237"}>,
        Required, 0};
    Reflector<int> satellites{
        this, field<"Satellites", Doc{"the number of satellites used for the fix"}, Example{"9"}>,
        Required, 0};
    Reflector<int> status{
        this,
        field<"Status", Doc{"the quality of the fix, numbered as in the GGA sentence of NMEA 0183"},
              Words{"0 no fix | 1 standard | 2 differential | 3 precise | 4 real-time kinematic | "
                    "5 real-time kinematic, float | 6 estimated"},
              Example{"1"}>,
        Required, noFix};

    GPS() = default;
    /// A fix with all fields.
    GPS(Lossless<double> latitude, Lossless<double> longitude, Lossless<double> altitude,
        Lossless<unsigned long long> time, Lossless<int> satellites, FixStatus status);
};

/// One item of a waveform sequence.
class TOLV_MESSAGES_API WaveformSeqItem : public MirroredObject {
public:
    Reflector<std::string> filePath{
        this,
        field<"filePath", Doc{"the path of the waveform file on the instrument"},
              Example{"/waveforms/pulse-train.bin"}>,
        Required};
    Reflector<unsigned long long> fileSize{
        this,
        field<"fileSize",
              Doc{"the size of the waveform file, in the unit in which the generator counts it"},
              Example{"4194304"}>,
        Required, 0};
    Reflector<double> sampleRate{
        this,
        field<"sampleRate",
              Doc{"the sample rate of the waveform, in the unit of the generator's setting"},
              Example{"100000000.0"}>,
        Required, 0.0};
    Reflector<unsigned long long> iterations{
        this, field<"iterations", Doc{"how many times the waveform is played"}, Example{"10"}>,
        Required, 0};
    Reflector<double> centerFreq{
        this,
        field<"centerFreq",
              Doc{"the center frequency of the signal, in the unit of the generator's setting"},
              Example{"2450000000.0"}>,
        Required, 0.0};
    Reflector<double> outputPower{
        this,
        field<"outputPower",
              Doc{"the output power of the signal, in the unit of the generator's setting"},
              Example{"-10.0"}>,
        Required, 0.0};
    Reflector<double> startTime{
        this,
        field<"startTime",
              Doc{"when the item starts, in the unit and on the time scale of the sequence"},
              Example{"0.5"}>,
        Required, 0.0};
};

} // namespace Tolv::Msgs::Structs
