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
    auto const textOf = [&](MessageClass const& known) {
        return indentedJson(schemaOf(classes, *Msgs::Introspection::describe(known.id)));
    };
    if (options.folder.empty()) {
        out.write(options.all ? indentedJson(schemaOfAny(classes))
                              : textOf(resolveClass(classes, options.id)));
        return success;
    }
    auto const* const only = options.all ? nullptr : &resolveClass(classes, options.id);
    Folder const folder(options.folder);
    for (auto const& known : classes.all())
        if (only == nullptr || only == &known)
            folder.write(fileStem(known) + ".schema.json", textOf(known));
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
