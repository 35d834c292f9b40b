#include <iomanip>

#include "chapters.h"

namespace Example {

using namespace Tolv::Msgs;
using namespace Tolv::Msgs::Structs;

namespace {

std::string describe(MessagesArray<Attrs::SelftestMessage> const& tests) {
    static char const* const words[] = {"passed", "FAILED", "running", "not run"};
    std::ostringstream text;
    for (auto const& message : tests.messages()) {
        auto const& test = message.payload();
        text << test.id() << ' ' << std::left << std::setw(18) << test.name() << std::setw(9)
             << words[test.state()] << test.result() << (test.enable() ? "" : "(disabled)") << '\n';
    }
    return text.str();
}

} // namespace

void selftests(Dialogue& dialogue) {
    dialogue.heading("Self-tests: what do they say?");
    Attrs::AttrListRequestMessage const request({}, {"instrument", "selftests"});
    auto const before = dialogue.ask<Attrs::SelftestBatchMessage>(request);
    check("the self-tests", describe(before->payload()),
          "1 power supplies    passed   all within 2 %\n"
          "2 synthesizer lock  FAILED   no lock above 5.9 GHz\n"
          "3 RF loop           not run  (disabled)\n");
    dialogue.note(describe(before->payload()));

    SelftestTestEnable enable;
    enable.testEnableId = 3;
    enable.testEnable = 1;
    auto const started =
        dialogue.ask<Attrs::SelftestStateMessage>(Attrs::SelftestEnableMessage(enable));
    check("state of the test", started->payload().testState(), int(Selftest::running));
    auto const result = dialogue.hear<Attrs::SelftestResultMessage>();
    check("the test that has ended", result->payload().testResultId(), 3);
    check("its result", result->payload().testResult(), "level 0.02 dB off");
}

} // namespace Example
