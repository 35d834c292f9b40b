// What the reader accepts, the writer must give back: the same tree, and then always the same text.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>

namespace {

void require(bool holds, char const* what) {
    if (!holds) {
        std::fprintf(stderr, "%s\n", what);
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    using namespace Tolv::MetaData;
    Element element;
    try {
        ReaderJson::Read(element, {reinterpret_cast<char const*>(data), size});
    } catch (Tolv::Exception::InvalidParameter const&) {
        require(element.isNull(), "a refused text changed the element");
        return 0;
    }
    for (bool const compact : {true, false}) {
        // From here on nothing may be refused: an exception ends the program.
        std::string text;
        WriterJson::Write(element, text, compact);
        Element back;
        ReaderJson::Read(back, text);
        require(back == element, "the tree changed on its way through text");
        std::string again;
        WriterJson::Write(back, again, compact);
        require(again == text, "the text changed on its way through a tree");
    }
    return 0;
}
