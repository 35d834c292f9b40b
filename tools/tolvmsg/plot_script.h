#pragma once

#include <string>

#include "trace_choice.h"

namespace Tolv::Tool {

constexpr std::size_t mostSegmentsDrawn = 4000;

/// The output medium of a plot.
struct Canvas {
    enum class Kind { svg, png, terminal };
    Kind kind = Kind::svg;
    unsigned int width = 0; ///< pixels, or columns of a terminal
    unsigned int height = 0;
};

/// A gnuplot script that draws a trace. Complex samples (magnitude and phase) and pairs of booleans
/// (first and second) have two panels, one below the other. Segments are shaded; in a terminal only
/// their starts are marked. A long trace is reduced to its extremes, which looks the same.
std::string plotScript(Trace const& trace, std::string const& title, Canvas const& canvas);

} // namespace Tolv::Tool
