#pragma once

#include <functional>
#include <stdexcept>

#include "output.h"

namespace CLI {
class App;
}

namespace Tolv::Tool {

/// The exit status of the program, for scripts.
enum ExitStatus : int {
    success = 0,
    messagesLost = 1, ///< a line is not a valid message
    anyFinding = 1,   ///< lint found problems
    differing = 1,    ///< the two logs differ
    nothingFound = 1, ///< no such trace
    notAuthentic = 1, ///< the signature of a token does not match the key
    wrongUsage = 2,   ///< invalid command line, or an input cannot be read
    outputLost = 3    ///< the output cannot be written
};

/// The request is invalid; the text says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The action to run once the command line has been parsed. @return the exit status @throws
/// UsageError
using Action = std::function<int(Output&)>;

// One function per subcommand, each in its own file, adds the subcommand to the command line. If
// the subcommand is given, parsing sets `chosen`.
void addListCommand(CLI::App& app, Action& chosen);
void addExampleCommand(CLI::App& app, Action& chosen);
void addDecodeCommand(CLI::App& app, Action& chosen);
void addLintCommand(CLI::App& app, Action& chosen);
void addDiffCommand(CLI::App& app, Action& chosen);
void addPlotCommand(CLI::App& app, Action& chosen);
void addExportCommand(CLI::App& app, Action& chosen);
void addTokenCommand(CLI::App& app, Action& chosen);
void addSchemaCommand(CLI::App& app, Action& chosen);
void addCatalogueCommand(CLI::App& app, Action& chosen);

} // namespace Tolv::Tool
