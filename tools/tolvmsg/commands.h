#pragma once

#include <functional>
#include <stdexcept>

#include "output.h"

namespace CLI {
class App;
}

namespace Tolv::Tool {

/// What the program returns, for scripts.
enum ExitStatus : int {
    success = 0,
    messagesLost = 1, ///< not every line gave a message
    anyFinding = 1,   ///< a log is not clean
    differing = 1,    ///< two logs are not the same
    nothingFound = 1, ///< there is no such trace
    notAuthentic = 1, ///< the signature of a token is not that of the key
    wrongUsage = 2,   ///< the command line is wrong, or an input cannot be read
    outputLost = 3    ///< the output cannot be written
};

/// What was asked for makes no sense; the text says why.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What to do once the command line has been read. @return the exit status @throws UsageError
using Action = std::function<int(Output&)>;

// One function a subcommand, each in its own file: adds the subcommand to the command line, which
// sets `chosen` when the subcommand is given.
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
