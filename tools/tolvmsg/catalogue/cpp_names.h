#pragma once

#include <set>
#include <string>
#include <string_view>

#include <tolv/msgs/introspection/description.h>

namespace Tolv::Tool::Catalogue {

/// Generates unique variable names.
class VariableNames {
public:
    /// `wanted`, with a number appended if it is taken.
    std::string take(std::string const& wanted);

private:
    std::set<std::string> taken_{"message", "data", "tree", "text", "received"};
};

/// The variable name for a type: "hardwareModule" for "App::HardwareModule".
std::string variableFor(Msgs::Introspection::Type const& type);

/// A text as a C++ literal.
std::string cppString(std::string_view text);

/// A valid value of the field as C++: its default, if that is informative.
std::string cppValue(Msgs::Introspection::FieldDescription const& field);

} // namespace Tolv::Tool::Catalogue
