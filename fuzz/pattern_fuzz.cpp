#include <regex>

#include <tolv/msgs/attrs/values.h>

#include "fuzzing.h"

// The input is a "ValidCharacters" pattern up to the first NUL, and a value.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    using namespace Tolv::Msgs::Attrs;
    using Tolv::Fuzzing::require;
    Tolv::Fuzzing::Input input(data, size);
    AttrWithMetaData<std::string, StringMetaData> text;
    text.editMetaData().validCharacters = input.until('\0');
    text.value = input.rest();
    bool valid = false;
    try {
        valid = text.validate();
    } catch (std::regex_error const&) {
        try {
            (void)text.explainInvalid();
            require(false, "a pattern was refused, and then explained");
        } catch (std::regex_error const&) {
            return 0;
        }
    }
    require(text.explainInvalid().empty() == valid, "the explanation contradicts the verdict");
    return 0;
}
