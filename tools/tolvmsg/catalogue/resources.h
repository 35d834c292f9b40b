#pragma once

#include <string_view>

/// The style sheet and the script of the pages. The build embeds these files into the program.
namespace Tolv::Tool::Catalogue {

extern std::string_view const siteCss;
extern std::string_view const siteJs;

} // namespace Tolv::Tool::Catalogue
