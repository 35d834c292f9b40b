#pragma once

#include <tolv/core/msgs/identifier.h>
#include <tolv/fields/enum_strings.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs {

/// Maps the word for an attribute's type, such as "double", to the id of the message that carries a
/// value of this type. The default entry is "Unknown" with the id of family 4 itself.
extern TOLV_MESSAGES_API EnumStringsDefault<Identifier> const& messageTypeMapper;

} // namespace Tolv::Msgs
