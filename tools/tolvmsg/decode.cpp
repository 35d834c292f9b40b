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
                out_.flush(); // write earlier results first
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

    /// Whether `--invalid-only` leaves the line out.
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
        } catch (std::exception const& e) { // the message cannot be shown
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
    auto* const command =
        app.add_subcommand("decode", "Shows messages, given as one line of JSON each");
    command->add_flag("--json", options->json, "Print one JSON object per line");
    options->bound.addOption(*command);
    options->filter.addOptions(*command);
    command
        ->add_flag("--invalid-only", options->invalidOnly,
                   "Invalid lines, messages with problems, and invalid attributes")
        ->group("Filters");
    command->add_flag("--follow", options->follow,
                      "Wait for more lines at the end of the file, until interrupted");
    addFiles(*command, options->files);
    command->footer(
        "Shows messages as the library reads them, with their problems: which values are missing\n"
        "or did not parse, and why. Decoding continues after a line that is not a message.\n"
        "Attributes are shown in words: the value with unit and precision (decimal places),\n"
        "limits, entries, statistics of traces, and whether the attribute is valid.\n"
        "A message must match all filters; a filter given twice matches either value.\n"
        "\n"
        "With --json a line has \"line\" (from 1; with several files also \"file\"), \"id\",\n"
        "\"class\", \"alias\" and \"message\", or \"error\". \"problems\" lists the parts of the "
        "input\n"
        "that are missing or were not read: \"path\", \"problem\" and \"found\" (null if absent);\n"
        "\"notes\" holds the diagnostics of the library. Both are left out if empty.\n"
        "An attribute has \"valid\", true or false, and if false \"invalid\", the reason;\n"
        "\"inside\" lists these for nested attributes, with their \"path\".\n"
        "\n"
        "Examples:\n"
        "  tolvmsg decode session.ndjson\n"
        "  tolvmsg decode --invalid-only session.ndjson        # only problems\n"
        "  tolvmsg decode --id ConnectMessage --from panel session.ndjson\n"
        "  tolvmsg decode --family Attrs --follow live.ndjson  # as it grows\n"
        "  tolvmsg example 3.0.0.1 | tolvmsg decode\n"
        "  tolvmsg decode --json *.ndjson | jq 'select(.error or .problems)'\n"
        "  tolvmsg decode --json *.ndjson | jq 'select(.valid == false) | .invalid'\n"
        "\n"
        "Exit status: 0 every line is a message; 1 a line is not; 2 wrong usage, or unreadable\n"
        "file; 3 the output cannot be written.");
    command->callback([&chosen, options] {
        chosen = [options](Output& out) {
            if (options->files.empty())
                options->files.emplace_back("-");
            if (options->follow && options->files.size() > 1)
                throw UsageError("--follow accepts only one file");
            Classes const classes;
            options->filter.resolve(classes);
            return Decoder(*options, classes, out).run();
        };
    });
}

} // namespace Tolv::Tool
