#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "commands.h"
#include "folder.h"
#include "ids.h"
#include "schema.h"

namespace Tolv::Tool {

namespace {

struct Options {
    std::string id;
    std::string folder;
    bool all = false;
};

int printSchemas(Options const& options, Output& out) {
    if (options.all != options.id.empty())
        throw UsageError("schema requires either an ID or --all");
    Classes const classes;
    if (options.all && options.folder.empty()) {
        out.write(indentedJson(schemaOfAny(classes)));
        return success;
    }
    auto const wanted = options.all ? descriptionsOf(classes)
                                    : std::vector{descriptionOf(resolveClass(classes, options.id))};
    if (options.folder.empty()) {
        out.write(indentedJson(schemaOf(classes, wanted.front())));
        return success;
    }
    Folder const folder(options.folder);
    for (auto const& described : wanted)
        folder.write(fileStem(*classes.find(described.id)) + ".schema.json",
                     indentedJson(schemaOf(classes, described)));
    return success;
}

} // namespace

void addSchemaCommand(CLI::App& app, Action& chosen) {
    auto const options = std::make_shared<Options>();
    auto* const command =
        app.add_subcommand("schema", "Prints the JSON Schema (2020-12) of a message class");
    command->add_option("ID", options->id, "Id in hexadecimal, decimal or dotted form, or alias")
        ->type_name("");
    command->add_flag("--all", options->all,
                      "One schema that any message satisfies; with -o, one per class");
    command->add_option("-o,--output", options->folder, "Write files into this folder")
        ->type_name("DIR");
    command->footer("The schema describes what a well-formed writer sends; readers also accept\n"
                    "messages with unknown keys.\n"
                    "\n"
                    "Examples:\n"
                    "  tolvmsg schema ConnectMessage > connect.schema.json\n"
                    "  tolvmsg schema --all -o schemas");
    command->callback([&chosen, options] {
        chosen = [options](Output& out) { return printSchemas(*options, out); };
    });
}

} // namespace Tolv::Tool
