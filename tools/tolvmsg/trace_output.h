#pragma once

#include <utility>

#include "output.h"
#include "trace_search.h"

namespace Tolv::Tool {

/// Writes the samples as CSV, with a line of names and one a sample.
/// @param x start and step of the first column; a step of 0: it is the index
/// @throws OutputLost
void writeCsv(Trace const& trace, std::pair<double, double> const& x, Output& out);

/// Writes the samples as float64, little-endian; real and imaginary part take turns.
/// @throws OutputLost
void writeRaw(Samples const& samples, Output& out);

} // namespace Tolv::Tool
