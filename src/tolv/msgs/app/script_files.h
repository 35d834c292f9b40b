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

    QmlFileListRequestData() = default;
    QmlFileListRequestData(QmlFileListRequestData const& other) : QmlFileListRequestData() {
        *this = other;
    }
    QmlFileListRequestData& operator=(QmlFileListRequestData const&) = default;
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
        Reflector<long long> fileSizeInBytes{this, "FileSizeInBytes"_key, Required};

        FileMetaData() = default;
        FileMetaData(FileMetaData const& other) : FileMetaData() { *this = other; }
        FileMetaData& operator=(FileMetaData const&) = default;
    };

    /// Human-readable.
    Reflector<std::string> applicationName{this, "ApplicationName"_key, Required};
    /// The lowest framework version that runs the application.
    Reflector<long long> minFrameworkVersion{this, "MinFrameworkVersion"_key, Required};
    Reflector<std::string> rootScript{this, "RootScript"_key, Required}; ///< the file to start with
    /// All files, including the root script.
    ReflectorArray<FileMetaData> fileList{this, "FileList"_key, Required};

    QmlFileListResponseData() = default;
    QmlFileListResponseData(QmlFileListResponseData const& other) : QmlFileListResponseData() {
        *this = other;
    }
    QmlFileListResponseData& operator=(QmlFileListResponseData const&) = default;
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
    QmlFileRequestData(QmlFileRequestData const& other) : QmlFileRequestData() { *this = other; }
    QmlFileRequestData& operator=(QmlFileRequestData const&) = default;
};

/// One piece of a script file. The content is text and is not encoded further: a piece must not
/// split a multi-byte character, and bytes that are not valid UTF-8 need an encoding that the peers
/// define.
class TOLV_MESSAGES_API QmlFileResponseData : public MirroredObject {
public:
    /// The file to which the piece belongs.
    Reflector<std::string> fileName{this, "FileName"_key, Required};
    Reflector<long long> fileOffset{this, "FileOffset"_key, Required}; ///< bytes before this piece
    Reflector<long long> fileSize{this, "FileSize"_key, Required};     ///< in bytes
    Reflector<std::string> content{this, "Content"_key, Required};     ///< the piece

    QmlFileResponseData() = default;
    /// A piece with all fields.
    QmlFileResponseData(std::string const& fileName, Lossless<long long> fileOffset,
                        Lossless<long long> fileSize, std::string const& content);
    QmlFileResponseData(QmlFileResponseData const& other) : QmlFileResponseData() { *this = other; }
    QmlFileResponseData& operator=(QmlFileResponseData const&) = default;
};

} // namespace Tolv::Msgs::App
