#pragma once

#include <typeinfo>

#include <tolv/msgs/introspection/description.h>

namespace Tolv::Msgs::Introspection::Detail {

/// Makes all types known that fields of this library's records have.
void addOwnTypes();

/// Fills in what is known of a field beyond its type.
void annotate(FieldDescription& field, std::type_info const& record);

} // namespace Tolv::Msgs::Introspection::Detail
