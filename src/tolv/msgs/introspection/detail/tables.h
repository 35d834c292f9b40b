#pragma once

#include <typeindex>

#include <tolv/msgs/introspection/description.h>

namespace Tolv::Msgs::Introspection::Detail {

/// Registers all types used by fields of this library's records.
void addOwnTypes();

/// Adds what is known of a field beyond its type, and the literals of its type.
void annotate(FieldDescription& field, std::type_index record);

} // namespace Tolv::Msgs::Introspection::Detail
