#pragma once

#include <string>

#include "trace_choice.h"

namespace Tolv::Tool {

constexpr std::size_t mostSegmentsDrawn = 4000;

/// What a trace is drawn on.
struct Canvas {
    enum class Kind { svg, png, terminal };
    Kind kind = Kind::svg;
    unsigned int width = 0; ///< pixels; of a terminal, columns
    unsigned int height = 0;
};

/// The script with which gnuplot draws a trace: complex samples as magnitude and phase, pairs of
/// truth values as first and second, in two panels below each other; segments are shaded, in a
/// terminal marked at their starts. A long trace is thinned to its extremes, which look the same.
std::string plotScript(Trace const& trace, std::string const& title, Canvas const& canvas);

} // namespace Tolv::Tool
