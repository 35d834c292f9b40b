#include <memory>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include "catalogue/pages.h"
#include "catalogue/resources.h"
#include "commands.h"
#include "folder.h"
#include "schema.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

int writeCatalogue(std::string const& path, Output& out) {
    Classes const classes;
    std::vector<Catalogue::Entry> entries;
    for (auto& described : descriptionsOf(classes))
        entries.emplace_back(*classes.find(described.id), std::move(described));
    Folder const folder(path);
    folder.write("site.css", Catalogue::siteCss);
    folder.write("site.js", Catalogue::siteJs);
    folder.write("index.html", Catalogue::indexPage(entries));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        folder.write(entries[i].page(), Catalogue::messagePage(classes, entries, i));
        folder.write(entries[i].stem + ".schema.json",
                     indentedJson(schemaOf(classes, entries[i].description)));
    }
    auto const index = path + "/index.html";
    // Programs get the name unescaped.
    out.write((::isatty(STDOUT_FILENO) == 1 ? unquoted(index, 4096) : index) + '\n');
    return success;
}

} // namespace

void addCatalogueCommand(CLI::App& app, Action& chosen) {
    auto const folder = std::make_shared<std::string>();
    auto* const command =
        app.add_subcommand("catalogue", "Writes HTML pages about all message classes");
    command->add_option("DIR", *folder, "Folder for the pages, created if necessary")
        ->type_name("")
        ->required();
    command->footer(
        "The pages need neither a server nor a network: open DIR/index.html, whose path the\n"
        "command prints. The output is reproducible.\n"
        "\n"
        "Example:\n"
        "  xdg-open \"$(tolvmsg catalogue site)\"");
    command->callback([&chosen, folder] {
        chosen = [folder](Output& out) { return writeCatalogue(*folder, out); };
    });
}

} // namespace Tolv::Tool
