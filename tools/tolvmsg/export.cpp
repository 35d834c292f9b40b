#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include "commands.h"
#include "output_file.h"
#include "trace_choice.h"
#include "trace_output.h"

namespace Tolv::Tool {

namespace {

struct Options {
    TraceChoice choice;
    std::string format = "csv";
    std::string output = "-";
    std::pair<double, double> x; ///< start and step; a step of 0 writes the index
};

int exportTrace(Options& options, Output& standardOutput) {
    auto const isRaw = options.format == "raw";
    if (isRaw && options.x.second != 0)
        throw UsageError("--x does not apply to --format raw");
    if (isRaw && options.output == "-" && ::isatty(STDOUT_FILENO) == 1)
        throw UsageError("raw samples cannot be written to a terminal; use --output FILE");
    auto const trace = options.choice.find(Classes());
    if (!trace)
        return nothingFound;
    std::optional<OutputFile> file;
    if (options.output != "-")
        file.emplace(options.output);
    auto& out = file ? file->output() : standardOutput;
    if (isRaw)
        writeRaw(trace->samples, out);
    else
        writeCsv(*trace, options.x, out);
    if (file)
        file->close();
    return success;
}

} // namespace

void addExportCommand(CLI::App& app, Action& chosen) {
    auto const options = std::make_shared<Options>();
    auto* const command = app.add_subcommand("export", "Writes a trace as CSV or raw numbers");
    command->add_option("--format", options->format, "csv (default) or raw")
        ->check(CLI::IsMember({"csv", "raw"}))
        ->option_text("FORMAT");
    command->add_option("--output", options->output, "File to write (default: standard output)")
        ->option_text("FILE");
    command
        ->add_option("--x", options->x,
                     "Write a column x (START, START+STEP, ...) instead of the index")
        ->option_text("START STEP");
    options->choice.addOptions(*command);
    command->footer(
        "Writes the first trace among the messages that match the filters.\n"
        "csv has a header, \"index,value\" or, for complex samples, \"index,real,imag\", and\n"
        "numbers that read back exactly; booleans are 0 and 1.\n"
        "raw writes each sample as a little-endian float64; real and imaginary parts alternate.\n"
        "\n"
        "Examples:\n"
        "  tolvmsg export session.ndjson >trace.csv\n"
        "  tolvmsg export --id ComplexTraceMessage --from scope session.ndjson\n"
        "  tolvmsg export --line 7 --x -1e-3 2e-6 --output t.csv session.ndjson\n"
        "  tolvmsg export --format raw --output t.f64 session.ndjson\n"
        "  python3 -c 'import array; print(array.array(\"d\", open(\"t.f64\", \"rb\").read()))'\n"
        "\n"
        "Exit status: 0 success; 1 no such trace; 2 wrong usage, or unreadable file;\n"
        "3 the output cannot be written.");
    command->callback([&chosen, options] {
        chosen = [options](Output& out) { return exportTrace(*options, out); };
    });
}

} // namespace Tolv::Tool
