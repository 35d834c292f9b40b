#pragma once

#include <iostream>
#include <sstream>
#include <string>

namespace Tolv::Testing {

/// Takes what goes to `std::cout` as long as it lives.
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
