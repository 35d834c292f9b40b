#include <csignal>
#include <cstdio>
#include <exception>
#include <sstream>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include "commands.h"
#include "text.h"

using namespace Tolv::Tool;

namespace {

void complain(char const* text) { std::fprintf(stderr, "tolvmsg: %s\n", harmless(text).c_str()); }

/// A help text that fits on a screen of 24 lines and 80 columns.
std::string briefHelp(CLI::App const& app) {
    auto text = app.get_description() + "\nUsage: tolvmsg SUBCOMMAND [OPTION...] [FILE...]\n\n";
    for (auto const* const command : app.get_subcommands({}))
        text += "  " + padded(command->get_name(), 11) + command->get_description() + '\n';
    return text + "\n"
                  "Examples:\n"
                  "  tolvmsg decode session.ndjson  # the messages of a log\n"
                  "  tolvmsg lint session.ndjson    # problems that peers would have with it\n"
                  "  tolvmsg example ConnectMessage # a new message\n"
                  "\n"
                  "For more see \"tolvmsg --help\" and \"tolvmsg SUBCOMMAND --help\".\n";
}

int run(int argc, char** argv, Output& out) {
    CLI::App app("Shows the messages that instruments and their clients exchange.", "tolvmsg");
    app.set_version_flag("--version", "tolvmsg " TOLV_VERSION);
    app.footer("Examples:\n"
               "  tolvmsg list                                    # all message classes\n"
               "  tolvmsg example App::ConnectMessage             # a new message\n"
               "  tolvmsg decode session.ndjson                   # the messages of a log\n"
               "  nc -U /run/instrument | tolvmsg decode --json   # a connection, for programs\n"
               "  tolvmsg lint session.ndjson                     # problems peers would have\n"
               "  tolvmsg diff a.ndjson b.ndjson                  # differences of two logs\n"
               "  tolvmsg plot --output t.svg session.ndjson      # draws a trace\n"
               "  tolvmsg export session.ndjson >trace.csv        # a trace as numbers\n"
               "  tolvmsg token --key-file shared.key login.jwt   # verifies a signed token\n"
               "  tolvmsg schema App::ConnectMessage              # a JSON Schema\n"
               "  tolvmsg catalogue site                          # pages about all messages\n"
               "\n"
               "Exit status: 0 success; 1 a line is not a valid message, lint found problems, two\n"
               "logs differ, there is no such trace, or a token is not authentic;\n"
               "2 wrong usage, or unreadable input; 3 the output cannot be written.");
    app.require_subcommand(1);
    app.get_formatter()->column_width(24);
    app.failure_message([](CLI::App const*, CLI::Error const& e) {
        return "tolvmsg: " + harmless(e.what()) + "\nFor more see \"tolvmsg --help\".\n";
    });

    Action chosen;
    addListCommand(app, chosen);
    addExampleCommand(app, chosen);
    addDecodeCommand(app, chosen);
    addLintCommand(app, chosen);
    addDiffCommand(app, chosen);
    addPlotCommand(app, chosen);
    addExportCommand(app, chosen);
    addTokenCommand(app, chosen);
    addSchemaCommand(app, chosen);
    addCatalogueCommand(app, chosen);
    if (argc < 2) {
        out.write(briefHelp(app));
        return wrongUsage;
    }
    try {
        app.parse(argc, argv);
    } catch (CLI::ParseError const& result) {
        std::ostringstream text;
        std::ostringstream fault;
        auto const failed = app.exit(result, text, fault) != 0;
        out.write(text.str());
        std::fputs(fault.str().c_str(), stderr);
        return failed ? wrongUsage : success;
    }
    return chosen(out);
}

} // namespace

int main(int argc, char** argv) {
    // write() then reports a closed pipe or an exceeded file size limit, so that the program
    // determines its own exit status.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    Output out(STDOUT_FILENO);
    try {
        auto const status = run(argc, argv, out);
        out.flush();
        return status;
    } catch (OutputLost const& lost) {
        if (!lost.readerGone())
            complain(lost.what());
        return outputLost;
    } catch (std::exception const& e) {
        complain(e.what());
        return wrongUsage;
    }
}
