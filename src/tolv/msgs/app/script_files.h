#pragma once

#include <string>

#include <tolv/msgs/record.h>

/// @file
/// The script files of an application's user interface, which a client downloads in pieces.
namespace Tolv::Msgs::App {

/// Requests the list of script files of an application type.
class TOLV_MESSAGES_API QmlFileListRequestData : public MirroredObject {
public:
    Reflector<std::string> applicationType{
        this,
        field<"ApplicationType", Doc{"the type of application that owns the files"},
              Example{"spectrum"}>,
        Required};
};

/// The script files.
class TOLV_MESSAGES_API QmlFileListResponseData : public MirroredObject {
public:
    /// One file.
    class TOLV_MESSAGES_API FileMetaData : public MirroredObject {
    public:
        Reflector<std::string> fileName{
            this,
            field<"FileName", Doc{"the name of the file, by which it is requested"},
                  Example{"main.qml"}>,
            Required};
        Reflector<long long> fileSizeInBytes{
            this,
            field<"FileSizeInBytes", Unit{"bytes"}, Doc{"the size of the whole file"},
                  Example{"2048"}>,
            Required};
    };

    Reflector<std::string> applicationName{
        this,
        field<"ApplicationName", Doc{"the name of the application that owns the files, for people"},
              Example{"Spectrum Analyzer"}>,
        Required};
    Reflector<long long> minFrameworkVersion{
        this,
        field<"MinFrameworkVersion", Doc{"the lowest framework version that runs the application"},
              Example{"2"}>,
        Required};
    Reflector<std::string> rootScript{
        this, field<"RootScript", Doc{"the name of the file to start with"}, Example{"main.qml"}>,
        Required};
    ReflectorArray<FileMetaData> fileList{
        this, field<"FileList", Doc{"all files of the application, including the root script"}>,
        Required};
};

/// Requests one script file.
class TOLV_MESSAGES_API QmlFileRequestData : public MirroredObject {
public:
    Reflector<std::string> applicationType{
        this,
        field<"ApplicationType", Doc{"the type of application that owns the file"},
              Example{"spectrum"}>,
        Required};
    Reflector<std::string> fileName{
        this,
        field<"FileName", Doc{"the name of the requested file, as listed"}, Example{"main.qml"}>,
        Required};

    QmlFileRequestData() = default;
    /// A request for this file.
    QmlFileRequestData(std::string const& applicationType, std::string const& fileName);
};

/// One piece of a script file. The content is text and is not encoded further: a piece must not
/// split a multi-byte character, and bytes that are not valid UTF-8 need an encoding that the peers
/// define.
class TOLV_MESSAGES_API QmlFileResponseData : public MirroredObject {
public:
    Reflector<std::string> fileName{
        this,
        field<"FileName", Doc{"the name of the file to which the piece belongs"},
              Example{"main.qml"}>,
        Required};
    Reflector<long long> fileOffset{
        this,
        field<"FileOffset", Unit{"bytes"},
              Doc{"the offset of the piece from the start of the file"}>,
        Required};
    Reflector<long long> fileSize{
        this,
        field<"FileSize", Unit{"bytes"},
              Doc{"the size of the file or of the piece, as the peers agree"}, Example{"2048"}>,
        Required};
    Reflector<std::string> content{
        this, field<"Content", Doc{"the text of the piece"}, Example{"Item {}"}>, Required};

    QmlFileResponseData() = default;
    /// A piece with all fields.
    QmlFileResponseData(std::string const& fileName, Lossless<long long> fileOffset,
                        Lossless<long long> fileSize, std::string const& content);
};

} // namespace Tolv::Msgs::App
