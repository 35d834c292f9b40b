#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <unordered_map>
#include <vector>

#include <CLI/CLI.hpp>

#include "commands.h"
#include "examined_line.h"
#include "filter.h"
#include "ids.h"
#include "input.h"
#include "json_object.h"
#include "line_bound.h"
#include "line_match.h"
#include "number_text.h"
#include "options.h"
#include "progress.h"
#include "style.h"
#include "text.h"
#include "tree_diff.h"

namespace Tolv::Tool {

namespace {

struct Options {
    bool json = false;
    Tolerance tolerance;
    std::vector<std::string> ignored;
    LineBound bound;
    Filter filter;
    std::string left;
    std::string right;
};

/// One message of a log, or a line that is not a message.
struct Entry {
    std::string_view text;
    std::uint64_t line; ///< from 1
    std::optional<unsigned long long> id;
};

struct Log {
    std::string text;
    std::vector<Entry> entries;
};

Log readLog(std::string const& file, Options const& options, Output& out) {
    auto const limits = options.bound.limits();
    auto const& filter = options.filter;
    constexpr auto mostBytes = std::size_t{1} << 30U;
    Log log;
    try {
        log.text = Input(file).read(mostBytes + 1);
    } catch (std::system_error const& e) {
        throw std::runtime_error("cannot read " + Input::name(file) + ": " + e.code().message());
    }
    if (log.text.size() > mostBytes)
        throw std::runtime_error(Input::name(file) + " is larger than 1 GiB");

    // A single message may span several lines.
    std::string_view rest = log.text;
    auto const blank = [](std::string_view line) {
        return line.find_first_not_of(" \t\r\n") == line.npos;
    };
    auto const start = std::min(rest.find_first_not_of(" \t\r\n"), rest.size());
    auto const firstEnd = std::min(rest.find('\n', start), rest.size());
    if (!blank(rest.substr(firstEnd)) &&
        !parse(rest.substr(start, firstEnd - start), limits).error.empty())
        if (auto const whole = parse(rest, limits); whole.error.empty()) {
            if (filter.takes(whole))
                log.entries.push_back({rest, 1, whole.id});
            return log;
        }
    Progress progress(rest.size(), out);
    for (std::uint64_t number = 1; !rest.empty(); ++number) {
        auto const end = std::min(rest.find('\n'), rest.size());
        auto line = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        if (blank(line))
            continue;
        auto const parsed = parse(line, limits);
        if (filter.takes(parsed))
            log.entries.push_back({line, number, parsed.id});
        progress.update(log.text.size() - rest.size());
    }
    return log;
}

class Differ {
public:
    Differ(Options const& options, Classes const& classes, Output& out)
        : options_(options), classes_(classes), out_(out) {}

    int run() {
        auto const left = readLog(options_.left, options_, out_);
        auto const right = readLog(options_.right, options_, out_);
        std::uint64_t bytes = 0;
        Progress progress(left.text.size(), out_);
        std::size_t i = 0;
        std::size_t j = 0;
        auto const upTo = [&](std::size_t leftEnd, std::size_t rightEnd) {
            for (; i < leftEnd; ++i)
                alone(left.entries[i], true);
            for (; j < rightEnd; ++j)
                alone(right.entries[j], false);
        };
        for (auto const& [leftPlace, rightPlace] : pairsOf(left.entries, right.entries)) {
            upTo(leftPlace, rightPlace);
            compare(left.entries[i++], right.entries[j++]);
            progress.update(bytes += left.entries[leftPlace].text.size());
        }
        upTo(left.entries.size(), right.entries.size());
        if (changed_ + onlyLeft_ + onlyRight_ == 0)
            return success;
        if (!options_.json)
            out_.write(counted(left.entries.size(), "message", "messages") + " and " +
                       std::to_string(right.entries.size()) + ": " + std::to_string(changed_) +
                       " changed, " + std::to_string(onlyLeft_) + " only in the first, " +
                       std::to_string(onlyRight_) + " only in the second\n");
        return differing;
    }

private:
    static std::vector<std::pair<std::size_t, std::size_t>>
    pairsOf(std::vector<Entry> const& left, std::vector<Entry> const& right) {
        if (left.size() == 1 && right.size() == 1)
            return {{0, 0}}; // two messages
        std::unordered_map<std::string_view, std::uint32_t> contents;
        std::unordered_map<unsigned long long, std::uint32_t> kinds;
        auto const keysOf = [&](std::vector<Entry> const& entries) {
            std::vector<LineKey> keys;
            for (auto const& one : entries) {
                auto const content =
                    contents.try_emplace(one.text, static_cast<std::uint32_t>(contents.size()));
                std::uint32_t kind = 0;
                if (one.id)
                    kind = kinds.try_emplace(*one.id, static_cast<std::uint32_t>(kinds.size() + 1))
                               .first->second;
                keys.push_back({content.first->second, kind});
            }
            return keys;
        };
        auto const leftKeys = keysOf(left);
        return matchLines(leftKeys, keysOf(right));
    }

    [[nodiscard]] std::string nameOf(Entry const& entry) const {
        if (!entry.id)
            return "no message";
        auto const* const known = classes_.find(*entry.id);
        return known != nullptr ? known->name() : hexadecimal(*entry.id);
    }

    void alone(Entry const& entry, bool isLeft) {
        ++(isLeft ? onlyLeft_ : onlyRight_);
        if (options_.json) {
            auto row = begun(isLeft ? &entry : nullptr, isLeft ? nullptr : &entry);
            out_.write(row.add("difference", isLeft ? "only-left" : "only-right").text() + '\n');
            return;
        }
        out_.write("line " + std::to_string(entry.line) + " only in the " +
                   (isLeft ? "first" : "second") + "  " + style_.name(nameOf(entry)) + '\n');
    }

    void compare(Entry const& left, Entry const& right) {
        if (left.text == right.text)
            return;
        auto const before = parse(left.text, options_.bound.limits());
        auto const after = parse(right.text, options_.bound.limits());
        std::vector<Difference> all;
        if (before.error.empty() && after.error.empty())
            all = differencesOf(before.input, after.input, options_.tolerance, options_.ignored);
        else
            all.push_back({Difference::Kind::changed,
                           {},
                           quoted(left.text, 60),
                           quoted(right.text, 60),
                           {},
                           {}});
        if (all.empty())
            return;
        ++changed_;
        if (options_.json) {
            for (auto const& one : all)
                out_.write(asJson(one, left, right));
            return;
        }
        out_.write("line " + std::to_string(left.line) +
                   (left.line != right.line ? " and " + std::to_string(right.line) : "") + "  " +
                   style_.name(nameOf(left)) + '\n');
        std::size_t paths = 0;
        for (auto const& one : all)
            paths = std::max(paths, std::min<std::size_t>(width(harmless(one.path)), 48));
        for (auto const& one : all)
            out_.write("  " + padded(harmless(one.path), paths) + "  " + asText(one) + '\n');
    }

    static std::string asText(Difference const& one) {
        switch (one.kind) {
        case Difference::Kind::onlyLeft:
            return "only in the first: " + one.left;
        case Difference::Kind::onlyRight:
            return "only in the second: " + one.right;
        case Difference::Kind::length:
            return one.left + " -> " + one.right + " samples";
        case Difference::Kind::samples:
            return asText(*one.samples) + " (" + one.left + " -> " + one.right + ')';
        case Difference::Kind::changed:
            break;
        }
        return one.left + " -> " + one.right +
               (one.amount ? "  (by " + numberText(*one.amount) + ')' : "");
    }

    static std::string asText(SampleDifference const& samples) {
        constexpr std::size_t mostShown = 6;
        auto text = counted(samples.count, "sample", "samples") + " at ";
        for (std::size_t i = 0; i < std::min(samples.runs.size(), mostShown); ++i) {
            auto const& [first, last] = samples.runs[i];
            text += (i > 0 ? ", " : "") + std::to_string(first) +
                    (first != last ? ".." + std::to_string(last) : "");
        }
        if (samples.runCount > mostShown)
            text += ", ... up to " + std::to_string(samples.last);
        return text + ", most by " + numberText(samples.most) + " at " + std::to_string(samples.at);
    }

    /// @param left null if there is none
    static JsonObject begun(Entry const* left, Entry const* right) {
        JsonObject row;
        if (left != nullptr)
            row.add("left", left->line);
        else
            row.addNull("left");
        if (right != nullptr)
            row.add("right", right->line);
        else
            row.addNull("right");
        if (auto const& id = (left != nullptr ? left : right)->id)
            row.add("id", hexadecimal(*id));
        return row;
    }

    static std::string asJson(Difference const& one, Entry const& left, Entry const& right) {
        constexpr char const* names[]{"changed", "only-left", "only-right", "length", "samples"};
        auto row = begun(&left, &right);
        row.add("difference", names[static_cast<int>(one.kind)]).add("path", one.path);
        if (one.kind != Difference::Kind::onlyRight)
            row.add("before", one.left);
        if (one.kind != Difference::Kind::onlyLeft)
            row.add("after", one.right);
        if (one.amount)
            row.addJson("by", jsonNumber(*one.amount));
        if (one.samples) {
            std::vector<std::string> runs;
            for (auto const& [first, last] : one.samples->runs)
                runs.push_back('[' + std::to_string(first) + ',' + std::to_string(last) + ']');
            row.add("count", one.samples->count).addJson("ranges", jsonArray(runs));
            row.add("rangeCount", one.samples->runCount);
            row.addJson("by", jsonNumber(one.samples->most)).add("at", one.samples->at);
        }
        return row.text() + '\n';
    }

    static std::string jsonNumber(double value) {
        return std::isfinite(value) ? numberText(value) : jsonString(numberText(value));
    }

    Options const& options_;
    Classes const& classes_;
    Output& out_;
    Style const style_ = Style::ofStandardOutput();
    std::uint64_t changed_ = 0;
    std::uint64_t onlyLeft_ = 0;
    std::uint64_t onlyRight_ = 0;
};

} // namespace

void addDiffCommand(CLI::App& app, Action& chosen) {
    auto const options = std::make_shared<Options>();
    auto* const command =
        app.add_subcommand("diff", "Shows the differences between two messages or two logs");
    command->add_flag("--json", options->json, "Print one JSON object per difference");
    command
        ->add_option("--tolerance", options->tolerance.absolute,
                     "Treat numbers as equal that differ by at most this")
        ->check(CLI::NonNegativeNumber)
        ->option_text("NUMBER");
    command
        ->add_option("--relative", options->tolerance.relative,
                     "The same, relative to the larger number, such as 1e-6")
        ->check(CLI::NonNegativeNumber)
        ->option_text("NUMBER");
    addRepeatable(*command, "--ignore", options->ignored,
                  "A key, or a path such as Data.Timestamp, to leave out");
    options->bound.addOption(*command);
    options->filter.addOptions(*command);
    command->add_option("FIRST", options->left, "File; \"-\" is the standard input")
        ->required()
        ->type_name("");
    command->add_option("SECOND", options->right, "File to compare it with")
        ->required()
        ->type_name("");
    command->footer(
        "A file holds one message, or a log with one line of JSON per message. In logs, equal\n"
        "lines are matched first, and between them lines with the same id; all others were\n"
        "inserted or deleted. The order of keys, the form of arrays (plain or encoded) and 1\n"
        "versus 1.0 do not matter. For arrays of numbers the output shows which samples differ,\n"
        "counted from 0, and the largest difference. Without differences there is no output.\n"
        "\n"
        "With --json a difference has \"left\" and \"right\", the line numbers (null if absent),\n"
        "\"id\", \"difference\" (changed, only-left, only-right, length, samples), \"path\" (not "
        "for\n"
        "whole lines), \"before\", \"after\" and, for numbers, \"by\". Samples have \"count\",\n"
        "\"ranges\" ([first, last], the first 100 of \"rangeCount\"), and \"at\", the index of "
        "the\n"
        "largest difference \"by\".\n"
        "\n"
        "Examples:\n"
        "  tolvmsg diff before.ndjson after.ndjson\n"
        "  tolvmsg diff --relative 1e-9 --ignore Timestamp before.ndjson after.ndjson\n"
        "  tolvmsg diff --family Attrs --tolerance 0.01 before.ndjson after.ndjson\n"
        "  tolvmsg example ConnectMessage | tolvmsg diff - mine.json\n"
        "  tolvmsg diff --json a.ndjson b.ndjson | jq -r 'select(.by > 1) | .path'\n"
        "\n"
        "Exit status: 0 no differences; 1 differences; 2 wrong usage, or unreadable file;\n"
        "3 the output cannot be written.");
    command->callback([&chosen, options] {
        chosen = [options](Output& out) {
            if (options->left == "-" && options->right == "-")
                throw UsageError("only one of the files can be the standard input");
            Classes const classes;
            options->filter.resolve(classes);
            return Differ(*options, classes, out).run();
        };
    });
}

} // namespace Tolv::Tool
