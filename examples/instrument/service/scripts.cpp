#include <instrument/front_panel.h>

#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;

namespace {

constexpr std::size_t largestPiece = 49152;

/// How much of `text` from `begin` on makes the next piece: it ends between two characters.
std::size_t pieceSize(std::string const& text, std::size_t begin) {
    if (text.size() - begin <= largestPiece)
        return text.size() - begin;
    auto size = largestPiece;
    while ((static_cast<unsigned char>(text[begin + size]) & 0xC0U) == 0x80U)
        --size;
    return size;
}

} // namespace

void offerScripts(Service& service) {
    service.on<App::QmlFileListRequestMessage>([&service](auto const&) {
        App::QmlFileListResponseData::FileMetaData panel;
        panel.fileName = "panel.qml";
        panel.fileSizeInBytes = static_cast<long long>(frontPanelScript().size());

        App::QmlFileListResponseData list;
        list.applicationName = "Spectrum Analyzer";
        list.minFrameworkVersion = 5;
        list.rootScript = "panel.qml";
        list.fileList = {panel};
        service.send(App::QmlFileListResponseMessage(list));
    });
    service.on<App::QmlFileRequestMessage>([&service](auto const& request) {
        if (request.payload().fileName() != "panel.qml")
            throw Tolv::Exception::InvalidParameter("there is no file " +
                                                    request.payload().fileName());
        // "FileSize" is that of the whole file: the client sees from it when it has all of it.
        auto const script = frontPanelScript();
        for (std::size_t begin = 0; begin < script.size();) {
            auto const size = pieceSize(script, begin);
            service.send(App::QmlFileResponseMessage({"panel.qml", static_cast<long long>(begin),
                                                      static_cast<long long>(script.size()),
                                                      script.substr(begin, size)}));
            begin += size;
        }
    });
}

} // namespace Example
