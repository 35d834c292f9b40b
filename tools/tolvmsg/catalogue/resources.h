#pragma once

#include <string_view>

/// The files beside the pages, as they stand in this folder; the build puts them into the program.
namespace Tolv::Tool::Catalogue {

extern std::string_view const siteCss;
extern std::string_view const siteJs;

} // namespace Tolv::Tool::Catalogue
