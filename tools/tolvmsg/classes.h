#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <tolv/core/metadata/element.h>
#include <tolv/core/msgs/message.h>
#include <tolv/msgs/introspection/description.h>

namespace Tolv::Tool {

/// A registered message class.
struct MessageClass {
    unsigned long long id;
    std::string alias;      ///< "App::ConnectMessage"; empty for a class that is in no catalogue
    std::string shortAlias; ///< "ConnectMessage"
    std::string className;  ///< without catalogue: the name of the C++ type
    std::string payload;    ///< empty: none, or unknown
    std::string role;
    std::shared_ptr<Msgs::Message> (*make)(); ///< null for a class that is in no catalogue

    [[nodiscard]] std::string const& name() const { return alias.empty() ? className : alias; }
};

/// All classes that the factory has at construction, by ascending id.
class Classes {
public:
    Classes();

    [[nodiscard]] std::vector<MessageClass> const& all() const noexcept { return all_; }

    /// The class with this id, or null.
    [[nodiscard]] MessageClass const* find(unsigned long long id) const noexcept;

    /// A message to start from: what a default-built one writes, with a destination where the class
    /// demands one. Null where no such message can be made. It stays where it is.
    [[nodiscard]] MetaData::Element const* example(unsigned long long id) const;

private:
    std::vector<MessageClass> all_;
    mutable std::unordered_map<unsigned long long, MetaData::Element> trees_;
};

/// What introspection tells of the class with this id; empty where no message of it can be built.
std::optional<Msgs::Introspection::ClassDescription> descriptionOf(unsigned long long id);

/// The same. @throws UsageError, which names the class, where no message of it can be built
Msgs::Introspection::ClassDescription descriptionOf(MessageClass const& known);

/// The descriptions of all classes. Those of which no message can be built are left out, each with
/// a line on standard error.
std::vector<Msgs::Introspection::ClassDescription> descriptionsOf(Classes const& classes);

} // namespace Tolv::Tool
