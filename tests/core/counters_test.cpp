#include "support/counters.h"

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include "support/trees.h"

namespace Tolv::Testing {
namespace {

// Tests that expect a count of zero prove something only if the counters see what happens inside
// the libraries.
TEST(Counters, SeeIntoTheLibraries) {
    std::string const text = '"' + std::string(5000, 'x') + '"';
    MetaData::Element const number = parsed("1");

    Counted const count;
    {
        auto const tree = parsed(text);
        EXPECT_GE(count.allocations(), 1U);
        EXPECT_GE(count.blocks(), 1);
        EXPECT_GE(count.largestAllocation(), 5000U);
    }
    EXPECT_EQ(count.blocks(), 0);
    EXPECT_EQ(count.exceptions(), 0U);
    EXPECT_THROW((void)number.asBoolean(), Exception::InvalidParameter);
    EXPECT_EQ(count.exceptions(), 1U);
    EXPECT_EQ(count.blocks(), 0);
}

} // namespace
} // namespace Tolv::Testing
