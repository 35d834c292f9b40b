// The writer reproduces what the reader accepts: the same tree, and from then on the same text.

#include <string>
#include <string_view>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>

#include "fuzzing.h"
#include "support/trees.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    using namespace Tolv::MetaData;
    using Tolv::Fuzzing::require;
    std::string_view const input(reinterpret_cast<char const*>(data), size);
    Element element;
    Tolv::Testing::Taken taken;
    auto const atOnce = Tolv::Testing::thrownBy<Tolv::Exception::InvalidParameter>(
        [&] { taken.copyFromText(input); });
    try {
        ReaderJson::Read(element, input);
    } catch (Tolv::Exception::InvalidParameter const& e) {
        require(element.isNull(), "a refused text changed the element");
        require(atOnce == e.what(), "a text is refused for another reason when read at once");
        return 0;
    }
    require(taken.tree == element, "a text read at once differs from its tree");
    for (bool const compact : {true, false}) {
        // From here on nothing may be refused: an exception would end the program.
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
