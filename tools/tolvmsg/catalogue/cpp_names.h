#pragma once

#include <set>
#include <string>
#include <string_view>

#include <tolv/msgs/introspection/description.h>

namespace Tolv::Tool::Catalogue {

/// Names of variables, each given once.
class VariableNames {
public:
    /// `wanted`, or with a number behind it when it is taken.
    std::string take(std::string const& wanted);

private:
    std::set<std::string> taken_{"message", "data", "tree", "text", "received"};
};

/// "hardwareModule" for "App::HardwareModule".
std::string variableFor(Msgs::Introspection::Type const& type);

/// A text as a C++ literal.
std::string cppString(std::string_view text);

/// A value that the field takes, as C++: its default where that tells something.
std::string cppValue(Msgs::Introspection::FieldDescription const& field);

} // namespace Tolv::Tool::Catalogue
