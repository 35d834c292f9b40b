#pragma once

#include <tolv/core/metadata/serializable.h>

namespace Tolv::Msgs {

/// Base of payloads with plain members and custom conversion. If reading such a payload throws, the
/// field that holds it is reset.
class SerializablePayloadInterface : public virtual MetaData::PartiallySerializableInterface {};

} // namespace Tolv::Msgs
