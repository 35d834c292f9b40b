#pragma once

#include <tolv/core/msgs/identifier.h>
#include <tolv/metadata/enum_strings.h>
#include <tolv/msgs/export.h>

namespace Tolv::Msgs {

/// Maps the text of an attribute's type, such as "double", to the id of the message that carries a
/// value of this type. Beside the table: "Unknown" and the id of family 4 itself.
extern TOLV_MESSAGES_API EnumStringsDefault<Identifier> const& messageTypeMapper;

} // namespace Tolv::Msgs
