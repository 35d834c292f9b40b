#include <tolv/msgs/excepts/converter_registrar.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>

#include "support/messages.h"

namespace Tolv::Msgs::Excepts {
namespace {

using namespace Tolv::Testing;

constexpr auto untranslatable = "unable to translate exception message";

template <unsigned short last>
using Numbered = PayloadMessageHelper<ExceptionMessage, CommonExceptionData, last>;

/// What the receiver catches.
struct Caught {
    std::type_info const* type;
    std::string what;
};

Caught thrownFor(std::shared_ptr<ExceptionMessage const> const& message) {
    try {
        ConverterFactory::throwException(message);
    } catch (std::exception const& exception) {
        return {&typeid(exception), exception.what()};
    }
}

template <class Exc, unsigned short last>
void expectRoundTrip() {
    SCOPED_TRACE(typeid(Exc).name());
    for (std::string const& text :
         {std::string("slot 3: \"überlast\"\n"), std::string(), std::string(100'000, 'x')}) {
        Exc const thrown(text);
        auto const message = ConverterFactory::asMessage(thrown); // seen as a std::exception
        ASSERT_NE(message, nullptr);
        EXPECT_EQ(typeid(*message), typeid(Numbered<last>));
        EXPECT_FALSE(message->sender.initialized());
        EXPECT_FALSE(message->destination.initialized());
        EXPECT_EQ(written(*message),
                  messageText(0x0006000000000000 + last, written(CommonExceptionData(text))));

        auto const arrived = std::dynamic_pointer_cast<ExceptionMessage>(sent(*message));
        auto const caught = thrownFor(arrived);
        EXPECT_EQ(*caught.type, typeid(Exc));
        EXPECT_EQ(caught.what, text);
    }
}

TEST(Excepts, GoThereAndBack) {
    expectRoundTrip<Exception::UnknownException, 2>();
    expectRoundTrip<Exception::InvalidParameter, 3>();
    expectRoundTrip<Exception::InconsistentParameters, 4>();
    expectRoundTrip<Exception::InsufficientResources, 5>();
    expectRoundTrip<Exception::InvalidHandle, 6>();
    expectRoundTrip<Exception::InvalidOperation, 7>();
}

struct SlotError : Exception::InvalidParameter {
    using InvalidParameter::InvalidParameter;
};

TEST(Excepts, OfOtherClassesBecomeUnknown) {
    std::bad_alloc const badAlloc;
    std::runtime_error const foreign("file is gone");
    SlotError const derived("slot 9");
    Exception::Base const base("base");
    Exception::InvalidEnumValue const unlisted("7"); // of the platform, without message
    std::exception const bare;
    for (std::exception const* const error : std::initializer_list<std::exception const*>{
             &badAlloc, &foreign, &derived, &base, &unlisted, &bare}) {
        auto const message = ConverterFactory::asMessage(*error);
        auto const* const unknown = dynamic_cast<UnknownExceptionMessage const*>(message.get());
        ASSERT_NE(unknown, nullptr);
        EXPECT_EQ(unknown->payload().what(), error->what());
        EXPECT_EQ(written(*message),
                  messageText(0x0006000000000002, written(CommonExceptionData(error->what()))));
        auto const caught = thrownFor(message);
        EXPECT_EQ(*caught.type, typeid(Exception::UnknownException));
        EXPECT_EQ(caught.what, error->what());
    }
}

TEST(Excepts, MessagesThatCannotBeThrown) {
    using Exception::InvalidOperation;
    using Exception::InvalidParameter;
    using Exception::UnknownException;
    constexpr auto unread = "Tolv::MetaData::Reflector::operator()(): ";
    struct Row {
        char const* why;
        std::shared_ptr<ExceptionMessage const> message;
        std::type_info const& type;
        std::string what;
    };
    auto const ofId = [](unsigned long long id) {
        return std::make_shared<ExceptionMessage const>(id, Address(), Address());
    };
    auto const ofText = [](char const* text) { return received<ExceptionMessage>(text); };
    for (Row const& row : {
             Row{"there is no 1", ofId(0x0006000000000001), typeid(UnknownException),
                 untranslatable},
             Row{"the family", ofId(0x000600000000FFFF), typeid(UnknownException), untranslatable},
             Row{"another sub-family", ofId(0x0006000100000003), typeid(UnknownException),
                 untranslatable},
             Row{"another family", ofId(0x0005000000000003), typeid(UnknownException),
                 untranslatable},
             Row{"an id without its class", ofId(0x0006000000000003), typeid(InvalidOperation),
                 "bad cast"},
             Row{"without payload", ofText(R"({"MessageID":1688849860263939})"),
                 typeid(InvalidOperation),
                 std::string(unread) +
                     "Data is not initialized in PayloadMessageHelper<Excepts::ExceptionMessage, "
                     "Excepts::CommonExceptionData, 3>"},
             Row{"without text", ofText(R"({"MessageID":1688849860263939,"Data":{}})"),
                 typeid(InvalidOperation),
                 std::string(unread) + "what is not initialized in Excepts::CommonExceptionData"},
             Row{"with a number as text",
                 ofText(R"({"MessageID":1688849860263938,"Data":{"what":1}})"),
                 typeid(InvalidOperation),
                 std::string(unread) + "what is not initialized in Excepts::CommonExceptionData"},
             Row{"no message", nullptr, typeid(InvalidParameter),
                 "there is no exception message to throw"},
         }) {
        SCOPED_TRACE(row.why);
        auto const caught = thrownFor(row.message);
        EXPECT_EQ(*caught.type, row.type);
        EXPECT_EQ(caught.what, row.what);
    }
}

TEST(ConverterFactory, KeepsTheFirstConverter) {
    EXPECT_FALSE(
        ConverterFactory::registerMessageConverter(InvalidHandleMessage::MsgID(), [](auto const&) {
            throw std::runtime_error("the second one");
        }));
    EXPECT_FALSE(ConverterFactory::registerExceptionConverter(
        typeid(Exception::InvalidHandle).name(),
        [](auto const&) { return std::make_shared<UnknownExceptionMessage>(); }));
    expectRoundTrip<Exception::InvalidHandle, 6>();
}

TEST(ConverterFactory, TakesOutWhatIsThereAndNothingElse) {
    constexpr unsigned long long id = 0x7E61000000000009;
    constexpr auto name = "nobody's class";
    ConverterFactory::unregisterMessageConverter(id);
    ConverterFactory::unregisterExceptionConverter(name);

    auto const message = std::make_shared<ExceptionMessage const>(id, Address(), Address());
    {
        std::string const temporary = name; // the table keeps a copy
        EXPECT_TRUE(ConverterFactory::registerExceptionConverter(
            temporary.c_str(), [](auto const&) { return nullptr; }));
    }
    EXPECT_FALSE(ConverterFactory::registerExceptionConverter(name, {}));
    EXPECT_TRUE(ConverterFactory::registerMessageConverter(
        id, [](auto const&) { throw std::out_of_range("as agreed"); }));
    EXPECT_EQ(thrownFor(message).what, "as agreed");

    ConverterFactory::unregisterMessageConverter(id);
    ConverterFactory::unregisterExceptionConverter(name);
    EXPECT_EQ(thrownFor(message).what, untranslatable);
    EXPECT_TRUE(
        ConverterFactory::registerExceptionConverter(name, [](auto const&) { return nullptr; }));
    ConverterFactory::unregisterExceptionConverter(name);

    // A converter that creates no message.
    auto const overflow = typeid(std::overflow_error).name();
    ASSERT_TRUE(ConverterFactory::registerExceptionConverter(overflow,
                                                             [](auto const&) { return nullptr; }));
    auto const unknown = ConverterFactory::asMessage(std::overflow_error("too much"));
    ConverterFactory::unregisterExceptionConverter(overflow);
    ASSERT_NE(unknown, nullptr);
    EXPECT_EQ(thrownFor(unknown).what, "too much");

    // A converter that fails to throw.
    EXPECT_TRUE(ConverterFactory::registerMessageConverter(id, [](auto const&) {}));
    EXPECT_EQ(thrownFor(message).what, untranslatable);
    ConverterFactory::unregisterMessageConverter(id);
}

/// A user's exception with a payload of its own: number, text and the underlying error.
struct Overload : std::runtime_error {
    Overload(unsigned int channel, std::string const& text)
        : std::runtime_error(text), channel(channel) {}
    unsigned int channel;
};

class UserException : public OpenMessageFamily<ExceptionMessage, 0x7E62> {
public:
    using OpenMessageFamily::OpenMessageFamily;
};

using OverloadMessage = PayloadMessageHelper<UserException, GenericExceptionData, 1>;

void raise(std::shared_ptr<OverloadMessage const> const& message) {
    throw Overload(message->payload().exceptionType(), message->payload().exceptionMessage());
}

std::shared_ptr<OverloadMessage> make(Overload const& error) {
    GenericExceptionData data;
    data.setType(error.channel);
    data.setMessage(error.what());
    data.setError(Errs::GenericErrorData({}, {}, 5, "relay", ""));
    return std::make_shared<OverloadMessage>(data);
}

TEST(ConverterRegistrar, ActsAsLongAsItLives) {
    Overload const error(3000000000U, "input 4");
    EXPECT_NE(dynamic_cast<UnknownExceptionMessage*>(ConverterFactory::asMessage(error).get()),
              nullptr);
    std::shared_ptr<ExceptionMessage> message;
    {
        Message::Registrar<OverloadMessage> const inFactory(OverloadMessage::MsgID());
        ConverterRegistrar<OverloadMessage, Overload> const registrar(&raise, &make);
        message = ConverterFactory::asMessage(error);
        EXPECT_EQ(written(*message),
                  messageText(0x7E62000000000001,
                              R"({"Error":{"MessageID":1407374883553281,"Data":{"ErrorLevel":0,)"
                              R"("ErrorCategory":0,"ErrorNumber":5,"ErrorDescription":"relay",)"
                              R"("Timestamp":""}},"ExceptionType":3000000000,)"
                              R"("ExceptionMessage":"input 4"})"));
        auto const arrived = std::dynamic_pointer_cast<ExceptionMessage>(sent(*message));
        try {
            ConverterFactory::throwException(arrived);
        } catch (Overload const& again) {
            EXPECT_EQ(again.channel, 3000000000U);
            EXPECT_STREQ(again.what(), "input 4");
        }
    }
    EXPECT_EQ(thrownFor(message).what, untranslatable);
    EXPECT_NE(dynamic_cast<UnknownExceptionMessage*>(ConverterFactory::asMessage(error).get()),
              nullptr);
}

// A record for users' exceptions; no message of the library contains it.
TEST(GenericExceptionData, Texts) {
    constexpr auto full =
        R"({"Error":{"MessageID":1407374883553281,"Data":{"ErrorLevel":1,"ErrorCategory":2,)"
        R"("ErrorNumber":3,"ErrorDescription":"a","Timestamp":"b"}},)"
        R"("ExceptionType":4294967295,"ExceptionMessage":"c"})";
    GenericExceptionData data;
    EXPECT_EQ(written(data), R"({"ExceptionType":0,"ExceptionMessage":""})");
    readInto(data, full);
    EXPECT_EQ(written(GenericExceptionData(data)), full);
    readInto(data, R"({"ExceptionType":-1})");
    EXPECT_EQ(written(data), "{}");
    data.setType(0);
    data.setMessage("");
    EXPECT_EQ(written(data), R"({"ExceptionType":0,"ExceptionMessage":""})");
}

} // namespace
} // namespace Tolv::Msgs::Excepts
