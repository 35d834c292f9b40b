#include <tolv/msgs/app/script_files.h>

namespace Tolv::Msgs::App {

QmlFileRequestData::QmlFileRequestData(std::string const& applicationType,
                                       std::string const& fileName) {
    this->applicationType = applicationType;
    this->fileName = fileName;
}

QmlFileResponseData::QmlFileResponseData(std::string const& fileName,
                                         Lossless<long long> fileOffset,
                                         Lossless<long long> fileSize, std::string const& content) {
    this->fileName = fileName;
    this->fileOffset = fileOffset;
    this->fileSize = fileSize;
    this->content = content;
}

} // namespace Tolv::Msgs::App
