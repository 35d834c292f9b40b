#include <tolv/fields/polymorphic_reflector.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/errs/messages.h>
#include <tolv/msgs/utils/may_contain_error.h>

#include "support/captured_output.h"
#include "support/counters.h"
#include "support/messages.h"

namespace Tolv::Msgs {
namespace {

using Errs::GenericErrorData;
using Errs::GenericErrorMessage;
using MetaData::Element;
using Testing::CapturedOutput;
using Testing::Counted;
using Testing::parsed;
using Testing::readInto;
using Testing::textOf;
using Testing::thrownBy;
using Testing::written;
using Utils::MayContainError;

/// A user's error class that carries its cause.
class UserError : public MessageFamily<Errs::ErrorMessage, 0x7E60> {
public:
    using MessageFamily::MessageFamily;
};

struct CausedErrorData : MayContainError {
    Reflector<int> level{this, "level"_key, Required};
};

using CausedErrorMessage = PayloadMessageHelper<UserError, CausedErrorData, 1>;

} // namespace

template class PayloadMessageHelper<UserError, CausedErrorData, 1>;

namespace {

constexpr auto invalid = "MetaData didn't contain a valid ErrorMessage structure";
constexpr auto reported =
    R"({"Error":{"MessageID":1407374883553281,"Sender":["slot1"],"Data":{"ErrorLevel":2,)"
    R"("ErrorCategory":1,"ErrorNumber":-7,"ErrorDescription":"too hot","Timestamp":"now"}}})";

MayContainError holding(char const* text) {
    MayContainError record;
    readInto(record, text);
    return record;
}

TEST(PolymorphicReflector, StartsWithoutMessage) {
    MetaData::PolymorphicReflector<Errs::ErrorMessage> required(nullptr, "Error", true);
    EXPECT_TRUE(required.isRequired());
    MayContainError const record;
    for (auto const* const field : {&record.error, &std::as_const(required)}) {
        EXPECT_FALSE(field->initialized());
        EXPECT_EQ(field->name(), "Error");
    }
    EXPECT_FALSE(record.error.isRequired());
    EXPECT_FALSE(record.hasError());
    EXPECT_EQ(record.error.pointer(), nullptr);
    EXPECT_EQ(written(record), "{}");
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { record.error(); }),
              "Tolv::MetaData::PolymorphicReflector::operator()(): Error is not initialized in "
              "Utils::MayContainError");
}

TEST(PolymorphicReflector, HoldsTheMessageAsItsOwnClass) {
    auto const record = holding(reported);
    ASSERT_TRUE(record.hasError());
    auto const* const error = dynamic_cast<GenericErrorMessage const*>(&record.error());
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(error->payload().errorNumber(), -7);
    EXPECT_EQ(error->sender(), Address{"slot1"});
    EXPECT_EQ(written(record), reported);
}

struct Row {
    char const* text;
    bool keeps;  ///< whether the field keeps its value; otherwise it is reset
    bool throws; ///< whether reading throws
};

TEST(PolymorphicReflector, TakesNothingButMessagesOfItsClass) {
    for (Row const& row : {
             // No message at all: silent.
             Row{"{}", false, false},
             Row{R"({"error":{"MessageID":1407374883553281}})", false, false}, // case counts
             Row{R"({"Error":null})", false, false}, Row{R"({"Error":5})", false, false},
             Row{R"({"Error":1407374883553281})", false, false}, // a bare id
             Row{R"({"Error":"too hot"})", false, false}, Row{R"({"Error":[]})", false, false},
             Row{R"({"Error":[{"MessageID":1407374883553281}]})", false, false},
             Row{R"({"Error":{}})", false, false},
             Row{R"({"Error":{"Data":{"ErrorLevel":2}}})", false, false},
             Row{R"({"Error":{"MessageID":null}})", false, false},
             Row{R"({"Error":{"MessageID":"1407374883553281"}})", false, false},
             Row{R"({"Error":{"MessageID":-1}})", false, false},
             Row{R"({"Error":{"MessageID":1.5}})", false, false},
             Row{"3", false, false}, // the record itself is none
             Row{"null", false, false},
             // A message of a class that does not belong there: the field keeps its value.
             Row{R"({"Error":{"MessageID":0}})", true, true},
             Row{R"({"Error":{"MessageID":1407374883553282}})", true, true},       // not registered
             Row{R"({"Error":{"MessageID":844424930131972}})", true, true},        // a ping
             Row{R"({"Error":{"MessageID":1688849860263938,"Data":{"what":""}}})", // an exception
                 true, true},
             Row{R"({"Error":{"MessageID":1970324837171207,"Data":{}}})", true,
                 true}, // notification
         }) {
        SCOPED_TRACE(row.text);
        CapturedOutput const output;
        MayContainError fresh;
        auto record = holding(reported);
        for (auto* const target : {&fresh, &record})
            EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { readInto(*target, row.text); }),
                      row.throws ? invalid : "nothing thrown");
        EXPECT_FALSE(fresh.error.initialized());
        EXPECT_EQ(written(fresh), "{}");
        EXPECT_EQ(record.error.initialized(), row.keeps);
        EXPECT_EQ(written(record), row.keeps ? reported : "{}");
        EXPECT_EQ(output.text(), "");
    }
}

TEST(PolymorphicReflector, KeepsAMessageWhosePayloadDidNotRead) {
    auto const record = holding(R"({"Error":{"MessageID":1407374883553281}})");
    ASSERT_TRUE(record.hasError());
    EXPECT_EQ(record.error().errorType(), 1);
    EXPECT_EQ(written(record), R"({"Error":{"MessageID":1407374883553281}})");
}

TEST(PolymorphicReflector, CopiesShareTheMessageUntilOneGetsAnother) {
    auto record = holding(reported);
    MayContainError copy(record);
    MayContainError assigned;
    assigned = record;
    EXPECT_EQ(copy.error.pointer(), record.error.pointer());
    EXPECT_EQ(assigned.error.pointer(), record.error.pointer());

    readInto(record, R"({"Error":{"MessageID":1407374883553281}})");
    EXPECT_NE(copy.error.pointer(), record.error.pointer());
    EXPECT_EQ(written(copy), reported);

    copy = MayContainError();
    EXPECT_FALSE(copy.hasError());
    EXPECT_EQ(copy.error.pointer(), nullptr);
    EXPECT_EQ(written(assigned), reported);
}

TEST(PolymorphicReflector, TakesAndDropsAMessage) {
    MayContainError record;
    auto const message = std::make_shared<GenericErrorMessage>();
    record.error = message;
    EXPECT_EQ(&record.error(), message.get());
    EXPECT_EQ(message.use_count(), 2);

    record.error.uninit(); // marks it unset although the pointer is set
    EXPECT_FALSE(record.hasError());
    EXPECT_EQ(written(record), "{}");

    record.error = message;
    record.error.reset();
    EXPECT_FALSE(record.hasError());
    EXPECT_EQ(message.use_count(), 1);

    record.error = message;
    record.error = std::shared_ptr<Errs::ErrorMessage>();
    EXPECT_FALSE(record.error.initialized());

    record.error.init(); // marks it set although the pointer is empty
    EXPECT_EQ(written(record), "{}");
    EXPECT_EQ(thrownBy<Exception::InvalidOperation>([&] { record.error(); }),
              "Tolv::MetaData::PolymorphicReflector::operator()(): Error holds no message");
}

TEST(PolymorphicReflector, AbsentKeyCostsNoThrow) {
    MayContainError record;
    auto const tree = parsed("{}");
    Counted const counted;
    record.copyFromMetaData(tree);
    EXPECT_EQ(counted.exceptions(), 0U);
    EXPECT_EQ(counted.allocations(), 0U);
}

/// A record with `levels` nested errors, as a tree; the innermost is level 0.
Element nested(int levels) {
    Element cause;
    cause.makeObject(0);
    for (int level = 0; level < levels; ++level) {
        Element data(cause);
        data["level"].setSigned(level);
        Element message;
        message["MessageID"].setUnsigned(CausedErrorMessage::MsgID());
        message["Data"] = data;
        cause = Element();
        cause["Error"] = message;
    }
    return cause;
}

/// The levels of the nested errors, from the outermost to the innermost.
std::vector<int> levelsOf(MayContainError const& record) {
    std::vector<int> levels;
    for (auto const* at = &record; at->hasError();) {
        auto const* const error = dynamic_cast<CausedErrorMessage const*>(&at->error());
        if (error == nullptr)
            break;
        levels.push_back(error->payload().level());
        at = &error->payload();
    }
    return levels;
}

void expectAll(MayContainError const& record, int count) {
    auto const levels = levelsOf(record);
    ASSERT_EQ(levels.size(), static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        EXPECT_EQ(levels[static_cast<std::size_t>(i)], count - 1 - i);
}

TEST(PolymorphicReflector, CausesInOneAnother) {
    // 127 of them and the enclosing record take 255 levels of JSON; each adds two.
    auto const text = textOf(nested(127));
    auto const record = holding(text.c_str());
    expectAll(record, 127);
    EXPECT_EQ(written(record).size(), text.size());
}

TEST(PolymorphicReflector, WrongCauseTakesThePayloadThatHoldsIt) {
    auto tree = nested(2);
    tree["Error"]["Data"]["Error"]["MessageID"].setUnsigned(844424930131972); // a ping
    MayContainError record;
    record.copyFromMetaData(tree);
    auto const* const error = dynamic_cast<CausedErrorMessage const*>(&record.error());
    ASSERT_NE(error, nullptr);
    EXPECT_FALSE(error->Data.initialized());
}

} // namespace
} // namespace Tolv::Msgs
