#include <cstddef>
#include <initializer_list>
#include <iostream>

#include <tolv/core/metadata/detail/read_hooks.h>
#include <tolv/core/metadata/diagnostics.h>

namespace Tolv::MetaData::Diagnostics {

namespace {

/// Prints one line, at once if it isn't long, and without an allocation: memory may have run out.
void print(std::initializer_list<std::string_view> parts) noexcept {
    char line[256];
    std::size_t size = 0;
    try {
        for (auto const part : parts) {
            if (part.size() <= sizeof line - size) {
                size += part.copy(line + size, part.size());
                continue;
            }
            std::cout << std::string_view(line, size) << part;
            size = 0;
        }
        std::cout << std::string_view(line, size);
    } catch (...) { // NOLINT(bugprone-empty-catch): whoever makes the stream throw knows why
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
