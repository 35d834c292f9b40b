#include <array>
#include <map>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <CLI/CLI.hpp>

#include "captured_cout.h"
#include "commands.h"
#include "examined_line.h"
#include "filter.h"
#include "findings.h"
#include "ids.h"
#include "input.h"
#include "json_object.h"
#include "line_bound.h"
#include "line_reader.h"
#include "options.h"
#include "progress.h"
#include "style.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

struct Options {
    bool json = false;
    bool quiet = false;
    LineBound bound;
    Filter filter;
    std::vector<std::string> files;
};

/// The findings in the messages with one id.
struct Summary {
    std::uint64_t lines = 0;
    std::uint64_t faulty = 0;
    std::array<std::uint64_t, ruleCount> findings{};
};

class Linter {
public:
    Linter(Options const& options, Classes const& classes, Output& out)
        : options_(options), classes_(classes), out_(out) {}

    int run() {
        int status = success;
        for (auto const& file : options_.files) {
            try {
                judge(file);
            } catch (std::system_error const& e) {
                out_.flush(); // write earlier results first
                auto const text =
                    "tolvmsg: cannot read " + Input::name(file) + ": " + e.code().message() + '\n';
                std::fputs(text.c_str(), stderr);
                status = wrongUsage;
            }
        }
        if (options_.json)
            summarizeAsJson();
        else
            summarize();
        return status == success && anyFinding_ ? anyFinding : status;
    }

private:
    void judge(std::string const& file) {
        Input const input(file);
        LineReader reader(input.descriptor(), options_.bound.bytes(), [this] { out_.flush(); });
        Progress progress(input, out_);
        LineReader::Line line;
        for (std::uint64_t number = 1; reader.next(line); ++number) {
            progress.update();
            if (line.text.find_first_not_of(" \t\r") == std::string_view::npos && !line.tooLong)
                continue;
            ExaminedLine examined;
            if (line.tooLong)
                examined.error = options_.bound.complaint();
            else
                examined = examine(printed_, line.text, options_.bound.limits());
            if (options_.filter.takes(examined))
                judge(examined, file, number);
        }
    }

    void judge(ExaminedLine const& line, std::string const& file, std::uint64_t number) {
        auto const findings = findingsOf(line, classes_);
        auto& summary = summaries_[line.id];
        ++summary.lines;
        summary.faulty += findings.empty() ? 0 : 1;
        anyFinding_ = anyFinding_ || !findings.empty();
        for (auto const& one : findings) {
            ++summary.findings[one.rule];
            if (options_.json)
                out_.write(asJson(one, line, file, number));
            else if (!options_.quiet)
                out_.write(Input::name(file) + ':' + std::to_string(number) + ": " +
                           style_.warning(ruleNames[one.rule]) + ": " +
                           (one.path.empty() ? "" : harmless(one.path) + ": ") +
                           harmless(one.text) + (one.found.empty() ? "" : ": " + one.found) + '\n');
        }
    }

    static std::string asJson(Finding const& one, ExaminedLine const& line, std::string const& file,
                              std::uint64_t number) {
        JsonObject row;
        row.add("file", file).add("line", number);
        if (line.id)
            row.add("id", hexadecimal(*line.id));
        row.add("rule", ruleNames[one.rule]).add("path", one.path).add("problem", one.text);
        if (one.found.empty())
            row.addNull("found");
        else
            row.add("found", one.found);
        return row.text() + '\n';
    }

    [[nodiscard]] std::string nameOf(std::optional<unsigned long long> id) const {
        if (!id)
            return "no id";
        auto const* const known = classes_.find(*id);
        return dotted(*id) + "  " + (known != nullptr ? known->name() : "unknown");
    }

    void summarize() {
        std::uint64_t lines = 0;
        std::uint64_t faulty = 0;
        std::size_t names = 0;
        for (auto const& [id, one] : summaries_)
            names = std::max(names, width(nameOf(id)));
        for (auto const& [id, one] : summaries_) {
            lines += one.lines;
            faulty += one.faulty;
            if (one.faulty == 0)
                continue;
            auto text = style_.name(padded(nameOf(id), names)) + "  " + std::to_string(one.faulty) +
                        " of " + counted(one.lines, "message", "messages") + ':';
            for (std::size_t rule = 0; rule < ruleCount; ++rule)
                if (one.findings[rule] > 0)
                    text += "  " + std::string(ruleNames[rule]) + ' ' +
                            std::to_string(one.findings[rule]);
            out_.write(text + '\n');
        }
        out_.write(counted(lines, "line", "lines") + ", " +
                   (faulty == 0 ? "no findings" : std::to_string(faulty) + " with findings") +
                   '\n');
    }

    void summarizeAsJson() {
        for (auto const& [id, one] : summaries_) {
            JsonObject row;
            JsonObject counts;
            for (std::size_t rule = 0; rule < ruleCount; ++rule)
                if (one.findings[rule] > 0)
                    counts.add(ruleNames[rule], one.findings[rule]);
            if (id)
                row.add("summary", hexadecimal(*id));
            else
                row.addNull("summary");
            row.add("lines", one.lines).add("faulty", one.faulty);
            row.addJson("findings", counts.text());
            out_.write(row.text() + '\n');
        }
    }

    Options const& options_;
    Classes const& classes_;
    Output& out_;
    Style const style_ = Style::ofStandardOutput();
    CapturedCout printed_;
    std::map<std::optional<unsigned long long>, Summary> summaries_;
    bool anyFinding_ = false;
};

} // namespace

void addLintCommand(CLI::App& app, Action& chosen) {
    auto const options = std::make_shared<Options>();
    auto* const command = app.add_subcommand(
        "lint", "Reports problems that peers would have with a log, counted by id");
    command->add_flag("--json", options->json,
                      "Print one JSON object per finding, then one per id");
    command->add_flag("--quiet", options->quiet, "Print only the summary");
    options->bound.addOption(*command);
    options->filter.addOptions(*command);
    addFiles(*command, options->files);
    command->footer(
        "The rules:\n"
        "  no-message   the line is not JSON, or not a message\n"
        "  unknown-id   no class is registered for the id, or the id is not allowed there\n"
        "  absent       a required key is missing\n"
        "  wrong-value  a value of the wrong type, or a number that does not fit\n"
        "  unknown-key  no field has this key, which may be misspelled\n"
        "  literal      a word or number without a defined meaning\n"
        "  rounded      an integer that JavaScript, which only has doubles, would round\n"
        "  invalid      an attribute whose value violates its own limits\n"
        "  more         the number of findings beyond the first 4096 of a message\n"
        "\n"
        "With --json a finding has \"file\", \"line\", \"id\", \"rule\", \"path\", \"problem\" "
        "and\n"
        "\"found\". At the end, each id has an object with the id as \"summary\" (null for lines\n"
        "without one), \"lines\", \"faulty\" and \"findings\", the count of each rule.\n"
        "\n"
        "Examples:\n"
        "  tolvmsg lint session.ndjson\n"
        "  tolvmsg lint --quiet --family App *.ndjson\n"
        "  tolvmsg lint --json session.ndjson | jq -r 'select(.rule == \"rounded\") | .path'\n"
        "\n"
        "Exit status: 0 no findings; 1 findings; 2 wrong usage, or unreadable file;\n"
        "3 the output cannot be written.");
    command->callback([&chosen, options] {
        chosen = [options](Output& out) {
            if (options->files.empty())
                options->files.emplace_back("-");
            Classes const classes;
            options->filter.resolve(classes);
            return Linter(*options, classes, out).run();
        };
    });
}

} // namespace Tolv::Tool
