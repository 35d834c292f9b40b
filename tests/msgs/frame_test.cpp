#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

#include <cstring>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/core/msgs/message_key.h>
#include <tolv/fields/reflector_array.h>
#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/catalogue.h>
#include <tolv/msgs/introspection/description.h>
#include <tolv/msgs/record.h>
#include "support/captured_output.h"
#include "support/counters.h"
#include "support/trees.h"

namespace Tolv::Msgs {
namespace {

using Testing::CapturedOutput;
using Testing::Counted;
using Testing::parsed;
using Testing::readInto;
using Testing::thrownBy;
using Testing::written;

std::string const unreadData = "Tolv::MetaData::Reflector::operator()(): Data is not initialized "
                               "in PayloadMessageHelper<UserMessage, Reading, 1>";
constexpr auto connectText =
    R"({"MessageID":844424930131969,"Sender":["a"],"Destination":["b","c"],)"
    R"("Data":{"MaxVersion":3,"MinVersion":2,"BinaryTransmission":false}})";

/// A family of a user of the library.
constexpr unsigned short userFamily = 0x7E57;
class UserMessage : public OpenMessageFamily<Message, userFamily> {
public:
    using OpenMessageFamily::OpenMessageFamily;
};

struct Reading : MirroredObject {
    Reflector<double> value{this, "value"_key, Required, 1.5};
    ReflectorArray<int> raw{this, "raw"_key, Optional};
};

using ReadingMessage = PayloadMessageHelper<UserMessage, Reading, 1>;
using StartMessage = SimpleMessageHelper<UserMessage, 2>;
using StopMessage = DestID_Required<SimpleMessageHelper<UserMessage, 3>>;

} // namespace

template class PayloadMessageHelper<UserMessage, Reading, 1>;
template class SimpleMessageHelper<UserMessage, 2>;
template class DestID_Required<SimpleMessageHelper<UserMessage, 3>>;

namespace {

TEST(Identifier, PacksItsFourFields) {
    struct Row {
        unsigned short family, sub1, sub2, type;
        unsigned long long value;
    };
    for (Row const& row : {Row{7, 0, 2, 1, 0x0007000000020001}, Row{9, 1, 0, 1, 0x0009000100000001},
                           Row{0x8000, 0x4000, 0x2000, 0x1000, 0x8000400020001000},
                           Row{0xFFFF, 0xFFFF, 0xFFFF, 0xFFFF, 0xFFFFFFFFFFFFFFFF}}) {
        EXPECT_EQ(Identifier::toValue(row.family, row.sub1, row.sub2, row.type), row.value);
        Identifier const id(row.value);
        EXPECT_EQ(id, row.value);
        EXPECT_EQ(id.family(), row.family);
        EXPECT_EQ(id.sub1(), row.sub1);
        EXPECT_EQ(id.sub2(), row.sub2);
        EXPECT_EQ(id.type(), row.type);
        Identifier read;
        readInto(read, written(id));
        EXPECT_EQ(read, row.value);
    }
}

/// Checks a family whose ids begin with `prefix`.
template <class Family>
void checkFamily(unsigned long long prefix) {
    SCOPED_TRACE(typeid(Family).name());
    EXPECT_EQ(Family::MsgID(), prefix | 0xFFFFU);
    EXPECT_EQ(&Family::MsgID(), &Family::MsgID());

    unsigned short const number = 5;
    Family const numbered(number, {"from"}, {"to", "there"});
    EXPECT_EQ(numbered.id(), prefix | number);
    EXPECT_EQ(numbered.sender(), Address{"from"});
    EXPECT_EQ(numbered.destination(), (Address{"to", "there"}));
    EXPECT_EQ(Family(0x123456789ABCDEF0ULL, {}, {}).id(), 0x123456789ABCDEF0ULL);
    MetaData::Element const tree = parsed(written(numbered));
    MetaData::Object const& object = tree;
    EXPECT_EQ(written(Family(object)), written(numbered));
}

TEST(Families, AreWhatTheTableSays) {
    checkFamily<Sys::SystemMessage>(0x0001000000000000);
    checkFamily<Engine::EngineMessage>(0x0002000000000000);
    checkFamily<Engine::StateMessage>(0x0002000000010000);
    checkFamily<App::AppMessage>(0x0003000000000000);
    checkFamily<Attrs::AttrMessage>(0x0004000000000000);
    checkFamily<Attrs::AttrArrays>(0x0004000100000000);
    checkFamily<Errs::ErrorMessage>(0x0005000000000000);
    checkFamily<Excepts::ExceptionMessage>(0x0006000000000000);
    checkFamily<Notifs::AttrNotification>(0x0007000000010000);
    checkFamily<Notifs::AppNotification>(0x0007000000020000);
    checkFamily<Notifs::SystemNotification>(0x0007000000030000);
    checkFamily<Communications::CommunicationsMessage>(0x0009000000000000);
    checkFamily<Communications::Forwarder::Base>(0x0009000100000000);
}

TEST(Families, BuildIds) {
    struct Row {
        char const* why;
        Identifier built;
        unsigned long long expected;
    };
    for (auto const& row : std::vector<Row>{
             {"system", Sys::SystemMessage::idBuilder(1, 2, 3), 0x0001000200030001},
             {"engine", Engine::EngineMessage::idBuilder(1, 2, 3), 0x0002000200030001},
             {"state", Engine::StateMessage::idBuilder(7), 0x0002000000010007},
             {"app", App::AppMessage::idBuilder(1, 2, 3), 0x0003000200030001},
             {"attribute", Attrs::AttrMessage::idBuilder(1, 2, 3), 0x0004000200030001},
             {"batch: the second argument is ignored", Attrs::AttrArrays::idBuilder(5, 77, 0),
              0x0004000100000005},
             {"batch: the third is not", Attrs::AttrArrays::idBuilder(5, 0, 3), 0x0004000100030005},
             {"exception", Excepts::ExceptionMessage::idBuilder(1, 2, 3), 0x0006000200030001},
             {"communications", Communications::CommunicationsMessage::idBuilder(1, 2, 3),
              0x0009000200030001},
             {"forwarder: the second argument is ignored",
              Communications::Forwarder::Base::idBuilder(1, 77, 3), 0x0009000100030001},
         })
        EXPECT_EQ(row.built, row.expected) << row.why;
}

// Type names are stable: the factory stores them, and records of other programs refer to them.
TEST(Families, AreNamedAsInThePlatform) {
    EXPECT_EQ(std::strlen(typeid(SimpleMessageHelper<Notifs::AppNotification, 1>).name()), 68U);
}

TEST(Messages, KeysInTheirOrder) {
    App::ConnectMessage message(App::Connect(3, 2, false), {"a"}, {"b", "c"});
    EXPECT_EQ(written(message), connectText);
    EXPECT_EQ(written(App::ConnectMessage(Address(), {"b"})),
              R"({"MessageID":844424930131969,"Destination":["b"],)"
              R"("Data":{"MaxVersion":1,"MinVersion":1,"BinaryTransmission":true}})");
    EXPECT_EQ(written(App::PingMessage()), R"({"MessageID":844424930131972})");
    message.sender = Address();
    message.destination.uninit();
    message.setPayload(App::Connect());
    EXPECT_EQ(written(message),
              R"({"MessageID":844424930131969,"Sender":[],)"
              R"("Data":{"MaxVersion":1,"MinVersion":1,"BinaryTransmission":true}})");
}

TEST(Messages, ReadIntoAMessageThatExists) {
    App::ConnectMessage message;
    readInto(message, connectText);
    EXPECT_EQ(written(message), connectText);
    readInto(message, R"({"MessageID":844424930131969})");
    EXPECT_EQ(written(message), R"({"MessageID":844424930131969})")
        << "what is not there is not left over";
    EXPECT_EQ(message.editPayload().maxVersion(), 1) << "the payload is at its default";
    EXPECT_THROW(readInto(message, "3"), Exception::InvalidParameter);
}

TEST(Messages, WithoutDataAreCreatedAndNoMore) {
    for (auto const* const text : {R"({"MessageID":9103745171752747009})",
                                   R"({"MessageID":9103745171752747009,"Data":7})"}) {
        SCOPED_TRACE(text); // "raw", a list, wants an object
        auto const message =
            std::dynamic_pointer_cast<ReadingMessage>(Message::CreateFromMetaData(parsed(text)));
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(message->id(), ReadingMessage::MsgID());
        EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { (void)message->payload(); }),
                  unreadData);
        EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { ReadingMessage copy(*message); }),
                  unreadData);
        EXPECT_EQ(written(*message), R"({"MessageID":9103745171752747009})");

        ReadingMessage assigned;
        assigned.editPayload().value = 3;
        assigned = *message;
        EXPECT_EQ(assigned.payload().value(), 1.5) << "assignment goes by the rules of the field";
    }
}

TEST(Messages, CopiesAreOnTheirOwn) {
    auto source = std::make_unique<App::ConnectMessage>(App::Connect(3, 2, false), Address{"a"},
                                                        Address{"b", "c"});
    std::vector<App::ConnectMessage> batch(3, *source);
    source->editPayload().maxVersion = 9;
    source.reset();
    batch.resize(20);
    batch[1].sender = Address{"x"};
    EXPECT_EQ(written(batch[0]), connectText);
    EXPECT_EQ(batch[1].payload().maxVersion(), 3);
    EXPECT_EQ(batch[2].members(),
              (std::vector<MetaData::ReflectorBase const*>{batch[2].members()[0], &batch[2].sender,
                                                           &batch[2].destination, &batch[2].Data}));
}

TEST(Messages, DestinationIsRequiredWhereTheClassSaysSo) {
    EXPECT_FALSE((SimpleMessageHelper<UserMessage, 3>().destination.isRequired()));
    StopMessage const empty;
    EXPECT_TRUE(empty.destination.isRequired());
    EXPECT_FALSE(empty.destination.initialized()) << "the value is left as it is";
    EXPECT_FALSE(empty.sender.isRequired());
    StopMessage const given({"a"}, {"b"});
    EXPECT_TRUE(StopMessage(given).destination.isRequired());
    auto const created = Message::CreateFromMetaData(parsed(written(given)));
    ASSERT_NE(dynamic_cast<StopMessage*>(created.get()), nullptr);
    EXPECT_TRUE(created->destination.isRequired());
    EXPECT_EQ(created->destination(), Address{"b"});
}

TEST(MessageKey, CallsItsFunctionOnceWhenThereIsOne) {
    EXPECT_EQ(MessageKey(1, {"a"}, {"b"}, {}).value(), 0U);
    int calls = 0;
    MessageKey const key(7, {"a"}, {"b"}, [&](MessageKey const& made) {
        ++calls;
        return made.id() + made.sender().size() + made.destination().size();
    });
    EXPECT_EQ(key.value(), 9U);
    EXPECT_EQ(key.value(), 9U);
    EXPECT_EQ(calls, 1);
}

TEST(Creation, OfWhatIsNoMessage) {
    for (auto const* const text :
         {"null", "3", "[]", R"("x")", "{}", R"({"Data":{}})", R"({"MessageID":null})",
          R"({"MessageID":"844424930131972"})", R"({"MessageID":-1})", R"({"MessageID":0.5})",
          R"({"MessageID":18446744073709551616})"}) {
        SCOPED_TRACE(text);
        EXPECT_THROW(Message::CreateFromMetaData(parsed(text)), Exception::InvalidParameter);
    }
    for (auto const* const text : {R"({"MessageID":0})", R"({"MessageID":18446744073709551615})",
                                   R"({"MessageID":844424930197503})"})
        EXPECT_EQ(Message::CreateFromMetaData(parsed(text)), nullptr) << text;
    EXPECT_NE(Message::CreateFromMetaData(parsed(R"({"MessageID":844424930131972.0})")), nullptr)
        << "a number is what it is worth";
}

TEST(Creation, OfABadAddressKeepsTheMessage) {
    CapturedOutput const output;
    auto const message = Message::CreateFromMetaData(
        parsed(R"({"MessageID":844424930131972,"Sender":"a","Destination":[1]})"));
    ASSERT_NE(message, nullptr);
    EXPECT_FALSE(message->sender.initialized());
    EXPECT_FALSE(message->destination.initialized());
    EXPECT_EQ(output.text(),
              "Exception MetaDat::ReflectorArray Should have gotten an Array, but didn't\n"
              "Exception MetaDat::ReflectorArray MetaData Array corrupt for Destination\n");
}

/// Allocates memory, and throws when it is nearly constructed.
class FailingMessage : public SimpleMessageHelper<UserMessage, 4> {
public:
    explicit FailingMessage(MetaData::Object const& object) : SimpleMessageHelper(object) {
        throw std::runtime_error("not today");
    }
};

TEST(Creation, ThatThrowsLeaksNothing) {
    Message::Registrar<FailingMessage> const registrar(FailingMessage::MsgID());
    ASSERT_TRUE(registrar.registered());
    auto const tree = parsed("{\"MessageID\":" + std::to_string(FailingMessage::MsgID()) +
                             R"(,"Sender":["a sender of more than 16 bytes"]})");
    auto const number = parsed("3");
    auto* const creator = Message::MsgFactory::Instance().find(ReadingMessage::MsgID());
    ASSERT_NE(creator, nullptr);
    Counted const count;
    EXPECT_THROW((void)creator(number), Exception::InvalidParameter);
    EXPECT_THROW(Message::CreateFromMetaData(tree), std::runtime_error);
    EXPECT_EQ(count.blocks(), 0);
}

TEST(Registration, OfASecondClassIsRefused) {
    auto& factory = Message::MsgFactory::Instance();
    auto const tree = parsed(written(StartMessage()));
    ASSERT_TRUE(StartMessage::factoryRegistration.registered());
    auto const before = factory.size();
    {
        Message::Registrar<FailingMessage> const second(StartMessage::MsgID());
        EXPECT_FALSE(second.registered());
        EXPECT_EQ(second.id(), StartMessage::MsgID());
        EXPECT_NE(dynamic_cast<StartMessage*>(Message::CreateFromMetaData(tree).get()), nullptr);
    }
    EXPECT_NE(dynamic_cast<StartMessage*>(Message::CreateFromMetaData(tree).get()), nullptr);
    EXPECT_EQ(factory.size(), before);
}

TEST(Registration, EndsWithItsRegistrar) {
    constexpr unsigned long long id = 0x7E57000000000063;
    auto const tree = parsed("{\"MessageID\":" + std::to_string(id) + '}');
    for (int i = 0; i < 2; ++i) { // an id can be registered again
        EXPECT_EQ(Message::CreateFromMetaData(tree), nullptr);
        Message::Registrar<UserMessage> const registrar(id);
        EXPECT_TRUE(registrar.registered());
        auto const message = Message::CreateFromMetaData(tree);
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(message->id(), id);
    }
    EXPECT_EQ(Message::CreateFromMetaData(tree), nullptr);
    auto& factory = Message::MsgFactory::Instance();
    factory.deregisterMessage(id); // of nobody
    EXPECT_FALSE(factory.registerMessage(id, nullptr, "nothing"));
    EXPECT_EQ(Message::CreateFromMetaData(tree), nullptr);

    EXPECT_TRUE(factory.registerMessage(
        id, [](auto const&) -> Message* { return nullptr; }, "builds nothing"));
    EXPECT_EQ(Message::CreateFromMetaData(tree), nullptr);
    EXPECT_FALSE(Introspection::describe(id));
    factory.deregisterMessage(id);
}

/// The class of the object itself.
std::type_info const& classOf(Message const& message) { return typeid(message); }

TEST(Catalogue, AndFactoryAreTheSame) {
    std::map<unsigned long long, std::string> registered;
    for (auto const& entry : Message::MsgFactory::Instance().entries())
        if (Identifier(entry.id).family() < 0x1000) // not of the tests
            registered.emplace(entry.id, entry.typeName);
    std::map<unsigned long long, std::string> described;
    for (auto const& row : catalogue()) {
        auto const message = row.make();
        EXPECT_TRUE(described.emplace(row.id, classOf(*message).name()).second) << row.alias;
    }
    EXPECT_GE(described.size(), 12U);
    EXPECT_EQ(described, registered);
}

TEST(Messages, KeepAllTheyHoldWhenWhatIsReadIsNoObject) {
    App::ConnectMessage message({"client"}, {"service"});
    auto const before = written(message);
    for (auto const* const text : {"null", "5", "[]", R"("text")"}) {
        EXPECT_THROW(message.copyFromMetaData(parsed(text)), Exception::InvalidParameter) << text;
        EXPECT_EQ(written(message), before) << text;
    }
}

TEST(Catalogue, HasOnlyTheClassesOfTheLibrary) {
    EXPECT_EQ(findMessage(ReadingMessage::MsgID()), nullptr);
    auto const message = Message::CreateFromMetaData(parsed(written(ReadingMessage())));
    EXPECT_NE(dynamic_cast<ReadingMessage*>(message.get()), nullptr);
}

} // namespace
} // namespace Tolv::Msgs
