#pragma once

#include <tolv/core/metadata/element.h>
#include <tolv/msgs/introspection/description.h>

#include "classes.h"

/// @file
/// JSON Schemas (2020-12) of messages: what a well-formed writer sends. Readers take more: to them
/// a key that nobody knows is no fault.
namespace Tolv::Tool {

/// The schema of one class, with all that it refers to.
MetaData::Element schemaOf(Classes const& classes,
                           Msgs::Introspection::ClassDescription const& message);

/// The schema that any message of the registered classes satisfies. Classes of which no message can
/// be built are left out (`descriptionsOf`).
MetaData::Element schemaOfAny(Classes const& classes);

/// The tree as indented JSON, with a line end.
std::string indentedJson(MetaData::Element const& tree);

/// What the values of a field mean, for people: "in ms", "0 passed, 1 failed". May be empty.
std::string meaningOf(Msgs::Introspection::FieldDescription const& field);

} // namespace Tolv::Tool
