#pragma once

#include <string>
#include <string_view>

#include <tolv/msgs/introspection/description.h>

#include "classes.h"

/// @file
/// The C++ lines that build and read a message.
namespace Tolv::Tool::Catalogue {

/// The name of the member for a key: "ControlAttrID" -> "controlAttrId", "UUID" -> "uuid", and
/// "value" for the short keys of attributes.
std::string memberName(std::string_view key);

/// Lines that build a message of the class with all its fields, and write it.
std::string buildingLines(Classes const& classes,
                          Msgs::Introspection::ClassDescription const& message);

/// Lines that read a message of the class and look at all its fields.
std::string readingLines(Msgs::Introspection::ClassDescription const& message);

} // namespace Tolv::Tool::Catalogue
