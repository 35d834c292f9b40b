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
    std::string alias; ///< "App::ConnectMessage"; empty for a class that is not in the catalogue
    std::string shortAlias; ///< "ConnectMessage"
    std::string className;  ///< name of the C++ type
    std::string payload;    ///< empty if there is none, or it is unknown
    std::string role;
    std::shared_ptr<Msgs::Message> (*make)(); ///< null for a class that is not in the catalogue

    [[nodiscard]] std::string const& name() const { return alias.empty() ? className : alias; }
};

/// All classes registered with the factory at construction, by ascending id.
class Classes {
public:
    Classes();

    [[nodiscard]] std::vector<MessageClass> const& all() const noexcept { return all_; }

    /// The class with this id, or null.
    [[nodiscard]] MessageClass const* find(unsigned long long id) const noexcept;

    /// The tree of a default-constructed message, with a destination if the class requires one.
    /// Null if no such message can be created. The address remains valid.
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
