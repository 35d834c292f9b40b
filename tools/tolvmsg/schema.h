#pragma once

#include <tolv/core/metadata/element.h>
#include <tolv/msgs/introspection/description.h>

#include "classes.h"

/// @file
/// JSON Schemas (2020-12) of messages as a well-formed writer sends them. Readers accept more; they
/// ignore unknown keys.
namespace Tolv::Tool {

/// The schema of one class, including everything that it refers to.
MetaData::Element schemaOf(Classes const& classes,
                           Msgs::Introspection::ClassDescription const& message);

/// A schema that every message of the registered classes satisfies. Classes of which no message can
/// be built are left out (`descriptionsOf`).
MetaData::Element schemaOfAny(Classes const& classes);

/// The tree as indented JSON, with a line end.
std::string indentedJson(MetaData::Element const& tree);

/// What a field means, with its unit and words: "the state of the test: 0 passed, 1 failed". May be
/// empty.
std::string meaningOf(Msgs::Introspection::FieldDescription const& field);

} // namespace Tolv::Tool
