// Runs the examples of docs/guide and compares what they print with what the guide shows.
#include <algorithm>
#include <atomic>
#include <functional>
#include <iostream>
#include <map>
#include <sstream>
#include <thread>

#include <tolv/messages.h>
#include <gtest/gtest.h>

using namespace Tolv::Msgs;
using namespace Tolv::MetaData;

namespace {

/// Captures standard output during its lifetime.
class Printed {
public:
    Printed() : before_(std::cout.rdbuf(text_.rdbuf())) { format_.copyfmt(std::cout); }
    Printed(Printed const&) = delete;
    Printed& operator=(Printed const&) = delete;
    ~Printed() {
        std::cout.rdbuf(before_);
        std::cout.copyfmt(format_);
        EXPECT_EQ(text_.str(), "") << "the page does not show this";
    }

    /// What was printed since the last call.
    void expect(std::string const& shown) {
        EXPECT_EQ(text_.str(), shown);
        text_.str("");
    }

private:
    std::ostringstream text_;
    std::streambuf* before_;
    std::ios format_{nullptr};
};

#include "guide.inc" // the examples, as tests

} // namespace
