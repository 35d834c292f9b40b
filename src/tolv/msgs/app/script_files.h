#pragma once

#include <string>

#include <tolv/msgs/record.h>

/// @file
/// The script files of an application's user interface, which a client fetches in pieces.
namespace Tolv::Msgs::App {

/// Asks for the script files of an application type.
class TOLV_MESSAGES_API QmlFileListRequestData : public MirroredObject {
public:
    Reflector<std::string> applicationType{this, "ApplicationType"_key, Required}; ///< whose files

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
        /// By which `QmlFileRequestData` asks.
        Reflector<std::string> fileName{this, "FileName"_key, Required};
        /// Of the whole file.
        Reflector<long long> fileSizeInBytes{this, "FileSizeInBytes"_key, Required};

        FileMetaData() = default;
        FileMetaData(FileMetaData const& other) : FileMetaData() { *this = other; }
        FileMetaData& operator=(FileMetaData const&) = default;
    };

    Reflector<std::string> applicationName{this, "ApplicationName"_key, Required}; ///< for people
    /// The lowest framework version that the application runs on.
    Reflector<long long> minFrameworkVersion{this, "MinFrameworkVersion"_key, Required};
    Reflector<std::string> rootScript{this, "RootScript"_key, Required}; ///< the file to start with
    /// All files, the first included.
    ReflectorArray<FileMetaData> fileList{this, "FileList"_key, Required};

    QmlFileListResponseData() = default;
    QmlFileListResponseData(QmlFileListResponseData const& other) : QmlFileListResponseData() {
        *this = other;
    }
    QmlFileListResponseData& operator=(QmlFileListResponseData const&) = default;
};

/// Asks for one script file.
class TOLV_MESSAGES_API QmlFileRequestData : public MirroredObject {
public:
    Reflector<std::string> applicationType{this, "ApplicationType"_key, Required}; ///< whose file
    Reflector<std::string> fileName{this, "FileName"_key, Required}; ///< out of `fileList`

    QmlFileRequestData() = default;
    /// A request for this file.
    QmlFileRequestData(std::string const& applicationType, std::string const& fileName);
    QmlFileRequestData(QmlFileRequestData const& other) : QmlFileRequestData() { *this = other; }
    QmlFileRequestData& operator=(QmlFileRequestData const&) = default;
};

/// One piece of a script file. The content is text and travels as it is: a piece must not end
/// within a character of several bytes, and bytes that are no UTF-8 need a text form of the peers'
/// own.
class TOLV_MESSAGES_API QmlFileResponseData : public MirroredObject {
public:
    /// Of the file that this is a piece of.
    Reflector<std::string> fileName{this, "FileName"_key, Required};
    Reflector<long long> fileOffset{this, "FileOffset"_key, Required}; ///< bytes before this piece
    Reflector<long long> fileSize{this, "FileSize"_key, Required};     ///< bytes
    Reflector<std::string> content{this, "Content"_key, Required};     ///< the piece

    QmlFileResponseData() = default;
    /// A piece with all fields.
    QmlFileResponseData(std::string const& fileName, Lossless<long long> fileOffset,
                        Lossless<long long> fileSize, std::string const& content);
    QmlFileResponseData(QmlFileResponseData const& other) : QmlFileResponseData() { *this = other; }
    QmlFileResponseData& operator=(QmlFileResponseData const&) = default;
};

} // namespace Tolv::Msgs::App
