#include <limits>
#include <locale>
#include <sstream>
#include <string>

#include <boost/lexical_cast.hpp>
#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/structs/inventory.h>
#include <tolv/msgs/structs/selftest.h>
#include <tolv/msgs/structs/services.h>

#include "support/trees.h"

namespace Tolv::Msgs::Structs {
namespace {

using namespace Tolv::Testing;

constexpr auto largest = std::numeric_limits<unsigned long long>::max();

TEST(FilesystemSpace, NumbersAreText) {
    FilesystemSpace space;
    space.setCapacity(largest);
    space.setFree(0);
    space.setAvailable(1024);
    EXPECT_EQ(written(space),
              R"({"capacity":"18446744073709551615","free":"0","available":"1024"})");
    EXPECT_EQ(space.getCapacity(), largest);
    EXPECT_EQ(space.getFree(), 0U);
    EXPECT_EQ(space.getAvailable(), 1024U);

    readInto(space, R"({"capacity":"","free":"007"})");
    EXPECT_EQ(space.getFree(), 7U);
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { (void)space.getAvailable(); }),
              "Tolv::MetaData::Reflector::operator()(): available is not initialized in "
              "Structs::FilesystemSpace");
    space.setAvailable(5);
    EXPECT_EQ(space.getAvailable(), 5U);
}

TEST(FilesystemSpace, TextThatIsNoNumber) {
    for (auto const* const text : {"", " ", "many", "5 ", " 5", "5GB", "0x5", "5.0", "1,024",
                                   "18446744073709551616", "+", "5\n"}) {
        FilesystemSpace space;
        space.free = text;
        EXPECT_EQ(thrownBy<boost::bad_lexical_cast>([&] { (void)space.getFree(); }),
                  "bad lexical cast: source type value could not be interpreted as target")
            << text;
    }
    EXPECT_THROW((void)FilesystemSpace().getCapacity(), std::bad_cast)
        << "can be caught without Boost";
}

/// Sets a global locale with grouped digits.
class GroupedDigits {
    struct Grouping : std::numpunct<char> {
        [[nodiscard]] std::string do_grouping() const override { return "\3"; }
        [[nodiscard]] char do_thousands_sep() const override { return '\''; }
        [[nodiscard]] char do_decimal_point() const override { return ','; }
    };

public:
    GroupedDigits() : before_(std::locale::global(std::locale(std::locale(), new Grouping))) {}
    GroupedDigits(GroupedDigits const&) = delete;
    GroupedDigits& operator=(GroupedDigits const&) = delete;
    ~GroupedDigits() { std::locale::global(before_); }

private:
    std::locale before_;
};

TEST(FilesystemSpace, GlobalLocaleGroupsDigits) {
    FilesystemSpace space;
    {
        GroupedDigits const grouped;
        space.setCapacity(1234567);
        space.setFree(999);
        EXPECT_EQ(space.capacity(), "1'234'567");
        EXPECT_EQ(space.getCapacity(), 1234567U);
        EXPECT_EQ(space.free(), "999");
        space.available = "1234567";
        EXPECT_EQ(space.getAvailable(), 1234567U) << "digits need not be grouped";
        space.available = "12'34";
        EXPECT_THROW((void)space.getAvailable(), boost::bad_lexical_cast) << "but then rightly";
    }
    EXPECT_THROW((void)space.getCapacity(), boost::bad_lexical_cast);
}

TEST(Records, GlobalLocaleChangesNothingElse) {
    GroupedDigits const grouped;
    EXPECT_EQ(written(GPS(1234.5, 0, 0, 1000000, 1000, GPS::noFix)),
              R"({"Latitude":1234.5,"Longitude":0.0,"Altitude":0.0,"Time":1000000,)"
              R"("Satellites":1000,"Status":0})");
    std::ostringstream stream;
    stream << static_cast<Slot>(1000);
    EXPECT_EQ(stream.str(), "1000");
    EXPECT_EQ(thrownBy<Exception::InvalidEnumValue>(
                  [] { (void)SlotEnums.literal(static_cast<Slot>(-1000)); }),
              "-1000");
    EXPECT_EQ(thrownBy<Exception::InvalidEnumValue>([] { SelftestData().state = 1000; }),
              "SelftestData::state = 1000");
}

} // namespace
} // namespace Tolv::Msgs::Structs
