#include <tolv/core/metadata/conversion.h>
#include <tolv/core/msgs/identifier.h>

namespace Tolv::Msgs {

Identifier::~Identifier() = default;

void Identifier::copyToMetaData(MetaData::Element& element) const {
    MetaData::SetAs<unsigned long long>(value_, element);
}

void Identifier::copyFromMetaData(MetaData::Element const& element) {
    MetaData::GetAs<unsigned long long>(element, value_);
}

} // namespace Tolv::Msgs
