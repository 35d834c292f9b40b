#include <cstdio>
#include <stdexcept>
#include <system_error>

#include <CLI/CLI.hpp>

#include "commands.h"
#include "input.h"
#include "line_reader.h"
#include "text.h"
#include "trace_choice.h"

#include <tolv/core/metadata/conversion.h>
#include <tolv/core/metadata/detail/read_hooks.h>

namespace Tolv::Tool {

namespace {

using MetaData::Element;

constexpr auto mostLineBytes = std::size_t{1} << 30U;

/// Walks a tree to a trace.
class TraceSearch {
public:
    /// @param wanted its path; empty: the first array under the key "trace"
    explicit TraceSearch(std::string const& wanted) : wanted_(wanted) {}

    std::optional<Trace> in(Element const& tree) { return below(tree, {}, nullptr); }

private:
    std::optional<Trace> below(Element const& node, std::string const& path,
                               Element const* parent) {
        if (parent != nullptr && (wanted_.empty() ? path.ends_with(".trace") : path == wanted_))
            if (auto samples = samplesOf(node))
                return described(*std::move(samples), path, *parent);
        if (!wanted_.empty() && !wanted_.starts_with(path))
            return {};
        if (node.isObject()) {
            for (auto const& member : node.object())
                if (auto found =
                        below(member.value, MetaData::Detail::pathBelow(path, member.key()), &node))
                    return found;
        } else if (node.isArray()) {
            for (unsigned int i = 0; i < node.array().size(); ++i)
                if (node.array()[i].isObject() || node.array()[i].isArray())
                    if (auto found =
                            below(node.array()[i], path + '[' + std::to_string(i) + ']', &node))
                        return found;
        }
        return {};
    }

    static std::string textAt(Element const* object, char const* key) {
        auto const* const text = object != nullptr ? object->find(key) : nullptr;
        return text != nullptr && text->isString() ? std::string(text->text()) : std::string();
    }

    static Trace described(Samples samples, std::string const& path, Element const& parent) {
        Trace trace;
        trace.path = path;
        trace.samples = std::move(samples);
        auto const* const about = parent.find("AttributeMetaData");
        trace.name = textAt(about, "Name");
        trace.unit = textAt(about, "CurrentBroadcastUnit");
        auto const* const segments = parent.find("segments");
        if (segments == nullptr || !segments->isArray())
            return trace;
        for (auto const& segment : segments->array()) {
            auto const* const offset = segment.find("offset");
            auto const* const length = segment.find("length");
            std::pair<unsigned long long, unsigned long long> run;
            if (offset != nullptr && length != nullptr && TryGetAs(*offset, run.first) &&
                TryGetAs(*length, run.second))
                trace.segments.push_back(run);
        }
        return trace;
    }

    std::string const& wanted_;
};

} // namespace

void TraceChoice::addOptions(CLI::App& command) {
    filter_.addOptions(command);
    command.add_option("--line", line_, "The message in this line, from 1")
        ->check(CLI::PositiveNumber)
        ->option_text("NUMBER")
        ->group("Filters");
    command.add_option("--path", path_, "The array there: Data.iv (default: the first \"trace\")")
        ->group("Filters");
    command.add_option("FILE", file_, "File to read; \"-\", the default, is the standard input")
        ->type_name("");
}

std::optional<Trace> TraceChoice::find(Classes const& classes) {
    filter_.resolve(classes);
    try {
        Input const input(file_);
        LineReader reader(input.descriptor(), mostLineBytes, [] {});
        LineReader::Line line;
        for (std::uint64_t number = 1; reader.next(line); ++number) {
            if (line_ != 0 && number != line_)
                continue;
            auto const parsed = parse(line.text);
            if (parsed.error.empty() && filter_.takes(parsed))
                if (auto trace = TraceSearch(path_).in(parsed.input)) {
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
    auto const complaint = "tolvmsg: no such trace in " +
                           (line_ != 0 ? "line " + std::to_string(line_) + " of " : std::string()) +
                           Input::name(file_) + (path_.empty() ? "" : " at " + harmless(path_)) +
                           '\n';
    std::fputs(complaint.c_str(), stderr);
    return {};
}

} // namespace Tolv::Tool
