#include "message_checks.h"

// The input is the text of a message.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Tolv::Fuzzing::silenceDiagnostics();
    Tolv::Fuzzing::checkMessageText({reinterpret_cast<char const*>(data), size});
    return 0;
}
