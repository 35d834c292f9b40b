#include <cstddef>
#include <initializer_list>
#include <iostream>

#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/diagnostics.h>

namespace Tolv::MetaData::Diagnostics {

namespace {

/// Prints one line, in a single write unless it is long, and without allocating, since memory may
/// have run out. The output is unformatted: a width or fill that the program has set for its own
/// next output neither affects the line nor is consumed by it.
void print(std::initializer_list<std::string_view> parts) noexcept {
    auto const write = [](std::string_view text) {
        std::cout.write(text.data(), static_cast<std::streamsize>(text.size()));
    };
    char line[256];
    std::size_t size = 0;
    try {
        for (auto const part : parts) {
            if (part.size() <= sizeof line - size) {
                size += part.copy(line + size, part.size());
                continue;
            }
            write({line, size});
            write(part);
            size = 0;
        }
        write({line, size});
    } catch (...) { // NOLINT(bugprone-empty-catch): a failing diagnostic must not fail the read
    }
}

} // namespace

void arrayCorrupt(std::string_view key) noexcept {
    Detail::reportKept();
    print({"Exception MetaDat::ReflectorArray MetaData Array corrupt for ", key, "\n"});
}

void arrayExpected() noexcept {
    Detail::reportKept();
    print({"Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n"});
}

void wrongEncodedType() noexcept {
    Detail::reportKept();
    print({"Exception MetaData::ReflectorArray wrong encoded type\n"});
}

} // namespace Tolv::MetaData::Diagnostics
