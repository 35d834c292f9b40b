#include <attributes/analyzer.h>
#include <common/programs.h>

#include "parts.h"

/// A simulated instrument, for one client.
int main(int argc, char** argv) {
    return Example::serve(argc, argv, [](Example::Service& service) {
        for (auto const offer :
             {Example::offerHandshake, Example::offerApplications, Example::offerScripts,
              Example::offerChassis, Example::offerAnalyzer, Example::offerHardware,
              Example::offerTriggers, Example::offerSelftests, Example::offerEngine,
              Example::offerForwarder, Example::offerEnd})
            offer(service);
    });
}
