#include <bit>
#include <cstdint>
#include <string>

#include "number_text.h"
#include "trace_output.h"

namespace Tolv::Tool {

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

} // namespace Tolv::Tool
