#include <string>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/attrs/messages.h>

#include "msgs/attrs/judged.h"
#include "support/trees.h"

namespace Tolv::Msgs::Attrs {
namespace {

using Testing::judged;

using RangedDouble = AttrWithMetaData<double, RangedMetaData<double>>;
using RangedLong = AttrWithMetaData<long long, RangedMetaData<long long>>;
using Text = AttrWithMetaData<std::string, StringMetaData>;
using IntVector = AttrWithMetaData<std::vector<int>, IntVectorMetaData>;

constexpr char const* unset = "throws Tolv::MetaData::Reflector::operator()(): ";

struct Row {
    char const* data; ///< the payload as JSON
    std::string verdict;
};

template <class Payload, std::size_t N>
void judgeAll(Row const (&rows)[N]) {
    for (auto const& row : rows) {
        SCOPED_TRACE(row.data);
        Payload payload;
        Testing::readInto(payload, row.data);
        EXPECT_EQ(judged(payload), row.verdict);
    }
}

TEST(AttrValues, RangedDouble) {
    judgeAll<RangedDouble>({
        {R"({"d":1e300})", "valid"},
        {R"({"d":1e300,"AttributeMetaData":{}})", "valid"},
        {R"({"d":2,"AttributeMetaData":{"Minimum":2,"Maximum":3}})", "valid"},
        {R"({"d":3,"AttributeMetaData":{"Minimum":2,"Maximum":3}})", "valid"},
        {R"({"d":1.9999999999999998,"AttributeMetaData":{"Minimum":2,"Maximum":3}})",
         "value 1.9999999999999998 is below Minimum 2"},
        {R"({"d":7500000000,"AttributeMetaData":{"Minimum":9000,"Maximum":6000000000}})",
         "value 7.5e9 is above Maximum 6e9"},
        {R"({"d":-1e300,"AttributeMetaData":{"Maximum":3}})", "valid"},
        {R"({"d":"Infinity","AttributeMetaData":{"Minimum":3}})", "valid"},
        {R"({"d":"-Infinity","AttributeMetaData":{"Minimum":3}})",
         "value -Infinity is below Minimum 3"},
        {R"({"d":1e-7,"AttributeMetaData":{"Minimum":1e-6}})", "value 1e-7 is below Minimum 1e-6"},
        {R"({"d":-0.0,"AttributeMetaData":{"Minimum":0}})", "valid"},
        // Between two steps.
        {R"({"d":1.3,"AttributeMetaData":{"Minimum":0,"Step":1,"StepDimensionless":true}})",
         "valid"},
        // A NaN passes "Minimum" and fails "Maximum".
        {R"({"d":"NaN","AttributeMetaData":{"Minimum":3}})", "valid"},
        {R"({"d":"NaN","AttributeMetaData":{"Maximum":3}})",
         "value NaN cannot be compared with Maximum 3"},
        {R"({"d":1,"AttributeMetaData":{"Minimum":"NaN"}})", "valid"},
        {R"({"d":1,"AttributeMetaData":{"Maximum":"NaN"}})",
         "value 1 cannot be compared with Maximum NaN"},
        // The value is checked first, whatever the metadata.
        {R"({})", std::string(unset) + "d is not initialized in Attrs::AttrWithMetaData<double, "
                                       "Attrs::RangedMetaData<double>>"},
        {R"({"d":"x","AttributeMetaData":{"Minimum":3}})",
         std::string(unset) + "d is not initialized in Attrs::AttrWithMetaData<double, "
                              "Attrs::RangedMetaData<double>>"},
    });
}

TEST(AttrValues, RangedLong) {
    judgeAll<RangedLong>({
        // Beyond the precision of a double.
        {R"({"i":9007199254740993,"AttributeMetaData":{"Maximum":9007199254740992}})",
         "value 9007199254740993 is above Maximum 9007199254740992"},
        {R"({"i":9223372036854775807,"AttributeMetaData":{"Maximum":9223372036854775807}})",
         "valid"},
        {R"({"i":-1,"AttributeMetaData":{"Minimum":0}})", "value -1 is below Minimum 0"},
        {R"({"i":-1,"AttributeMetaData":{"Maximum":0}})", "valid"},
        {R"({"i":5,"AttributeMetaData":{"Minimum":9,"Maximum":1}})", "value 5 is below Minimum 9"},
        {R"({"i":1.5})", std::string(unset) +
                             "i is not initialized in Attrs::AttrWithMetaData<long long, "
                             "Attrs::RangedMetaData<long long>>"},
    });
}

TEST(AttrValues, OthersAreAlwaysValid) {
    judgeAll<AttrWithMetaData<bool, AttrMetaDataBase>>({{R"({})", "valid"}});
    judgeAll<BoolData>({{R"({"b":false})", "valid"}});
    judgeAll<AttrWithMetaData<std::complex<double>, RangedMetaData<std::complex<double>>>>({
        {R"({"dc":[9,9],"AttributeMetaData":{"Minimum":[0,0],"Maximum":[1,1]}})", "valid"},
        {R"({"AttributeMetaData":{"Minimum":[0,0]}})", "valid"},
    });
    judgeAll<AttrWithMetaData<double, NumericMetaData>>({{R"({"m":"NaN"})", "valid"}});
    judgeAll<AttrWithMetaData<double, NumericMeasMetaData>>(
        {{R"({"m":9,"AttributeMetaData":{"Minimum":0,"Maximum":1}})", "valid"}});
    judgeAll<AttrWithMetaData<double, NumericMeasMetaDataWithStatus>>(
        {{R"({"m":9,"AttributeMetaData":{"Minimum":0,"Maximum":1}})", "valid"}});
    // Neither samples nor segments are examined.
    using Trace = TraceWithSegmentsPayload<double, RangedMetaData<double>>;
    static_assert(std::is_base_of_v<isTrace, Trace>);
    judgeAll<Trace>({{R"({"AttributeMetaData":{"Maximum":1},"trace":[9],)"
                      R"("segments":[{"offset":5,"length":7},{"offset":0,"length":0}]})",
                      "valid"}});
}

TEST(AttrValues, IntVector) {
    judgeAll<IntVector>({
        {R"({"iv":[1,2,3]})", "valid"},
        {R"({"iv":[1,2,3],"AttributeMetaData":{"Name":"n"}})", "valid"},
        {R"({"iv":[1,2,3],"AttributeMetaData":{"MaxLength":3}})", "valid"},
        {R"({"iv":[1,2,3],"AttributeMetaData":{"MaxLength":2}})", "3 elements, MaxLength is 2"},
        {R"({"iv":[],"AttributeMetaData":{"MaxLength":0}})", "valid"},
        {R"({"iv":[1],"AttributeMetaData":{"MaxLength":0}})", "1 elements, MaxLength is 0"},
        {R"({"iv":7})", "valid"},
        {R"({"iv":7,"AttributeMetaData":{"MaxLength":2}})",
         std::string(unset) + "iv is not initialized in Attrs::AttrWithMetaData<std::vector<int>, "
                              "Attrs::IntVectorMetaData>"},
    });
}

TEST(AttrValues, Text) {
    judgeAll<Text>({
        {R"({"s":"anything"})", "valid"},
        {R"({"s":"anything","AttributeMetaData":{"PasswordField":true}})", "valid"},
        {R"({"s":"0123456789abcdef","AttributeMetaData":{"MaxLength":16}})", "valid"},
        {R"({"s":"0123456789abcdefg","AttributeMetaData":{"MaxLength":16}})",
         "17 bytes, MaxLength is 16"},
        // Bytes, not characters.
        {R"({"s":"éé","AttributeMetaData":{"MaxLength":3}})", "4 bytes, MaxLength is 3"},
        {R"({"s":"a","AttributeMetaData":{"MaxLength":0}})", "1 bytes, MaxLength is 0"},
        // The length is checked first, even if the expression is invalid.
        {R"({"s":"12","AttributeMetaData":{"MaxLength":1,"ValidCharacters":"("}})",
         "2 bytes, MaxLength is 1"},
        // The expression must match the whole value.
        {R"({"s":"12","AttributeMetaData":{"ValidCharacters":"[0-9]+"}})", "valid"},
        {R"({"s":"12a","AttributeMetaData":{"ValidCharacters":"[0-9]+"}})",
         R"(value "12a" does not match ValidCharacters "[0-9]+")"},
        {R"({"s":"12","AttributeMetaData":{"ValidCharacters":"[0-9]"}})",
         R"(value "12" does not match ValidCharacters "[0-9]")"},
        {R"({"s":"ab","AttributeMetaData":{"ValidCharacters":"a|ab"}})", "valid"},
        {R"({"s":"a+","AttributeMetaData":{"ValidCharacters":"[[:alpha:]]\\+"}})", "valid"},
        {R"({"s":"]-x","AttributeMetaData":{"ValidCharacters":"[]x-]{3}"}})", "valid"},
        {R"({"s":"a\u0000b","AttributeMetaData":{"ValidCharacters":"[^c]*"}})", "valid"},
        // Set and empty is not the same as unset.
        {R"({"s":"","AttributeMetaData":{"ValidCharacters":""}})", "valid"},
        {R"({"s":"a","AttributeMetaData":{"ValidCharacters":""}})",
         R"(value "a" does not match ValidCharacters "")"},
        {R"({"s":"quote\" bell\u0007 back\\slash","AttributeMetaData":{"ValidCharacters":"a"}})",
         R"(value "quote\" bell\x07 back\\slash" does not match ValidCharacters "a")"},
        {R"({"s":1,"AttributeMetaData":{"Name":"n"}})", "valid"},
        {R"({"s":1,"AttributeMetaData":{"MaxLength":9}})",
         std::string(unset) +
             "s is not initialized in Attrs::AttrWithMetaData<std::string, Attrs::StringMetaData>"},
    });
}

TEST(AttrValues, SentencesAreShortAndWellFormed) {
    Text text;
    text.editMetaData().validCharacters = std::string("x");
    struct {
        std::string value;
        std::string shown;
    } const rows[] = {
        {std::string(60, 'a'), std::string(60, 'a')},
        {std::string(61, 'a'), std::string(60, 'a') + "..."},
        // No character is split, and invalid UTF-8 is shown as bytes.
        {std::string(59, 'a') + "éa", std::string(59, 'a') + "..."},
        {std::string("a\xff"
                     "b\xc3"),
         "a\\xffb\\xc3"},
        {"a\xed\xa0\x80z", "a\\xed\\xa0\\x80z"},
    };
    for (auto const& row : rows) {
        text.value = row.value;
        EXPECT_EQ(judged(text), "value \"" + row.shown + "\" does not match ValidCharacters \"x\"");
    }
}

} // namespace
} // namespace Tolv::Msgs::Attrs
