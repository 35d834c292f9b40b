// The text of a message, read while a report is open: the reads give what they give without it, and
// what the report says holds together.

#include <string>
#include <string_view>

#include <tolv/core/limits.h>
#include <tolv/msgs/introspection/explanation.h>

#include "message_checks.h"

namespace {

using namespace Tolv;
using Fuzzing::require;
using MetaData::ReadEvent;
using MetaData::ReadReport;

/// All that a report says, as text. It must not throw.
std::string toldBy(ReadReport const& report) {
    std::string told;
    std::size_t count = 0;
    report.forEach([&](ReadEvent const& event) {
        ++count;
        require(event.path.ends_with(event.key) || event.path.ends_with('"'), "a strange path");
        require((event.outcome == ReadEvent::Outcome::absent) <= event.found.isNull(),
                "an absent field with a value");
        told += event.path + ' ' + std::to_string(static_cast<int>(event.outcome)) + ' ' +
                event.reason + event.cause + '\n';
    });
    require(count == report.size(), "the events are not as many as they are");
    require(report.events().size() == std::min(count, Limits{}.reportEntries), "other events");
    for (auto const& problems :
         {Msgs::Introspection::explain(report), Msgs::Introspection::unknownLiterals(report)})
        for (auto const& one : problems)
            told += one.path + ": " + one.problem + ' ' + one.found() + '\n';
    return told;
}

/// What the reads give, and what a report tells of them.
template <class Make>
std::string reported(Make const& make, std::string& told) {
    ReadReport const report;
    auto outcome = Fuzzing::outcomeOf(make);
    told = toldBy(report);
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    Fuzzing::silenceDiagnostics();
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    MetaData::Element tree;
    auto const byTree = [&] {
        MetaData::ReaderJson::Read(tree, text);
        return Msgs::Message::CreateFromMetaData(tree);
    };
    auto const atOnce = [&] { return Msgs::Message::CreateFromText(text); };
    auto const expected = Fuzzing::outcomeOf(byTree);
    std::string ofTree;
    std::string ofText;
    require(reported(byTree, ofTree) == expected, "a report changes what is read");
    require(reported(atOnce, ofText) == expected, "a report changes what is read at once");
    require(ofText == ofTree, "the same text is reported in two ways");

    // A tree that others may write to is copied by the report, and says the same.
    if (auto const message = expected.starts_with('{') ? atOnce() : nullptr) {
        MetaData::Element own;
        message->copyToMetaData(own);
        auto const shared = own;
        std::string ofOwn;
        std::string ofShared;
        reported([&] { return Msgs::Message::CreateFromMetaData(own); }, ofOwn);
        reported([&] { return Msgs::Message::CreateFromMetaData(shared); }, ofShared);
        require(ofOwn == ofShared, "a tree and its copy are reported in two ways");
    }
    return 0;
}
