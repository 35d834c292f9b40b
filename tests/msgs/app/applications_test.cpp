#include <tolv/msgs/app/applications.h>

#include <string>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/app/messages.h>

#include "support/captured_output.h"
#include "support/messages.h"
#include "support/records.h"

namespace Tolv::Msgs::App {
namespace {

using namespace Tolv::Testing;
using Icon = AppPropertiesResponseData::IconData;
using Resource = AppPropertiesResponseData::ResourceDefinition;

TEST(Applications, Texts) {
    expectTexts<AppIdData>(R"({"AppID":[],"UUID":"","AppName":""})",
                           R"({"AppID":["a","b"],"UUID":"c","AppName":"d"})");
    expectTexts<ResultData>(
        R"({"Result":false,"UUID":""})",
        R"({"Error":{"MessageID":1407374883553281,"Data":{"ErrorLevel":1,"ErrorCategory":2,)"
        R"("ErrorNumber":3,"ErrorDescription":"a","Timestamp":"b"}},"Result":true,"UUID":"c"})");
    expectTexts<InstalledAppData>(R"({"Name":"","ID":""})", R"({"Name":"a","ID":"b"})");
    expectTexts<InstalledAppsResponseData>(
        "{}", R"({"Apps":[{"Name":"a","ID":"b"},{"Name":"c","ID":"d"}]})");
    expectTexts<InstantiateAppCommandData>(R"({"Name":"","ID":""})", R"({"Name":"a","ID":"b"})");
    expectTexts<ConnectToAppCommandData>(R"({"UUID":""})", R"({"UUID":"a"})");
    expectTexts<ConnectToAppResultData>(R"({"Port":0,"Result":false,"UUID":""})",
                                        R"({"Port":-2147483648,"Result":true,"UUID":"a"})");
    expectTexts<AppListData>(R"({"Applications":[]})", R"({"Applications":[["a","b"],[],["c"]]})");
    expectTexts<AppLocationData>(R"({"AppInstallFromLocation":""})",
                                 R"({"AppInstallFromLocation":"http://host/a?b"})");
    expectTexts<Icon>(R"({"Type":"category","Image":"name"})", R"({"Type":"a","Image":"b"})");
    expectTexts<Resource>(
        R"({"Name":"","ID":"","Description":"","Required":true,"MatchingIDs":[]})",
        R"({"Name":"a","ID":"b","Description":"c","Required":false,"MatchingIDs":["d","e"]})");
    expectTexts<AppPropertiesResponseData>(
        R"({"Name":"","Description":"","Icon":{"Type":"category","Image":"name"},"Version":"",)"
        R"("RequiredResources":[]})",
        R"({"Name":"a","Description":"b","Icon":{"Type":"c","Image":"d"},"Version":"e",)"
        R"("RequiredResources":[{"Name":"f","ID":"g","Description":"h","Required":false,)"
        R"("MatchingIDs":["i"]}]})");
}

TEST(Applications, Constructors) {
    EXPECT_EQ(written(InstalledAppData("a", "b")), R"({"Name":"a","ID":"b"})");
    EXPECT_EQ(written(InstantiateAppCommandData("a", "b")), R"({"Name":"a","ID":"b"})");
    EXPECT_EQ(written(ConnectToAppCommandData("a")), R"({"UUID":"a"})");
    EXPECT_EQ(written(ConnectToAppResultData(false, 7)), R"({"Port":7,"Result":false,"UUID":""})");
    EXPECT_EQ(written(ConnectToAppResultData(true)), R"({"Port":0,"Result":true,"UUID":""})");
    EXPECT_EQ(written(ConnectToAppResultData(false)), R"({"Port":0,"Result":false,"UUID":""})");
    // A port alone is a success, 0 and 1 too.
    EXPECT_EQ(written(ConnectToAppResultData(5025)), R"({"Port":5025,"Result":true,"UUID":""})");
    EXPECT_EQ(written(ConnectToAppResultData(0)), R"({"Port":0,"Result":true,"UUID":""})");
    EXPECT_EQ(written(Icon("a", "b")), R"({"Type":"a","Image":"b"})");
    AppLocationData location;
    location.setLocation("a");
    EXPECT_EQ(location.location(), "a");
}

// The default of a type isn't that of a field: what did not read is zero in a copy.
TEST(Applications, CopiesOfWhatDidNotRead) {
    Icon icon;
    readInto(icon, "{}");
    EXPECT_EQ(written(icon), "{}");
    EXPECT_EQ(written(Icon(icon)), R"({"Type":"","Image":""})");

    Resource resource;
    readInto(resource, "{}");
    EXPECT_EQ(written(Resource(resource)),
              R"({"Name":"","ID":"","Description":"","Required":false})");

    // The record in the field "Icon" has its own.
    AppPropertiesResponseData properties;
    readInto(properties, R"({"Icon":{"Type":"a","Image":"b"}})");
    readInto(properties, "{}");
    EXPECT_EQ(written(AppPropertiesResponseData(properties)),
              R"({"Name":"","Description":"","Icon":{"Type":"category","Image":"name"},)"
              R"("Version":""})");
}

TEST(Applications, ResultThatLacksEveryKey) {
    auto const message =
        received<InstantiateAppResultMessage>(R"({"MessageID":844424930131986,"Data":{}})");
    ASSERT_NE(message, nullptr);
    auto const& result = message->payload();
    EXPECT_FALSE(result.hasError());
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { result.result(); }),
              "Tolv::MetaData::Reflector::operator()(): Result is not initialized");
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { result.uuid(); }),
              "Tolv::MetaData::Reflector::operator()(): UUID is not initialized");
    EXPECT_EQ(written(*message), R"({"MessageID":844424930131986,"Data":{}})");
}

TEST(Applications, FailureCarriesAWholeErrorMessage) {
    ResultData failed;
    failed.setError({Errs::GenericErrorData::ErrorLevel::error,
                     Errs::GenericErrorData::ErrorCategory::application, 12, "no such version",
                     "2026-01-01T00:00:00Z"});
    auto const read = sent(InstantiateAppResultMessage(failed, {"service"}, {"client"}));
    ASSERT_NE(read, nullptr);
    EXPECT_FALSE(read->payload().result());
    auto const error =
        std::dynamic_pointer_cast<Errs::GenericErrorMessage>(read->payload().error.pointer());
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->payload().errorDescription(), "no such version");
}

// The read of the record throws, so the message stays without payload, in silence.
TEST(Applications, ResultWithAWrongErrorLosesItsPayload) {
    for (auto const* const error : {R"({"MessageID":1407374883553290})",   // not registered
                                    R"({"MessageID":844424930131972})"}) { // a ping
        CapturedOutput const output;
        auto const message = received<InstantiateAppResultMessage>(
            messageText(0x0003000000000012,
                        R"({"Error":)" + std::string(error) + R"(,"Result":true,"UUID":"a"})"));
        ASSERT_NE(message, nullptr);
        EXPECT_FALSE(message->Data.initialized());
        EXPECT_EQ(written(*message), R"({"MessageID":844424930131986})");
        EXPECT_EQ(output.text(), "");
    }
    // What is no message at all is another matter.
    auto const message = received<InstantiateAppResultMessage>(
        messageText(0x0003000000000012, R"({"Error":"no","Result":true,"UUID":"a"})"));
    ASSERT_NE(message, nullptr);
    EXPECT_TRUE(message->payload().result());
    EXPECT_FALSE(message->payload().hasError());
}

TEST(Applications, ListsThatAreNone) {
    constexpr auto corrupt = "Exception MetaDat::ReflectorArray MetaData Array corrupt for ";
    InstalledAppsResponseData apps;
    readInto(apps, R"({"Apps":[{"Name":"a","ID":"b"}]})");
    auto const before = written(apps);
    {
        CapturedOutput const output;
        readInto(apps, R"({"Apps":{"Name":"a","ID":"b"}})");
        EXPECT_EQ(output.text(),
                  "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n");
    }
    EXPECT_EQ(written(apps), before);

    AppListData list;
    for (auto const* const text : {R"({"Applications":["a"]})", R"({"Applications":[["a",1]]})",
                                   R"({"Applications":[["a"],null]})"}) {
        CapturedOutput const output;
        readInto(list, text);
        EXPECT_EQ(output.text(), std::string(corrupt) + "Applications\n");
        EXPECT_EQ(written(list), R"({"Applications":[]})");
    }

    // An entry that is a record takes what it finds.
    readInto(apps, R"({"Apps":[{"Name":3},{}]})");
    EXPECT_EQ(written(apps), R"({"Apps":[{"Name":"","ID":""},{"Name":"","ID":""}]})");
    EXPECT_EQ(apps.apps().size(), 2U);

    readInto(apps, "{}");
    EXPECT_FALSE(apps.apps.initialized());
    EXPECT_EQ(written(apps), "{}");
}

TEST(Applications, LocationIsThereOrNothingIs) {
    for (auto const* const data : {"", "{}", R"({"AppInstallFromLocation":null})",
                                   R"({"AppInstallFromLocation":["a"]})", "[]", "3"}) {
        SCOPED_TRACE(data);
        auto const message =
            received<InstallAppMessage>(messageText(InstallAppMessage::MsgID(), data));
        ASSERT_NE(message, nullptr);
        EXPECT_FALSE(message->Data.initialized());
        EXPECT_EQ(written(*message), messageText(InstallAppMessage::MsgID(), ""));
    }
}

} // namespace
} // namespace Tolv::Msgs::App
