#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <tolv/msgs/introspection/description.h>

#include "classes.h"

namespace Tolv::Tool::Catalogue {

/// A field of a message, on its own line.
struct Row {
    Msgs::Introspection::FieldDescription field;
    std::size_t depth = 0; ///< in how many records it is
};

/// What the catalogue tells of one class.
struct Entry {
    Entry(MessageClass const& known, Msgs::Introspection::ClassDescription description);

    [[nodiscard]] std::string page() const { return stem + ".html"; }

    MessageClass const* known;
    Msgs::Introspection::ClassDescription description;
    std::string stem;      ///< of the names of its files
    std::vector<Row> rows; ///< all fields, those of a record behind the record
};

/// The record that a field holds, itself or in a list; null when there is none.
Msgs::Introspection::Type const* recordIn(Msgs::Introspection::Type const* type);
/// The same for whole messages.
Msgs::Introspection::Type const* messageIn(Msgs::Introspection::Type const* type);

} // namespace Tolv::Tool::Catalogue
