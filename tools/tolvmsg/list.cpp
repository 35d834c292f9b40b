#include <algorithm>

#include <CLI/CLI.hpp>

#include "classes.h"
#include "commands.h"
#include "ids.h"
#include "json_object.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

void addTextOrNull(JsonObject& object, char const* key, std::string const& text) {
    if (text.empty())
        object.addNull(key);
    else
        object.add(key, text);
}

void listAsJson(Classes const& classes, Output& out) {
    auto const* separator = "[\n";
    for (auto const& known : classes.all()) {
        Msgs::Identifier const id(known.id);
        JsonObject row;
        row.add("id", hexadecimal(known.id));
        row.add("family", std::uint64_t{id.family()});
        row.add("sub1", std::uint64_t{id.sub1()});
        row.add("sub2", std::uint64_t{id.sub2()});
        row.add("type", std::uint64_t{id.type()});
        row.add("class", known.className);
        addTextOrNull(row, "alias", known.alias);
        addTextOrNull(row, "payload", known.payload);
        addTextOrNull(row, "role", known.role);
        out.write(separator + row.text());
        separator = ",\n";
    }
    out.write(classes.all().empty() ? "[]\n" : "\n]\n");
}

void listForPeople(Classes const& classes, Output& out) {
    std::size_t fields = 0;
    std::size_t names = 0;
    for (auto const& known : classes.all()) {
        fields = std::max(fields, dotted(known.id).size());
        if (!known.alias.empty())
            names = std::max(names, known.alias.size());
    }
    for (auto const& known : classes.all())
        out.write(hexadecimal(known.id) + "  " + padded(dotted(known.id), fields) + "  " +
                  padded(known.name(), names) + "  " +
                  (known.payload.empty() ? "-" : known.payload) + '\n');
}

} // namespace

void addListCommand(CLI::App& app, Action& chosen) {
    auto const json = std::make_shared<bool>(false);
    auto* const command = app.add_subcommand("list", "Lists the registered message classes");
    command->add_flag("--json", *json, "Print a JSON array of objects");
    command->footer("One line per class: id, its four fields, alias and payload record.\n"
                    "\n"
                    "Example:\n"
                    "  tolvmsg list | grep Connect");
    command->callback([&chosen, json] {
        chosen = [json](Output& out) {
            Classes const classes;
            (*json ? listAsJson : listForPeople)(classes, out);
            return success;
        };
    });
}

} // namespace Tolv::Tool
