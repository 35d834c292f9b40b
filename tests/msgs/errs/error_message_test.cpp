#include <string>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/errs/messages.h>
#include <tolv/msgs/utils/may_contain_error.h>

#include "support/messages.h"

namespace Tolv::Msgs::Errs {
namespace {

using namespace Tolv::Testing;
using Level = GenericErrorData::ErrorLevel;
using Category = GenericErrorData::ErrorCategory;

constexpr auto empty =
    R"({"ErrorLevel":0,"ErrorCategory":0,"ErrorNumber":0,"ErrorDescription":"","Timestamp":""})";
// Numbers that no enumerator names.
constexpr auto full = R"({"ErrorLevel":-2147483648,"ErrorCategory":2147483647,"ErrorNumber":-7,)"
                      R"("ErrorDescription":"zu heiß","Timestamp":"2024-02-30 25:61"})";

TEST(GenericErrorData, Constructor) {
    EXPECT_EQ(written(GenericErrorData(Level{}, Category{}, 0, "", "")), empty);
    EXPECT_EQ(written(GenericErrorData(Level::error, Category::communication, -113, "no answer",
                                       "12:00")),
              R"({"ErrorLevel":2,"ErrorCategory":5,"ErrorNumber":-113,)"
              R"("ErrorDescription":"no answer","Timestamp":"12:00"})");
}

TEST(GenericErrorData, KeepsNumbersThatNoEnumeratorNames) {
    GenericErrorData data;
    readInto(data, full);
    EXPECT_EQ(static_cast<int>(data.level()), -2147483648LL);
    EXPECT_EQ(static_cast<int>(data.category()), 2147483647);
    EXPECT_EQ(written(*sent(GenericErrorMessage(data))), written(GenericErrorMessage(data)));
}

TEST(GenericErrorData, IsCopiedOnlyWhole) {
    for (auto const* const key :
         {"ErrorLevel", "ErrorCategory", "ErrorNumber", "ErrorDescription", "Timestamp"}) {
        GenericErrorData data;
        auto tree = parsed(full);
        tree.makeObject(0).erase(key);
        data.copyFromMetaData(tree);
        EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { GenericErrorData const copy(data); }),
                  std::string("Tolv::MetaData::Reflector::operator()(): ") + key +
                      " is not initialized in Errs::GenericErrorData");
        GenericErrorData assigned;
        readInto(assigned, full);
        assigned = data; // sets required fields to zero
        auto const rewritten = parsed(written(assigned));
        EXPECT_EQ(assigned.members().size(), rewritten.object().size());
    }
}

TEST(ErrorMessage, SaysItsType) {
    EXPECT_EQ(GenericErrorMessage().errorType(), 1);
    EXPECT_EQ(ErrorMessage(0x0005000200030004ULL, {}, {}).errorType(), 4);
    auto const read = received<ErrorMessage>(messageText(0x0005000000000001, full));
    ASSERT_NE(read, nullptr);
    EXPECT_EQ(read->errorType(), 1);
}

TEST(MayContainError, MakesAMessageOfAReport) {
    Utils::MayContainError record;
    GenericErrorData const report(Level::warning, Category::hardware, 3, "fan", "");
    record.setError(report);
    EXPECT_TRUE(record.hasError());
    EXPECT_EQ(written(record),
              R"({"Error":)" + messageText(0x0005000000000001, written(report)) + "}");
    auto const before = record.error.pointer();
    record.setError(GenericErrorData());
    EXPECT_NE(record.error.pointer(), before) << "others may hold the message";
}

} // namespace
} // namespace Tolv::Msgs::Errs
