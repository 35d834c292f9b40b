#include <cstddef>
#include <string>
#include <utility>

#include <dlfcn.h>

#include <gtest/gtest.h>

#include <tolv/core/msgs/message.h>
#include "support/second_copy.h"
#include "support/trees.h"

namespace Tolv::Msgs {
namespace {

constexpr auto first = TOLV_MESSAGES_FILE;

void* load(char const* path, int scope) {
    auto* const library = dlopen(path, RTLD_NOW | scope);
    EXPECT_NE(library, nullptr) << dlerror();
    return library;
}

std::size_t classes() { return Message::MsgFactory::Instance().size(); }

/// Creates and writes a message with a payload.
void expectMessages() {
    auto const text = R"({"MessageID":844424930131969,)"
                      R"("Data":{"MaxVersion":3,"MinVersion":2,"BinaryTransmission":false}})";
    auto const message = Message::CreateFromMetaData(Testing::parsed(text));
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(Testing::written(*message), text);
}

// The scope decides whether the second copy sees the symbols of the first; it must not use the
// first copy's static objects as its own.
TEST(TwoCopies, SecondIsRefusedAndEitherMayGoFirst) {
    Testing::SecondCopy const second(first);
    for (auto const& scopes :
         {std::pair(RTLD_LOCAL, RTLD_LOCAL), std::pair(RTLD_GLOBAL, RTLD_LOCAL),
          std::pair(RTLD_GLOBAL, RTLD_GLOBAL)})
        for (bool const firstGoesFirst : {false, true}) {
            SCOPED_TRACE(std::to_string(scopes.first) + ", " + std::to_string(scopes.second) +
                         (firstGoesFirst ? ", the first goes first" : ", the second goes first"));
            auto* const one = load(first, scopes.first);
            auto const all = classes();
            EXPECT_GT(all, 100U);
            auto const creator = Message::MsgFactory::Instance().find(844424930131969);
            auto* const two = load(second.path(), scopes.second);
            ASSERT_NE(one, two);
            EXPECT_EQ(classes(), all);
            EXPECT_EQ(Message::MsgFactory::Instance().find(844424930131969), creator);
            expectMessages();

            EXPECT_EQ(dlclose(firstGoesFirst ? one : two), 0);
            // If the second copy uses symbols of the first, the loader keeps the first.
            if (firstGoesFirst && scopes.first == RTLD_LOCAL) {
                EXPECT_EQ(classes(), 0U);
            } else {
                EXPECT_EQ(classes(), all);
                expectMessages();
            }
            EXPECT_EQ(dlclose(firstGoesFirst ? two : one), 0);
            EXPECT_EQ(classes(), 0U);
            for (auto const* const path : {first, second.path()})
                EXPECT_EQ(dlopen(path, RTLD_NOW | RTLD_NOLOAD), nullptr) << path;
        }
}

} // namespace
} // namespace Tolv::Msgs
