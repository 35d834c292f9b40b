#include <dlfcn.h>

#include <gtest/gtest.h>

#include <tolv/core/msgs/message.h>
#include "support/trees.h"

namespace Tolv::Msgs {
namespace {

constexpr auto file = TOLV_MESSAGES_FILE;

/// A message with a record, and one without.
constexpr char const* messages[] = {
    R"({"MessageID":844424930131969,"Sender":["a"],)"
    R"("Data":{"MaxVersion":3,"MinVersion":2,"BinaryTransmission":false}})",
    R"({"MessageID":844424930131972})",
};

void expectNothingThere() {
    EXPECT_EQ(dlopen(file, RTLD_NOW | RTLD_NOLOAD), nullptr) << "the library is still mapped";
    EXPECT_EQ(Message::MsgFactory::Instance().size(), 0U);
    EXPECT_TRUE(Message::MsgFactory::Instance().entries().empty());
    for (auto const* const text : messages)
        EXPECT_EQ(Message::CreateFromMetaData(Testing::parsed(text)), nullptr);
}

// A single symbol with unique binding would keep the library loaded, and the second load would
// register nothing.
TEST(Unload, TakesTheClassesAwayAndLoadingBringsThemBack) {
    expectNothingThere();
    std::size_t classes = 0;
    for (int i = 0; i < 100 && !HasFailure(); ++i) {
        SCOPED_TRACE(i);
        auto* const library =
            dlopen(file, i % 2 == 0 ? RTLD_NOW | RTLD_LOCAL : RTLD_LAZY | RTLD_GLOBAL);
        ASSERT_NE(library, nullptr) << dlerror();
        if (i == 0)
            classes = Message::MsgFactory::Instance().size();
        EXPECT_GT(classes, 0U);
        EXPECT_EQ(Message::MsgFactory::Instance().size(), classes);
        for (auto const* const text : messages) {
            auto const message = Message::CreateFromMetaData(Testing::parsed(text));
            ASSERT_NE(message, nullptr);
            EXPECT_EQ(Testing::written(*message), text);
        }
        ASSERT_EQ(dlclose(library), 0) << dlerror();
        expectNothingThere();
    }
}

} // namespace
} // namespace Tolv::Msgs
