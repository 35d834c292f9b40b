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
    std::size_t depth = 0; ///< number of enclosing records
};

/// The catalogue entry of one class.
struct Entry {
    Entry(MessageClass const& known, Msgs::Introspection::ClassDescription description);

    [[nodiscard]] std::string page() const { return stem + ".html"; }

    MessageClass const* known;
    Msgs::Introspection::ClassDescription description;
    std::string stem;      ///< stem of its file names
    std::vector<Row> rows; ///< all fields; those of a record follow the record
};

/// The record type that a field holds, directly or in a list; null if there is none.
Msgs::Introspection::Type const* recordIn(Msgs::Introspection::Type const* type);
/// The same for message types.
Msgs::Introspection::Type const* messageIn(Msgs::Introspection::Type const* type);

} // namespace Tolv::Tool::Catalogue
