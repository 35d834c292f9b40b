#include <attributes/analyzer.h>
#include <common/programs.h>

/// Serves a handful of attributes to one client.
int main(int argc, char** argv) { return Example::serve(argc, argv, Example::offerAnalyzer); }
