#include <algorithm>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/CLI.hpp>

#include "attribute_view.h"
#include "captured_cout.h"
#include "commands.h"
#include "filter.h"
#include "input.h"
#include "line_bound.h"
#include "line_reader.h"
#include "line_views.h"
#include "options.h"
#include "progress.h"

namespace Tolv::Tool {

namespace {

struct Options {
    bool json = false;
    bool follow = false;
    bool invalidOnly = false;
    Filter filter;
    LineBound bound;
    std::vector<std::string> files;
};

class Decoder {
public:
    Decoder(Options const& options, Classes const& classes, Output& out)
        : options_(options), out_(out), classes_(classes) {}

    int run() {
        for (auto const& file : options_.files) {
            try {
                decode(file);
            } catch (std::system_error const& e) {
                out_.flush(); // what was read before comes first
                auto const text =
                    "tolvmsg: cannot read " + Input::name(file) + ": " + e.code().message() + '\n';
                std::fputs(text.c_str(), stderr);
                status_ = wrongUsage;
            }
        }
        return status_;
    }

private:
    void decode(std::string const& file) {
        Input const input(file);
        LineReader reader(input.descriptor(), options_.bound.bytes(), [this] { out_.flush(); });
        if (options_.follow)
            reader.follow();
        Progress progress(input, out_);
        LineNumber where{options_.files.size() > 1 ? std::string_view(file) : std::string_view(),
                         0};
        LineReader::Line line;
        while (reader.next(line)) {
            ++where.number;
            if (!options_.follow)
                progress.update();
            if (line.tooLong)
                show(refused(options_.bound.complaint()), where);
            else if (line.text.find_first_not_of(" \t\r") != std::string_view::npos)
                show(examine(printed_, line.text, options_.bound.limits()), where);
        }
    }

    /// Of what `--invalid-only` leaves out.
    static bool isFine(ExaminedLine const& line) {
        if (!line.error.empty() || !line.problems.empty())
            return false;
        auto const verdict = verdictOf(*line.message);
        auto const inside = verdictsInside(*line.message);
        return (!verdict || verdict->valid) &&
               std::all_of(inside.begin(), inside.end(),
                           [](auto const& one) { return one.verdict.valid; });
    }

    void show(ExaminedLine const& line, LineNumber const& where) {
        if (!options_.filter.takes(line) || (options_.invalidOnly && isFine(line)))
            return;
        try {
            out_.write(options_.json ? jsonOf(line, where, classes_)
                                     : textOf(line, where, classes_, style_));
        } catch (OutputLost const&) {
            throw;
        } catch (std::exception const& e) { // a message that cannot be shown
            auto instead = refused(e.what());
            instead.id = line.id;
            show(instead, where);
            return;
        }
        if (!line.error.empty() && status_ == success)
            status_ = messagesLost;
    }

    static ExaminedLine refused(std::string reason) {
        ExaminedLine line;
        line.error = std::move(reason);
        return line;
    }

    Options const& options_;
    Output& out_;
    Style const style_ = Style::ofStandardOutput();
    Classes const& classes_;
    CapturedCout printed_;
    int status_ = success;
};

} // namespace

void addDecodeCommand(CLI::App& app, Action& chosen) {
    auto const options = std::make_shared<Options>();
    auto* const command = app.add_subcommand("decode", "Shows messages, one line of JSON each");
    command->add_flag("--json", options->json, "One JSON object a line, for programs");
    options->bound.addOption(*command);
    options->filter.addOptions(*command);
    command
        ->add_flag("--invalid-only", options->invalidOnly,
                   "Lines without message, messages with problems, attributes that are not valid")
        ->group("Filters");
    command->add_flag("--follow", options->follow,
                      "Wait for more at the end of the file, until interrupted");
    addFiles(*command, options->files);
    command->footer(
        "A message is shown as the library reads it, with the problems: what did not read or was "
        "not\n"
        "there, and why. A line that gives no message does not stop the others.\n"
        "An attribute is shown in words: its value with unit and precision (digits behind the\n"
        "point), limits, entries, for a trace its statistics, and whether it is valid.\n"
        "Of the filters all that are given must hold; one given twice takes either value.\n"
        "\n"
        "With --json a line has \"line\" (from 1; \"file\", too, when there are several), \"id\",\n"
        "\"class\", \"alias\" and \"message\", or \"error\". \"problems\" lists what is not in "
        "the\n"
        "message as it stood in the input: \"path\", \"problem\" and \"found\" (null when nothing\n"
        "was there); \"notes\" is what the library said. Both are left out when empty.\n"
        "An attribute has \"valid\", true or false, and \"invalid\", the reason when it is false;\n"
        "\"inside\" lists these for attributes inside of the message, with their \"path\".\n"
        "\n"
        "Examples:\n"
        "  tolvmsg decode session.ndjson\n"
        "  tolvmsg decode --invalid-only session.ndjson        # what went wrong, and why\n"
        "  tolvmsg decode --id ConnectMessage --from panel session.ndjson\n"
        "  tolvmsg decode --family Attrs --follow live.ndjson  # as it grows\n"
        "  tolvmsg example 3.0.0.1 | tolvmsg decode\n"
        "  tolvmsg decode --json *.ndjson | jq 'select(.error or .problems)'\n"
        "  tolvmsg decode --json *.ndjson | jq 'select(.valid == false) | .invalid'\n"
        "\n"
        "Exit status: 0 every line gave a message; 1 one did not; 2 wrong usage, or a file that\n"
        "cannot be read; 3 the standard output cannot be written.");
    command->callback([&chosen, options] {
        chosen = [options](Output& out) {
            if (options->files.empty())
                options->files.emplace_back("-");
            if (options->follow && options->files.size() > 1)
                throw UsageError("--follow takes one file");
            Classes const classes;
            options->filter.resolve(classes);
            return Decoder(*options, classes, out).run();
        };
    });
}

} // namespace Tolv::Tool
