#include <exception>
#include <memory>
#include <string>

#include <dlfcn.h>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/excepts/converter_factory.h>

#include "excepts_plugin/overload.h"
#include "support/messages.h"
#include "support/second_copy.h"

namespace Overload {
namespace {

/// Shares only its name with a class of the plugin.
struct Namesake : std::exception {
    char const* what() const noexcept override { return "of the program"; }
};

} // namespace
} // namespace Overload

namespace Tolv::Msgs::Excepts {
namespace {

using namespace Tolv::Testing;

constexpr auto overloadText =
    R"({"MessageID":1688849860264536,"Data":{"what":"overload: 12.500000 V",)"
    R"("VoltageAtTheInput":12.5}})";

/// Loads the plugin during its lifetime.
class Plugin {
public:
    explicit Plugin(char const* file) : library_(dlopen(file, RTLD_NOW | RTLD_LOCAL)) {
        EXPECT_NE(library_, nullptr) << dlerror();
    }
    Plugin(Plugin const&) = delete;
    Plugin& operator=(Plugin const&) = delete;
    ~Plugin() { EXPECT_EQ(dlclose(library_), 0) << dlerror(); }

    template <class Function>
    Function function(char const* name) const {
        auto* const found = reinterpret_cast<Function>(dlsym(library_, name));
        if (found == nullptr)
            throw Exception::InvalidHandle(name);
        return found;
    }

private:
    void* library_;
};

std::string textThrownFor(std::shared_ptr<ExceptionMessage const> const& message) {
    return thrownBy<Exception::UnknownException>(
        [&] { ConverterFactory::throwException(message); });
}

void expectNoPlugin(char const* file) {
    EXPECT_EQ(dlopen(file, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the plugin is still mapped";
    EXPECT_EQ(received(overloadText), nullptr);
    for (unsigned short number = 600; number <= 601; ++number)
        EXPECT_EQ(
            textThrownFor(std::make_shared<ExceptionMessage const>(number, Address(), Address())),
            "unable to translate exception message");
}

void expectRoundTrip(Plugin const& plugin) {
    auto const volts = plugin.function<OverloadVolts>("overloadVolts");
    std::string text;
    try {
        plugin.function<OverloadRaise>("overloadRaise")(12.5);
    } catch (std::exception const& error) {
        text = written(*ConverterFactory::asMessage(error));
    }
    EXPECT_EQ(text, overloadText);
    auto const arrived = received<ExceptionMessage>(text);
    ASSERT_NE(arrived, nullptr);
    try {
        ConverterFactory::throwException(arrived);
    } catch (std::exception const& again) {
        EXPECT_EQ(volts(again), 12.5);
        EXPECT_STREQ(again.what(), "overload: 12.500000 V");
    }
}

class ExceptsPlugin : public testing::TestWithParam<char const*> {};

TEST_P(ExceptsPlugin, IsRegisteredWhileItIsLoaded) {
    expectNoPlugin(GetParam());
    auto const classes = Message::MsgFactory::Instance().size();
    for (int i = 0; i < 100 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        {
            Plugin const plugin(GetParam());
            EXPECT_EQ(Message::MsgFactory::Instance().size(), classes + 2);
            expectRoundTrip(plugin);
            { // loaded twice is registered once
                Plugin const second(GetParam());
                EXPECT_EQ(Message::MsgFactory::Instance().size(), classes + 2);
            }
            expectRoundTrip(plugin);
        }
        EXPECT_EQ(Message::MsgFactory::Instance().size(), classes);
        expectNoPlugin(GetParam());
    }
}

TEST_P(ExceptsPlugin, LeavesTreesAndMessagesOfTheLibraryBehind) {
    MetaData::Element tree;
    std::shared_ptr<ExceptionMessage> known;
    {
        Plugin const plugin(GetParam());
        plugin.function<OverloadWrite>("overloadWrite")(tree);
        known = ConverterFactory::asMessage(Exception::InvalidHandle("h"));
    }
    expectNoPlugin(GetParam());
    EXPECT_EQ(textOf(tree), R"({"MessageID":1688849860264536,"Sender":["slot1"],"Data":{)"
                            R"("what":"overload: 12.000000 V","VoltageAtTheInput":12.0}})");
    EXPECT_EQ(thrownBy<Exception::InvalidHandle>([&] { ConverterFactory::throwException(known); }),
              "h");
}

// The program's copy of the library is loaded first; the second one shares its symbols.
TEST(ExceptsSecondCopy, LeavesTheConvertersBehind) {
    SecondCopy const copy(TOLV_MESSAGES_FILE);
    auto const known = ConverterFactory::asMessage(Exception::InvalidHandle("h"));
    { Plugin const second(copy.path()); }
    EXPECT_EQ(dlopen(copy.path(), RTLD_NOW | RTLD_NOLOAD), nullptr);
    EXPECT_EQ(written(*ConverterFactory::asMessage(Exception::InvalidHandle("h"))),
              written(*known));
    EXPECT_EQ(thrownBy<Exception::InvalidHandle>([&] { ConverterFactory::throwException(known); }),
              "h");
}

// Classes of unnamed namespaces have the same name in the table.
TEST_P(ExceptsPlugin, DoesNotTakeNamesakesForItsOwn) {
    Plugin const plugin(GetParam());
    std::shared_ptr<ExceptionMessage> message;
    try {
        plugin.function<OverloadRaiseNamesake>("overloadRaiseNamesake")();
    } catch (std::exception const& error) {
        message = ConverterFactory::asMessage(error);
    }
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->id().type(), 601);
#ifndef __clang__ // which itself takes classes in unnamed namespaces for one if their names agree
    message = ConverterFactory::asMessage(Overload::Namesake());
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(written(*message),
              messageText(UnknownExceptionMessage::MsgID(), R"({"what":"of the program"})"));
#endif
}

INSTANTIATE_TEST_SUITE_P(Builds, ExceptsPlugin, testing::Values(TOLV_PLUGINS),
                         [](auto const& info) { return info.index == 0 ? "Hidden" : "Visible"; });

} // namespace
} // namespace Tolv::Msgs::Excepts
