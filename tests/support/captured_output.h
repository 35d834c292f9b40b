#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace Tolv::Testing {

/// Captures `std::cout` during its lifetime.
class CapturedOutput {
public:
    CapturedOutput() : before_(std::cout.rdbuf(taken_.rdbuf())) {}
    CapturedOutput(CapturedOutput const&) = delete;
    CapturedOutput& operator=(CapturedOutput const&) = delete;
    ~CapturedOutput() { std::cout.rdbuf(before_); }

    [[nodiscard]] std::string text() const { return taken_.str(); }

private:
    std::ostringstream taken_;
    std::streambuf* before_;
};

} // namespace Tolv::Testing
