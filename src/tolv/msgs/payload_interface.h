#pragma once

#include <tolv/core/metadata/serializable.h>

namespace Tolv::Msgs {

/// Base of payloads that hold plain members and convert themselves by hand. What such a payload
/// throws while it is read resets the field that holds it.
class SerializablePayloadInterface : public virtual MetaData::PartiallySerializableInterface {};

} // namespace Tolv::Msgs
