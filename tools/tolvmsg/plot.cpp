#include <memory>
#include <string>
#include <utility>

#include <CLI/CLI.hpp>
#include <sys/ioctl.h>
#include <unistd.h>

#include "commands.h"
#include "gnuplot.h"
#include "output_file.h"
#include "plot_script.h"
#include "text.h"
#include "trace_choice.h"

namespace Tolv::Tool {

namespace {

struct Options {
    TraceChoice choice;
    std::string output;
    bool terminal = false;
    std::pair<unsigned int, unsigned int> size; ///< 0: the default
};

Canvas canvasOf(Options const& options, bool twoPanels) {
    Canvas canvas{Canvas::Kind::terminal, 79, twoPanels ? 40U : 24U};
    if (options.terminal) {
        winsize window{};
        if (::ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) == 0 && window.ws_col > 0 &&
            window.ws_row > 1)
            canvas = {canvas.kind, window.ws_col, window.ws_row - 1U};
    } else {
        canvas = {options.output.ends_with(".svg") ? Canvas::Kind::svg : Canvas::Kind::png, 1000,
                  twoPanels ? 900U : 550U};
    }
    if (options.size.first > 0)
        return {canvas.kind, options.size.first, options.size.second};
    return canvas;
}

int plot(Options& options, Output& standardOutput) {
    if (options.terminal && !options.output.empty())
        throw UsageError("--terminal and --output exclude each other");
    if (options.output.empty())
        options.terminal = options.terminal || ::isatty(STDOUT_FILENO) == 1;
    else if (!options.output.ends_with(".svg") && !options.output.ends_with(".png"))
        throw UsageError("--output " + word(options.output) + " must end with .svg or .png");
    if (!options.terminal && options.output.empty())
        throw UsageError(
            "no output chosen: use --output FILE.svg, --output FILE.png or --terminal");
    Classes const classes;
    auto const trace = options.choice.find(classes);
    if (!trace)
        return nothingFound;
    if (trace->samples.size() == 0)
        throw UsageError("the trace in line " + std::to_string(trace->line) + " is empty");

    auto const* const known = trace->id ? classes.find(*trace->id) : nullptr;
    auto title = (known != nullptr ? known->name() + ", " : std::string()) + "line " +
                 std::to_string(trace->line) + ", " +
                 counted(trace->samples.size(), "sample", "samples");
    if (auto const segments = trace->segments.size(); segments > mostSegmentsDrawn)
        title += ", the first " + std::to_string(mostSegmentsDrawn) + " of " +
                 std::to_string(segments) + " segments";
    auto const picture =
        runGnuplot(plotScript(*trace, title, canvasOf(options, trace->samples.isComplex)));
    if (options.terminal) {
        standardOutput.write(picture);
        return success;
    }
    OutputFile file(options.output);
    file.output().write(picture);
    file.close();
    return success;
}

} // namespace

void addPlotCommand(CLI::App& app, Action& chosen) {
    auto const options = std::make_shared<Options>();
    auto* const command =
        app.add_subcommand("plot", "Draws a trace as SVG, as PNG or in the terminal");
    command->add_option("--output", options->output, "Picture file to write: .svg or .png")
        ->option_text("FILE");
    command->add_flag("--terminal", options->terminal,
                      "Draw with characters; the default on a terminal");
    command
        ->add_option("--size", options->size,
                     "Pixels, or columns and lines (default 1000 by 550, or the terminal's)")
        ->check(CLI::Range(20U, 10000U))
        ->option_text("WIDTH HEIGHT");
    options->choice.addOptions(*command);
    command->footer(
        "Draws the first trace among the messages that match the filters. The y axis shows the\n"
        "name and unit of the attribute, the x axis the index of the sample. Segments are shaded;\n"
        "in a terminal their starts are marked. Complex samples are drawn as magnitude and phase.\n"
        "A sample that is not a finite number leaves a gap.\n"
        "Requires gnuplot (Debian: gnuplot-nox).\n"
        "\n"
        "Examples:\n"
        "  tolvmsg plot session.ndjson\n"
        "  tolvmsg plot --line 7 --output trace.png session.ndjson\n"
        "  tolvmsg plot --id ComplexTraceMessage --from scope --output t.svg session.ndjson\n"
        "  tolvmsg plot --path 'Data.Messages[2].Data.trace' session.ndjson\n"
        "\n"
        "Exit status: 0 success; 1 no such trace; 2 wrong usage, unreadable file, or no gnuplot;\n"
        "3 the output cannot be written.");
    command->callback(
        [&chosen, options] { chosen = [options](Output& out) { return plot(*options, out); }; });
}

} // namespace Tolv::Tool
