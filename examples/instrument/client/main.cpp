#include <attributes/analyzer.h>
#include <common/programs.h>

#include "chapters.h"

/// A morning's work with tolv-instrument, each answer of which is checked.
int main(int argc, char** argv) {
    return Example::converse(argc, argv, [](Example::Dialogue& dialogue) {
        for (auto const chapter :
             {Example::handshake, Example::applications, Example::scripts, Example::chassis,
              Example::hardware, Example::selftests, Example::readAttributes,
              Example::setAttributes, Example::triggers, Example::engine, Example::forwarder,
              Example::failures, Example::end})
            chapter(dialogue);
    });
}
