#include <bit>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>
#include <unistd.h>

#include "commands.h"
#include "number_text.h"
#include "output_file.h"
#include "trace_choice.h"

namespace Tolv::Tool {

namespace {

struct Options {
    TraceChoice choice;
    std::string format = "csv";
    std::string output = "-";
    std::pair<double, double> x; ///< start and step; a step of 0: the index
};

void writeCsv(Trace const& trace, std::pair<double, double> const& x, Output& out) {
    auto const& samples = trace.samples;
    auto const text = [&](double value) {
        return samples.isBoolean ? std::string(value != 0 ? "1" : "0") : numberText(value);
    };
    out.write(x.second == 0 ? "index" : "x");
    out.write(samples.isComplex ? ",real,imag\n" : ",value\n");
    for (std::size_t i = 0; i < samples.size(); ++i) {
        auto row = x.second == 0 ? std::to_string(i)
                                 : numberText(x.first + static_cast<double>(i) * x.second);
        row.append(",").append(text(samples.real[i]));
        if (samples.isComplex)
            row.append(",").append(text(samples.imaginary[i]));
        out.write(row.append("\n"));
    }
}

void writeRaw(Samples const& samples, Output& out) {
    auto const write = [&out](double value) {
        auto bits = std::bit_cast<std::uint64_t>(value);
        std::string bytes;
        for (int i = 0; i < 8; ++i, bits >>= 8U)
            bytes.push_back(static_cast<char>(bits & 0xFFU));
        out.write(bytes);
    };
    for (std::size_t i = 0; i < samples.size(); ++i) {
        write(samples.real[i]);
        if (samples.isComplex)
            write(samples.imaginary[i]);
    }
}

int exportTrace(Options& options, Output& standardOutput) {
    auto const isRaw = options.format == "raw";
    if (isRaw && options.x.second != 0)
        throw UsageError("raw samples have no x; leave --x out");
    if (isRaw && options.output == "-" && ::isatty(STDOUT_FILENO) == 1)
        throw UsageError("raw samples are not for a terminal; give --output FILE");
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
    auto* const command = app.add_subcommand("export", "Writes a trace as CSV or as raw numbers");
    command->add_option("--format", options->format, "csv (default) or raw")
        ->check(CLI::IsMember({"csv", "raw"}))
        ->option_text("FORMAT");
    command->add_option("--output", options->output, "File to write; default: the standard output")
        ->option_text("FILE");
    command
        ->add_option("--x", options->x, "A column x instead of the index: START, START+STEP, ...")
        ->option_text("START STEP");
    options->choice.addOptions(*command);
    command->footer(
        "The first trace is taken of the messages that the filters leave.\n"
        "csv has a line of names, \"index,value\" or, for complex samples, \"index,real,imag\",\n"
        "and numbers that are the same when read again; truth values are 0 and 1.\n"
        "raw is each sample as a float64, little-endian; real and imaginary part take turns.\n"
        "\n"
        "Examples:\n"
        "  tolvmsg export session.ndjson >trace.csv\n"
        "  tolvmsg export --id ComplexTraceMessage --from scope session.ndjson\n"
        "  tolvmsg export --line 7 --x -1e-3 2e-6 --output t.csv session.ndjson\n"
        "  tolvmsg export --format raw --output t.f64 session.ndjson\n"
        "  python3 -c 'import numpy; print(numpy.fromfile(\"t.f64\", \"<f8\").mean())'\n"
        "\n"
        "Exit status: 0 written; 1 there is no such trace; 2 wrong usage, or a file that cannot\n"
        "be read; 3 the output cannot be written.");
    command->callback([&chosen, options] {
        chosen = [options](Output& out) { return exportTrace(*options, out); };
    });
}

} // namespace Tolv::Tool
