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
    Reflector<std::string> name{this, "name"_key, Required};       ///< of the software
    Reflector<std::string> version{this, "version"_key, Required}; ///< in the vendor's format

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
    Reflector<std::string> serialNumber{this, "serialNumber"_key, Required}; ///< of the instrument
    Reflector<std::string> ipAddress{this, "ipAddress"_key, Required};       ///< of the instrument

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
    Reflector<std::string> capacity{this, "capacity"_key, Required}; ///< in total
    Reflector<std::string> free{this, "free"_key, Required};         ///< unused
    /// Usable by the requester.
    Reflector<std::string> available{this, "available"_key, Required};

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

    Reflector<double> latitude{this, "Latitude"_key, Required, 0.0};   ///< as given by the receiver
    Reflector<double> longitude{this, "Longitude"_key, Required, 0.0}; ///< as given by the receiver
    Reflector<double> altitude{this, "Altitude"_key, Required, 0.0};   ///< as given by the receiver
    Reflector<unsigned long long> time{this, "Time"_key, Required, 0}; ///< as given by the receiver
    /// The number of satellites used for the fix.
    Reflector<int> satellites{this, "Satellites"_key, Required, 0};
    Reflector<int> status{this, field<"Status", Words{"0 no fix | 1 standard | 2 differential | 3 precise | 4 real-time kinematic | 5 real-time kinematic, float | 6 estimated"}>, Required, noFix}; ///< a `FixStatus`

    GPS() = default;
    /// A fix with all fields.
    GPS(Lossless<double> latitude, Lossless<double> longitude, Lossless<double> altitude,
        Lossless<unsigned long long> time, Lossless<int> satellites, FixStatus status);
};

/// One item of a waveform sequence.
class TOLV_MESSAGES_API WaveformSeqItem : public MirroredObject {
public:
    Reflector<std::string> filePath{this, "filePath"_key, Required}; ///< on the instrument
    Reflector<unsigned long long> fileSize{this, "fileSize"_key, Required, 0}; ///< of that file
    Reflector<double> sampleRate{this, "sampleRate"_key, Required, 0.0};       ///< of the waveform
    /// How often the waveform is played.
    Reflector<unsigned long long> iterations{this, "iterations"_key, Required, 0};
    Reflector<double> centerFreq{this, "centerFreq"_key, Required, 0.0}; ///< of the signal
    /// In the unit of the generator's setting.
    Reflector<double> outputPower{this, "outputPower"_key, Required, 0.0};
    /// The start time, on the time scale of the sequence.
    Reflector<double> startTime{this, "startTime"_key, Required, 0.0};
};

} // namespace Tolv::Msgs::Structs
