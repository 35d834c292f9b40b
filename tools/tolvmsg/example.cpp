#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include <tolv/core/metadata/json.h>

#include "classes.h"
#include "commands.h"
#include "ids.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

int printExample(std::string const& id, Output& out) {
    Classes const classes;
    auto const& wanted = resolveClass(classes, id);
    auto const* const tree = classes.example(wanted.id);
    if (tree == nullptr)
        throw UsageError(wanted.className +
                         " is not in the catalogue, so tolvmsg cannot create one");
    std::string text;
    MetaData::WriterJson::Write(*tree, text);
    out.write(harmlessJson(text) + '\n');
    return success;
}

} // namespace

void addExampleCommand(CLI::App& app, Action& chosen) {
    auto const id = std::make_shared<std::string>();
    auto* const command = app.add_subcommand("example", "Prints a new message as one line of JSON");
    command->add_option("ID", *id, "Id in hexadecimal, decimal or dotted form, or alias")
        ->type_name("")
        ->required();
    command->footer("Examples (all the same):\n"
                    "  tolvmsg example 3.0.0.1\n"
                    "  tolvmsg example 0x0003000000000001\n"
                    "  tolvmsg example App::ConnectMessage\n"
                    "  tolvmsg example ConnectMessage");
    command->callback(
        [&chosen, id] { chosen = [id](Output& out) { return printExample(*id, out); }; });
}

} // namespace Tolv::Tool
