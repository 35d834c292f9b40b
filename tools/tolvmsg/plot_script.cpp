#include <algorithm>
#include <cmath>
#include <complex>
#include <limits>
#include <numbers>

#include "gnuplot.h"
#include "number_text.h"
#include "plot_script.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

constexpr std::size_t mostLabelBytes = 60;
constexpr std::size_t mostSteps = 2000; ///< across the width of the picture
constexpr std::size_t fewSamples = 64;  ///< up to this number, each sample is drawn as a point

struct Panel {
    std::string label;
    std::vector<double> values;
    char const* axis = "set yrange [*:*]\nset ytics autofreq\n";
};

constexpr char const* truthAxis = "set yrange [-0.1:1.1]\nset ytics 1\n";
constexpr char const* phaseAxis = "set yrange [-180:180]\nset ytics 90\n";
constexpr char const* anyAxis = "set yrange [-1:1]\nset ytics autofreq\n";

/// Whether gnuplot can draw the number; it treats very large numbers as infinite.
bool isDrawable(double y) { return std::abs(y) <= std::numeric_limits<double>::max() / 4; }

std::string labelled(std::string const& name, std::string const& unit) {
    return unit.empty() ? name : name + " (" + unit + ')';
}

std::vector<Panel> panelsOf(Trace const& trace) {
    auto const name = trace.name.empty() ? "value" : unquoted(trace.name, mostLabelBytes);
    auto const unit = unquoted(trace.unit, mostLabelBytes);
    auto const& samples = trace.samples;
    if (!samples.isComplex)
        return {samples.isBoolean ? Panel{name, samples.real, truthAxis}
                                  : Panel{labelled(name, unit), samples.real}};
    if (samples.isBoolean)
        return {{name + ", first", samples.real, truthAxis},
                {name + ", second", samples.imaginary, truthAxis}};
    Panel magnitude{labelled("|" + name + "|", unit), {}};
    Panel phase{"phase (°)", {}, phaseAxis};
    for (std::size_t i = 0; i < samples.size(); ++i) {
        magnitude.values.push_back(std::abs(samples[i]));
        phase.values.push_back(std::arg(samples[i]) * 180 / std::numbers::pi);
    }
    return {std::move(magnitude), std::move(phase)};
}

std::string row(std::size_t x, double y) {
    return std::to_string(x) + ' ' + (isDrawable(y) ? numberText(y) : "NaN") + '\n';
}

/// The lowest and the highest value of each step, in the order of the samples.
std::string rowsOf(std::vector<double> const& values) {
    auto const step = std::max<std::size_t>(1, values.size() / mostSteps);
    std::string rows;
    for (std::size_t begin = 0; begin < values.size(); begin += step) {
        auto const end = std::min(begin + step, values.size());
        auto lowest = begin;
        auto highest = begin;
        for (auto i = begin; i < end; ++i) {
            if (!isDrawable(values[i]))
                continue;
            if (!isDrawable(values[lowest]) || values[i] < values[lowest])
                lowest = i;
            if (!isDrawable(values[highest]) || values[i] > values[highest])
                highest = i;
        }
        rows += row(std::min(lowest, highest), values[std::min(lowest, highest)]);
        if (lowest != highest)
            rows += row(std::max(lowest, highest), values[std::max(lowest, highest)]);
    }
    return rows;
}

/// Start and end of each segment, clipped to the trace.
std::string segmentRows(Trace const& trace) {
    std::string rows;
    std::size_t count = 0;
    for (auto const& [offset, length] : trace.segments) {
        if (offset >= trace.samples.size() || length == 0 || ++count > mostSegmentsDrawn)
            continue;
        auto const end =
            offset + std::min<unsigned long long>(length, trace.samples.size() - offset);
        rows += std::to_string(offset) + ' ' + std::to_string(end - 1) + '\n';
    }
    return rows;
}

std::string terminal(Canvas const& canvas) {
    auto const size = " size " + std::to_string(canvas.width) + ',' + std::to_string(canvas.height);
    switch (canvas.kind) {
    case Canvas::Kind::svg:
        return "svg" + size + " noenhanced background \"white\"";
    case Canvas::Kind::png:
        return "pngcairo" + size + " noenhanced background \"white\"";
    case Canvas::Kind::terminal:
        return "dumb" + size + " mono noenhanced";
    }
    return {};
}

} // namespace

std::string plotScript(Trace const& trace, std::string const& title, Canvas const& canvas) {
    auto const panels = panelsOf(trace);
    auto const count = trace.samples.size();
    auto const segments = segmentRows(trace);
    auto const inTerminal = canvas.kind == Canvas::Kind::terminal;

    std::string script = "set encoding utf8\nset terminal " + terminal(canvas) + '\n';
    if (!segments.empty())
        script += "$segments << EOD\n" + segments + "EOD\n";
    for (std::size_t i = 0; i < panels.size(); ++i)
        script += "$panel" + std::to_string(i) + " << EOD\n" + rowsOf(panels[i].values) + "EOD\n";
    script += "set key off\nset y2range [0:1]\nset style fill solid 0.15 noborder\n";
    script += inTerminal ? "" : "set grid\n";
    script += count > 1 ? "set xrange [0:" + std::to_string(count - 1) + "]\n"
                        : std::string("set xrange [-1:1]\n");
    script += "set multiplot layout " + std::to_string(panels.size()) + ",1\n";
    for (std::size_t i = 0; i < panels.size(); ++i) {
        auto const& values = panels[i].values;
        auto above = i == 0 ? title : std::string();
        if (inTerminal) // which has no room for a label at the side
            above += (above.empty() ? "" : ": ") + panels[i].label;
        script += "set title " + gnuplotString(above) + " noenhanced\n";
        script += "set xlabel " + gnuplotString(i + 1 == panels.size() ? "sample" : "") + '\n';
        script += "set ylabel " + gnuplotString(panels[i].label) + " noenhanced\n";
        auto const isEmpty =
            std::none_of(values.begin(), values.end(), [](double y) { return isDrawable(y); });
        script +=
            isEmpty ? anyAxis : panels[i].axis; // gnuplot cannot choose the range of an empty panel
        script += "plot ";
        if (!segments.empty())
            script += inTerminal ? "$segments using 1:(1) axes x1y2 with impulses, "
                                 : "$segments using 1:(0.5):1:2:(0):(1) axes x1y2 with boxxyerror "
                                   "lc rgb \"#3060c0\", $segments using 1:(1) axes x1y2 with "
                                   "impulses lc rgb \"#3060c0\" lw 1, ";
        script += "$panel" + std::to_string(i) + " using 1:2 with " +
                  (trace.samples.isBoolean ? "steps"
                   : count <= fewSamples   ? "linespoints pt 7 ps 0.5"
                                           : "lines") +
                  " lc rgb \"#c03020\"\n";
    }
    return script + "unset multiplot\n";
}

} // namespace Tolv::Tool
