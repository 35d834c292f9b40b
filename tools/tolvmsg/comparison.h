#pragma once

#include <string>
#include <vector>

#include "classes.h"

namespace Tolv::Tool {

/// A place of an input that is not, or not as it stood there, in the message made of it.
struct Unread {
    std::string path;    ///< "Data.ComponentList[3].Type"
    std::string problem; ///< what happened, in a few words
    std::string found;   ///< what stood there, as a short text; empty: nothing
};

/// What got lost between the tree `input` and `message`, which was made of it and writes the tree
/// `result`. Reading is silent about failures, so they are found by comparison: with the result,
/// and with the default-built message, which has all required fields.
std::vector<Unread> findUnread(Classes const& classes, MetaData::Element const& input,
                               Msgs::Message const& message, MetaData::Element const& result);

} // namespace Tolv::Tool
