#pragma once

#include <string>
#include <vector>

#include "catalogue/entry.h"

namespace Tolv::Tool::Catalogue {

/// The page that lists all messages by family.
std::string indexPage(std::vector<Entry> const& entries);

/// The page of one message. @param at its index in `entries`
std::string messagePage(Classes const& classes, std::vector<Entry> const& entries, std::size_t at);

} // namespace Tolv::Tool::Catalogue
