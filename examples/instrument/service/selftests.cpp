#include <memory>
#include <vector>

#include "parts.h"

namespace Example {

using namespace Tolv::Msgs;
using Structs::SelftestData;
using Tests = std::vector<SelftestData>;

namespace {

void runTest(Service& service, std::shared_ptr<Tests> const& tests, std::size_t index) {
    auto& test = tests->at(index);
    test.state = Structs::Selftest::running;
    Structs::SelftestTestState state;
    state.testStateId = test.id();
    state.testState = test.state();
    service.send(Attrs::SelftestStateMessage(state));

    // The test takes its time; the client hears of the end without asking.
    service.later(std::chrono::milliseconds(20), [&service, tests, index] {
        auto& ended = tests->at(index);
        ended.state = Structs::Selftest::passed;
        ended.result = "level 0.02 dB off";
        Structs::SelftestTestResult result;
        result.testResultId = ended.id();
        result.testResultName = ended.name();
        result.testResult = ended.result();
        service.send(Attrs::SelftestResultMessage(result));
    });
}

} // namespace

void offerSelftests(Service& service) {
    using namespace Structs::Selftest;
    auto const tests = std::make_shared<Tests>(Tests{
        {1, "power supplies", true, passed, "all within 2 %"},
        {2, "synthesizer lock", true, failed, "no lock above 5.9 GHz"},
        {3, "RF loop", false, notRun, ""},
    });

    service.on<Attrs::SelftestEnableMessage>([&service, tests](auto const& request) {
        auto const& wanted = request.payload();
        for (std::size_t i = 0; i < tests->size(); ++i) {
            if ((*tests)[i].id() != wanted.testEnableId())
                continue;
            (*tests)[i].enable = wanted.testEnable() != 0;
            if ((*tests)[i].enable())
                runTest(service, tests, i);
            return;
        }
        throw Tolv::Exception::InvalidParameter("there is no self-test " +
                                                std::to_string(wanted.testEnableId()));
    });
    service.on<Attrs::AttrListRequestMessage>("selftests", [&service, tests](auto const&) {
        MessagesArray<Attrs::SelftestMessage> all;
        for (auto const& test : *tests)
            all.messages.edit().emplace_back(test);
        service.send(Attrs::SelftestBatchMessage(all));
    });
}

} // namespace Example
