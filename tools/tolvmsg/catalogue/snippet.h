#pragma once

#include <string>
#include <string_view>

#include <tolv/msgs/introspection/description.h>

#include "classes.h"

/// @file
/// C++ code that builds and reads a message.
namespace Tolv::Tool::Catalogue {

/// The member name for a key: "ControlAttrID" -> "controlAttrId", "UUID" -> "uuid", and "value" for
/// the short keys of attributes.
std::string memberName(std::string_view key);

/// Code that builds a message of the class with all its fields, and writes it.
std::string buildingLines(Classes const& classes,
                          Msgs::Introspection::ClassDescription const& message);

/// Code that reads a message of the class and accesses all its fields.
std::string readingLines(Msgs::Introspection::ClassDescription const& message);

} // namespace Tolv::Tool::Catalogue
