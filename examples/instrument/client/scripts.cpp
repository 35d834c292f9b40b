#include <instrument/front_panel.h>

#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;

void scripts(Dialogue& dialogue) {
    dialogue.heading("Script files: the panel of the application, in pieces");
    App::QmlFileListRequestData wanted;
    wanted.applicationType = "spectrum";
    auto const list =
        dialogue.ask<App::QmlFileListResponseMessage>(App::QmlFileListRequestMessage(wanted));
    check("root script", list->payload().rootScript(), "panel.qml");
    check("number of files", list->payload().fileList().size(), 1U);
    auto const size = list->payload().fileList()[0].fileSizeInBytes();

    dialogue.tell(App::QmlFileRequestMessage({"spectrum", "panel.qml"}));
    std::string file;
    int pieces = 0;
    do {
        auto const answer = dialogue.hear<App::QmlFileResponseMessage>();
        auto const& piece = answer->payload();
        check("name of the file", piece.fileName(), "panel.qml");
        check("size of the file", piece.fileSize(), size);
        check("begin of the piece", piece.fileOffset(), static_cast<long long>(file.size()));
        check("the piece has content", !piece.content().empty());
        file += piece.content();
        ++pieces;
    } while (file.size() < static_cast<std::size_t>(size));

    check("the file is above 64 KiB", file.size() > 65536);
    check("the file is what the instrument has", file == frontPanelScript());
    dialogue.note(std::to_string(pieces) + " pieces make " + std::to_string(file.size()) +
                  " bytes, every one as it should be");
}

} // namespace Example
