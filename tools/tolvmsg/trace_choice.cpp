#include <cstdio>
#include <stdexcept>
#include <system_error>

#include <CLI/CLI.hpp>

#include "commands.h"
#include "input.h"
#include "line_reader.h"
#include "text.h"
#include "trace_choice.h"

namespace Tolv::Tool {

void TraceChoice::addOptions(CLI::App& command) {
    bound_.addOption(command);
    filter_.addOptions(command);
    command.add_option("--line", line_, "The message in this line, counted from 1")
        ->check(CLI::PositiveNumber)
        ->option_text("NUMBER")
        ->group("Filters");
    command
        .add_option("--path", path_,
                    "Path of the array, such as Data.iv (default: the first \"trace\")")
        ->group("Filters");
    command.add_option("FILE", file_, "File to read; \"-\", the default, is the standard input")
        ->type_name("");
}

std::optional<Trace> TraceChoice::find(Classes const& classes) {
    filter_.resolve(classes);
    std::uint64_t tooLong = 0;
    try {
        Input const input(file_);
        LineReader reader(input.descriptor(), bound_.bytes(), [] {});
        LineReader::Line line;
        for (std::uint64_t number = 1; reader.next(line); ++number) {
            if (line_ != 0 && number != line_)
                continue;
            tooLong += line.tooLong ? 1 : 0;
            auto const parsed = parse(line.text, bound_.limits());
            if (parsed.error.empty() && filter_.takes(parsed))
                if (auto trace = findTrace(parsed.input, path_)) {
                    trace->line = number;
                    trace->id = parsed.id;
                    return trace;
                }
            if (line_ != 0)
                break;
        }
    } catch (std::system_error const& e) {
        throw std::runtime_error("cannot read " + Input::name(file_) + ": " + e.code().message());
    }
    auto const complaint =
        "tolvmsg: no such trace in " +
        (line_ != 0 ? "line " + std::to_string(line_) + " of " : std::string()) +
        Input::name(file_) + (path_.empty() ? "" : " at " + harmless(path_)) +
        (tooLong > 0 ? "; " + counted(tooLong, "line is", "lines are") + " longer than " +
                           std::to_string(bound_.bytes()) + " bytes"
                     : "") +
        '\n';
    std::fputs(complaint.c_str(), stderr);
    return {};
}

} // namespace Tolv::Tool
