#include <attributes/analyzer.h>
#include <common/programs.h>

/// Reads the attributes of tolv-attribute-server, and sets some.
int main(int argc, char** argv) {
    return Example::converse(argc, argv, [](Example::Dialogue& dialogue) {
        Example::readAttributes(dialogue);
        Example::setAttributes(dialogue);
    });
}
