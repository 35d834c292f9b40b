#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <tolv/core/metadata/element.h>
#include <tolv/core/msgs/message.h>

#include "classes.h"

/// @file
/// Trees as readable text.
namespace Tolv::Tool {

/// A value in one line. Long strings and arrays are cut, with their lengths; encoded arrays are
/// shown as "1000 x double, first 0.5, ...".
/// @param most number of bytes after which no further part is started
std::string shortText(MetaData::Element const& element, std::size_t most);

/// An address in one line; "-" if it is unset.
std::string addressText(MetaData::Element const* address);

/// Appends trees to a text as indented lines.
class TreeText {
public:
    TreeText(Classes const& classes, std::string& out) : classes_(classes), out_(out) {}

    /// Appends the fields of a record, each as a line or a block, with aligned values.
    void fields(MetaData::Object const& record, std::size_t indent) { fields(record, indent, {}); }

    /// Appends the payload of `message`: an attribute in words, any other field by field.
    /// @param data the tree that the payload writes; null if it did not parse
    void payload(Msgs::Message const& message, MetaData::Element const* data, std::size_t indent);

    /// Appends one line.
    void line(std::size_t indent, std::string_view text);

private:
    /// The typed messages of an array of messages.
    using Messages = std::vector<Msgs::Message const*>;

    void fields(MetaData::Object const& record, std::size_t indent, Messages const& inside);
    void block(std::string const& label, MetaData::Element const& value, std::size_t indent,
               bool isMessage, Messages const& inside);
    void entry(std::string const& label, MetaData::Element const& value, std::size_t indent,
               bool isMessage, Msgs::Message const* typed);
    void message(std::string const& label, std::optional<unsigned long long> id,
                 MetaData::Element const& tree, std::size_t indent, Msgs::Message const* typed);
    void more(std::size_t indent, std::size_t shown, std::size_t all, Messages const& inside);
    std::optional<std::string> oneLine(std::string_view key, MetaData::Element const& value) const;

    Classes const& classes_;
    std::string& out_;
};

} // namespace Tolv::Tool
