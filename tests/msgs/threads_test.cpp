#include <atomic>
#include <exception>
#include <string>

#include <gtest/gtest.h>

#include <tolv/messages.h>
#include <tolv/msgs/attrs/message_type_mapper.h>
#include <tolv/msgs/excepts/converter_factory.h>

#include "support/examples.h"
#include "support/message_classes.h"
#include "support/messages.h"
#include "support/threads.h"

// All classes of the library; core/factory_threads_test.cpp tests the factory itself.
namespace Tolv::Msgs {
namespace {

using MetaData::Element;
using namespace Testing;

/// A class that comes and goes while the others are in use.
class Guest : public Message {
public:
    using Message::Message;
};

TEST(Threads, AllClassesWhileOthersComeAndGo) {
    auto const& trees = examples();
    std::vector<std::string> texts;
    for (auto const& tree : trees)
        texts.push_back(textOf(tree));
    std::atomic<int> faults = 0;
    inThreads(8, [&](unsigned int number) {
        auto const expect = [&](bool held) { faults += held ? 0 : 1; };
        for (std::size_t i = 0; i < trees.size(); ++i) {
            auto const at = (i + number * trees.size() / 8) % trees.size();
            auto const id = Identifier::toValue(0x7EAE, 0, 0, static_cast<unsigned short>(i % 4));
            Message::Registrar<Guest> const guest(id); // contended by all threads
            if (guest.registered())
                expect(received(messageText(id, "")) != nullptr);
            // The tree is shared by all threads, the text is read by each.
            auto const shared = Message::CreateFromMetaData(trees[at]);
            expect(shared != nullptr && written(*shared) == texts[at]);
            auto const own = received(texts[at]);
            expect(own != nullptr && written(*own) == texts[at]);
        }
    });
    EXPECT_EQ(faults, 0);
}

TEST(Threads, FirstCallsOfWhatIsMadeOnce) {
    std::atomic<int> faults = 0;
    inThreads(8, [&](unsigned int) {
        auto const expect = [&](bool held) { faults += held ? 0 : 1; };
        std::size_t classes = 0;
        forEachMessageClass([&]<class M>(std::type_identity<M>) {
            auto const* const row = findMessage(M::MsgID());
            expect(row != nullptr && row->id == M::MsgID() && row->make()->id() == row->id);
            ++classes;
        });
        expect(classes == catalogue().size());
        expect(messageTypeMapper.literal(Attrs::DoubleMessage::MsgID()) == "double");
        expect(messageTypeMapper.tryValue("no type") == nullptr);
    });
    EXPECT_EQ(faults, 0);
}

TEST(Threads, ExceptionsAreConverted) {
    std::atomic<int> faults = 0;
    inThreads(8, [&](unsigned int number) {
        using Excepts::ConverterFactory;
        for (int i = 0; i < 200; ++i) {
            auto const text = std::to_string(number) + ' ' + std::to_string(i);
            auto const message = ConverterFactory::asMessage(Exception::InvalidHandle(text));
            auto const unknown = ConverterFactory::asMessage(std::runtime_error(text));
            auto const sentOn =
                std::dynamic_pointer_cast<Excepts::ExceptionMessage>(sent(*message));
            auto const thrown = thrownBy<Exception::InvalidHandle>(
                [&] { ConverterFactory::throwException(sentOn); });
            auto const thrownUnknown = thrownBy<Exception::UnknownException>(
                [&] { ConverterFactory::throwException(unknown); });
            faults += thrown == text && thrownUnknown == text ? 0 : 1;
        }
    });
    EXPECT_EQ(faults, 0);
}

} // namespace
} // namespace Tolv::Msgs
