#include <iostream>

#include <tolv/core/metadata/diagnostics.h>
#include <tolv/core/metadata/read_hooks.h>

namespace Tolv::MetaData::Diagnostics {

void arrayCorrupt(std::string const& key) {
    Detail::reportKept();
    std::cout << "Exception MetaDat::ReflectorArray MetaData Array corrupt for " + key + '\n';
}

void arrayExpected() {
    Detail::reportKept();
    std::cout << "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n";
}

void wrongEncodedType() {
    Detail::reportKept();
    std::cout << "Exception MetaData::ReflectorArray wrong encoded type\n";
}

} // namespace Tolv::MetaData::Diagnostics
