#pragma once

#include <iostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace Tolv::Tool {

/// Captures what the library prints on `std::cout` (see tolv/core/metadata/diagnostics.h) while
/// this object exists, so that it does not mix with the output of the tool, which writes to
/// standard output directly.
class CapturedCout {
public:
    CapturedCout() : before_(std::cout.rdbuf(&printed_)) {}
    CapturedCout(CapturedCout const&) = delete;
    CapturedCout& operator=(CapturedCout const&) = delete;
    ~CapturedCout() { std::cout.rdbuf(before_); }

    /// The lines printed since the last call.
    std::vector<std::string> takeLines() {
        std::vector<std::string> lines;
        if (printed_.view().empty())
            return lines;
        std::istringstream text(std::move(printed_).str());
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        return lines;
    }

private:
    std::stringbuf printed_{std::ios_base::out};
    std::streambuf* before_;
};

} // namespace Tolv::Tool
