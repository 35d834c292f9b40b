#pragma once

#include <typeindex>

#include <tolv/msgs/introspection/description.h>

namespace Tolv::Msgs::Introspection::Detail {

/// Makes all types known that fields of this library's records have.
void addOwnTypes();

/// Fills in what is known of a field beyond its type, and the literals of its type.
void annotate(FieldDescription& field, std::type_index record);

} // namespace Tolv::Msgs::Introspection::Detail
