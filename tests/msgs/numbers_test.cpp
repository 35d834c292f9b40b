#include <functional>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/messages.h>

#include "support/messages.h"

// The numbers of the families beside those of the attributes: which class each id stands for, and
// what a new message of it writes.
namespace Tolv::Msgs {
namespace {

using Testing::classOf;
using Testing::messageText;
using Testing::parsed;
using Testing::written;

struct Row {
    unsigned long long id;
    std::string data; ///< the text under "Data" of a new message; empty for none
    std::function<std::unique_ptr<Message>()> make;
    std::type_info const* type;
};

template <class M>
Row row(unsigned long long id, std::string data = "") {
    return {id, std::move(data), [] { return std::make_unique<M>(); }, &typeid(M)};
}

template <class Base, unsigned short number>
Row simple(unsigned long long id) {
    return row<SimpleMessageHelper<Base, number>>(id);
}

template <class Base, class Payload, unsigned short number>
Row payload(unsigned long long id, std::string data) {
    return row<PayloadMessageHelper<Base, Payload, number>>(id, std::move(data));
}

std::vector<Row> rows() {
    using App::AppMessage;
    using Communications::Forwarder::Base;
    using Excepts::CommonExceptionData;
    using Excepts::ExceptionMessage;
    using Notifs::AppNotification;
    using Notifs::AttrNotification;
    using Notifs::SystemNotification;
    using namespace App;
    using namespace Communications::Forwarder;

    std::string const appId = R"({"AppID":[],"UUID":"","AppName":""})";
    std::string const result = R"({"Result":false,"UUID":""})";
    std::string const what = R"({"what":""})";
    std::string const service =
        R"({"MsgKey":{"MessageID":0,"Sender":[],"Destination":[]},"Count":1,"ShortestDistance":0})";
    return {
        simple<Sys::SystemMessage, 1>(0x0001000000000001),
        simple<Sys::SystemMessage, 2>(0x0001000000000002),

        payload<Engine::StateMessage, Engine::TransitionData, 7>(0x0002000000010007,
                                                                 R"({"event":1,"param":[]})"),

        payload<AppMessage, Connect, 1>(
            0x0003000000000001, R"({"MaxVersion":1,"MinVersion":1,"BinaryTransmission":true})"),
        payload<AppMessage, Connected, 2>(
            0x0003000000000002,
            R"({"MaxVersion":1,"MinVersion":1,"VersionToUse":1,"BinaryTransmission":true})"),
        payload<AppMessage, PingData, 3>(
            0x0003000000000003,
            R"({"MaxVersion":0,"MinVersion":0,"MessageType":0,"SupportsBinary":false})"),
        simple<AppMessage, 4>(0x0003000000000004),
        payload<AppMessage, QmlFileListRequestData, 5>(0x0003000000000005,
                                                       R"({"ApplicationType":""})"),
        payload<AppMessage, QmlFileListResponseData, 6>(
            0x0003000000000006,
            R"({"ApplicationName":"","MinFrameworkVersion":0,"RootScript":"","FileList":[]})"),
        payload<AppMessage, QmlFileRequestData, 7>(0x0003000000000007,
                                                   R"({"ApplicationType":"","FileName":""})"),
        payload<AppMessage, QmlFileResponseData, 8>(
            0x0003000000000008, R"({"FileName":"","FileOffset":0,"FileSize":0,"Content":""})"),
        simple<AppMessage, 9>(0x0003000000000009),
        payload<AppMessage, SystemInfoResponseData, 10>(
            0x000300000000000A, R"({"Name":"","UUID":"","Description":"","SerialNumber":""})"),
        simple<AppMessage, 11>(0x000300000000000B),
        payload<AppMessage, InstalledAppsResponseData, 12>(0x000300000000000C, "{}"),
        payload<AppMessage, AppIdData, 13>(0x000300000000000D, appId),
        payload<AppMessage, AppPropertiesResponseData, 14>(
            0x000300000000000E,
            R"({"Name":"","Description":"","Icon":{"Type":"category","Image":"name"},)"
            R"("Version":"","RequiredResources":[]})"),
        payload<AppMessage, AppLocationData, 15>(0x000300000000000F,
                                                 R"({"AppInstallFromLocation":""})"),
        payload<AppMessage, AppIdData, 16>(0x0003000000000010, appId),
        payload<AppMessage, InstantiateAppCommandData, 17>(0x0003000000000011,
                                                           R"({"Name":"","ID":""})"),
        payload<AppMessage, ResultData, 18>(0x0003000000000012, result),
        payload<AppMessage, AppIdData, 19>(0x0003000000000013, appId),
        payload<AppMessage, ResultData, 20>(0x0003000000000014, result),
        payload<AppMessage, ConnectToAppCommandData, 21>(0x0003000000000015, R"({"UUID":""})"),
        payload<AppMessage, ConnectToAppResultData, 22>(0x0003000000000016,
                                                        R"({"Port":0,"Result":false,"UUID":""})"),
        payload<AppMessage, AppIdData, 23>(0x0003000000000017, appId),
        payload<AppMessage, ResultData, 24>(0x0003000000000018, result),
        payload<AppMessage, AppIdData, 25>(0x0003000000000019, appId),
        payload<AppMessage, ResultData, 26>(0x000300000000001A, result),
        simple<AppMessage, 27>(0x000300000000001B),
        payload<AppMessage, AppListData, 28>(0x000300000000001C, R"({"Applications":[]})"),
        simple<AppMessage, 4096>(0x0003000000001000),
        simple<AppMessage, 16384>(0x0003000000004000),
        simple<AppMessage, 20480>(0x0003000000005000),
        payload<AppMessage, Resources, 24576>(0x0003000000006000, R"({"Resources":[]})"),
        simple<AppMessage, 28672>(0x0003000000007000),
        payload<AppMessage, ChassisInformation, 32768>(0x0003000000008000,
                                                       R"({"Make":"","Model":""})"),
        simple<AppMessage, 36864>(0x0003000000009000),

        payload<Errs::ErrorMessage, Errs::GenericErrorData, 1>(
            0x0005000000000001, R"({"ErrorLevel":0,"ErrorCategory":0,"ErrorNumber":0,)"
                                R"("ErrorDescription":"","Timestamp":""})"),

        payload<ExceptionMessage, CommonExceptionData, 2>(0x0006000000000002, what),
        payload<ExceptionMessage, CommonExceptionData, 3>(0x0006000000000003, what),
        payload<ExceptionMessage, CommonExceptionData, 4>(0x0006000000000004, what),
        payload<ExceptionMessage, CommonExceptionData, 5>(0x0006000000000005, what),
        payload<ExceptionMessage, CommonExceptionData, 6>(0x0006000000000006, what),
        payload<ExceptionMessage, CommonExceptionData, 7>(0x0006000000000007, what),

        simple<AttrNotification, 1>(0x0007000000010001),
        simple<AttrNotification, 2>(0x0007000000010002),
        simple<AttrNotification, 3>(0x0007000000010003),
        simple<AttrNotification, 4>(0x0007000000010004),
        simple<AppNotification, 1>(0x0007000000020001),
        simple<AppNotification, 2>(0x0007000000020002),
        simple<AppNotification, 3>(0x0007000000020003),
        simple<AppNotification, 4>(0x0007000000020004),
        simple<SystemNotification, 1>(0x0007000000030001),
        simple<SystemNotification, 2>(0x0007000000030002),
        simple<SystemNotification, 3>(0x0007000000030003),
        simple<SystemNotification, 4>(0x0007000000030004),
        simple<SystemNotification, 5>(0x0007000000030005),
        simple<SystemNotification, 6>(0x0007000000030006),
        payload<SystemNotification, Utils::MayContainError, 7>(0x0007000000030007, "{}"),

        simple<Base, 1>(0x0009000100000001),
        simple<Base, 2>(0x0009000100000002),
        simple<Base, 3>(0x0009000100000003),
        payload<Base, AllServicesData, 4>(0x0009000100000004, R"({"Services":[]})"),
        payload<Base, ServiceData, 5>(0x0009000100000005, service),
        payload<Base, ServiceData, 6>(0x0009000100000006, service),
        simple<Base, 7>(0x0009000100000007),
        payload<Base, AllSubscriptionsData, 8>(0x0009000100000008, R"({"Subscriptions":[]})"),
        payload<Base, ServiceData, 9>(0x0009000100000009, service),
        payload<Base, ServiceData, 10>(0x000900010000000A, service),
    };
}

TEST(Numbers, StandForTheirClasses) {
    for (auto const& row : rows()) {
        auto const text = messageText(row.id, row.data);
        SCOPED_TRACE(text);
        EXPECT_EQ(written(*row.make()), text);
        auto const read = Message::CreateFromMetaData(parsed(text));
        ASSERT_NE(read, nullptr);
        EXPECT_EQ(classOf(*read), *row.type);
        EXPECT_EQ(written(*read), text);
        auto const* const described = findMessage(row.id);
        ASSERT_NE(described, nullptr);
        EXPECT_EQ(classOf(*described->make()), *row.type);
    }
}

TEST(Numbers, OfTheseFamiliesAreAllInTheTable) {
    constexpr unsigned short attributes = 4;
    std::vector<unsigned long long> ids;
    for (auto const& description : catalogue())
        if (Identifier(description.id).family() != attributes)
            ids.push_back(description.id);
    std::vector<unsigned long long> expected;
    for (auto const& row : rows())
        expected.push_back(row.id);
    EXPECT_EQ(ids, expected);
}

TEST(Numbers, ThatStandForNothing) {
    for (unsigned long long const id : {
             0x0000000000000000ULL, 0x0000000000000001ULL, // no family
             0x0001000000000000ULL, 0x0001000000000003ULL, 0x000100000000FFFFULL,
             0x0002000000000007ULL, // sub2 is missing
             0x0002000000010001ULL, 0x0002000000010006ULL, 0x0002000000010008ULL,
             0x000200000001FFFFULL, 0x0002000100010007ULL, // sub1 is not looked over
             0x000300000000001DULL, 0x0003000000000FFFULL, // 29 to 4095
             0x0003000000002000ULL, 0x0003000000003000ULL, 0x000300000000A000ULL,
             0x000300000000FFFFULL, 0x0003000100000001ULL, 0x0005000000000000ULL,
             0x0005000000000002ULL, 0x000500000000FFFFULL, 0x0006000000000001ULL,
             0x0006000000000008ULL, // there is no 1
             0x0007000000010005ULL, 0x0007000000020005ULL, 0x0007000000030008ULL,
             0x0007000000000001ULL, 0x0007000000040001ULL, // no such category
             0x0007000100010001ULL, 0x0008000000000001ULL, // no family 8
             0x0009000000000001ULL,                        // sub1 is missing
             0x0009000100000000ULL, 0x000900010000000BULL, 0x000900010000FFFFULL,
             0x0009000100010001ULL, 0x1007000000010001ULL, 0xFFFFFFFFFFFFFFFFULL,
         }) {
        SCOPED_TRACE(id);
        EXPECT_EQ(Message::CreateFromMetaData(parsed(messageText(id, "{}"))), nullptr);
        EXPECT_EQ(findMessage(id), nullptr);
    }
}

TEST(Numbers, AreFoundByTheirNames) {
    struct Lookup {
        char const* alias;
        unsigned long long id; ///< 0: nothing is found
    };
    for (auto const& [alias, id] : {
             Lookup{"App::ConnectMessage", 0x0003000000000001},
             Lookup{"ConnectMessage", 0x0003000000000001},
             Lookup{"Communications::Forwarder::AllServicesMessage", 0x0009000100000004},
             Lookup{"AllServicesMessage", 0x0009000100000004},
             Lookup{"Forwarder::AllServicesMessage", 0}, // half a family
             Lookup{"Errs::ConnectMessage", 0},          // of another family
             Lookup{"Connect", 0},                       // the beginning of one
             Lookup{"connectMessage", 0},                // case counts
             Lookup{"App::", 0},
             Lookup{"", 0},
         }) {
        auto const* const found = findMessage(alias);
        EXPECT_EQ(found != nullptr ? found->id : 0, id) << alias;
    }
}

} // namespace
} // namespace Tolv::Msgs
