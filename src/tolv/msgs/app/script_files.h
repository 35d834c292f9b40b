#pragma once

#include <string>

#include <tolv/msgs/record.h>

/// @file
/// The script files of an application's user interface, which a client downloads in pieces.
namespace Tolv::Msgs::App {

/// Requests the list of script files of an application type.
class TOLV_MESSAGES_API QmlFileListRequestData : public MirroredObject {
public:
    /// The owner of the files.
    Reflector<std::string> applicationType{this, "ApplicationType"_key, Required};
};

/// The script files.
class TOLV_MESSAGES_API QmlFileListResponseData : public MirroredObject {
public:
    /// One file.
    class TOLV_MESSAGES_API FileMetaData : public MirroredObject {
    public:
        /// The name to use in `QmlFileRequestData`.
        Reflector<std::string> fileName{this, "FileName"_key, Required};
        /// The size of the whole file.
        Reflector<long long> fileSizeInBytes{this, field<"FileSizeInBytes", Unit{"bytes"}>, Required};
    };

    /// Human-readable.
    Reflector<std::string> applicationName{this, "ApplicationName"_key, Required};
    /// The lowest framework version that runs the application.
    Reflector<long long> minFrameworkVersion{this, "MinFrameworkVersion"_key, Required};
    Reflector<std::string> rootScript{this, "RootScript"_key, Required}; ///< the file to start with
    /// All files, including the root script.
    ReflectorArray<FileMetaData> fileList{this, "FileList"_key, Required};
};

/// Requests one script file.
class TOLV_MESSAGES_API QmlFileRequestData : public MirroredObject {
public:
    /// The owner of the file.
    Reflector<std::string> applicationType{this, "ApplicationType"_key, Required};
    Reflector<std::string> fileName{this, "FileName"_key, Required}; ///< as in `fileList`

    QmlFileRequestData() = default;
    /// A request for this file.
    QmlFileRequestData(std::string const& applicationType, std::string const& fileName);
};

/// One piece of a script file. The content is text and is not encoded further: a piece must not
/// split a multi-byte character, and bytes that are not valid UTF-8 need an encoding that the peers
/// define.
class TOLV_MESSAGES_API QmlFileResponseData : public MirroredObject {
public:
    /// The file to which the piece belongs.
    Reflector<std::string> fileName{this, "FileName"_key, Required};
    Reflector<long long> fileOffset{this, field<"FileOffset", Unit{"bytes"}>, Required}; ///< bytes before this piece
    Reflector<long long> fileSize{this, field<"FileSize", Unit{"bytes"}>, Required};     ///< in bytes
    Reflector<std::string> content{this, "Content"_key, Required};     ///< the piece

    QmlFileResponseData() = default;
    /// A piece with all fields.
    QmlFileResponseData(std::string const& fileName, Lossless<long long> fileOffset,
                        Lossless<long long> fileSize, std::string const& content);
};

} // namespace Tolv::Msgs::App
