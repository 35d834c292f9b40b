#pragma once

#include <utility>

#include "output.h"
#include "trace_search.h"

namespace Tolv::Tool {

/// Writes the samples as CSV: a header line and one line per sample.
/// @param x start and step of the first column; a step of 0 writes the index instead
/// @throws OutputLost
void writeCsv(Trace const& trace, std::pair<double, double> const& x, Output& out);

/// Writes the samples as little-endian float64; real and imaginary parts alternate.
/// @throws OutputLost
void writeRaw(Samples const& samples, Output& out);

} // namespace Tolv::Tool
