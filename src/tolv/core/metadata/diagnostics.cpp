#include <iostream>

#include <tolv/core/metadata/diagnostics.h>

namespace Tolv::MetaData::Diagnostics {

void arrayCorrupt(std::string const& key) {
    std::cout << "Exception MetaDat::ReflectorArray MetaData Array corrupt for " + key + '\n';
}

void arrayExpected() {
    std::cout << "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n";
}

void wrongEncodedType() { std::cout << "Exception MetaData::ReflectorArray wrong encoded type\n"; }

} // namespace Tolv::MetaData::Diagnostics
