#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <tolv/core/metadata/element.h>

#include "classes.h"

/// @file
/// Trees as text for people.
namespace Tolv::Tool {

/// A value in one line. Long strings and arrays are cut, and their lengths told; encoded arrays are
/// shown as "1000 x double, first 0.5, ...".
/// @param most the number of bytes beyond which nothing more is begun
std::string shortText(MetaData::Element const& element, std::size_t most);

/// An address in one line; "-" when it is unset.
std::string addressText(MetaData::Element const* address);

/// Writes trees as indented lines behind a text.
class TreeText {
public:
    TreeText(Classes const& classes, std::string& out) : classes_(classes), out_(out) {}

    /// The fields of a record, a line or a block each, their values below each other.
    void fields(MetaData::Object const& record, std::size_t indent);

    /// One line.
    void line(std::size_t indent, std::string_view text);

private:
    void block(std::string const& label, MetaData::Element const& value, std::size_t indent,
               bool isMessage);
    void message(std::string const& label, unsigned long long id, MetaData::Element const& tree,
                 std::size_t indent);
    std::optional<std::string> oneLine(std::string_view key, MetaData::Element const& value) const;

    Classes const& classes_;
    std::string& out_;
};

} // namespace Tolv::Tool
