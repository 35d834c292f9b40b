#include <array>
#include <optional>
#include <set>
#include <string_view>

#include <fcntl.h>

#include "commands.h"
#include "findings.h"
#include "ids.h"
#include "line_views.h"
#include "schema.h"
#include "trace_output.h"
#include "tree_diff.h"

#include <tolv/core/metadata/json.h>
#include <tolv/core/utf8.h>

#include "fuzzing.h"

namespace {

using namespace Tolv;
using namespace Tolv::Tool;
using Fuzzing::require;

/// Nothing in the text moves a cursor, turns text around or is invisible.
void requireHarmless(std::string_view text) {
    constexpr std::array<std::string_view, 9> forbidden{
        "\xE2\x80\x8B", "\xE2\x80\x8F", "\xE2\x80\xA8", "\xE2\x80\xAA", "\xE2\x80\xAE",
        "\xE2\x81\xA6", "\xE2\x81\xA9", "\xEF\xBB\xBF", "\xC2\x9B"};
    require(findInvalidUtf8(text) == text.npos, "an output is not valid UTF-8");
    for (char const c : text)
        require((c != 0x7F && static_cast<unsigned char>(c) >= 0x20) || c == '\n',
                "an output holds a control character");
    for (auto const one : forbidden)
        require(text.find(one) == text.npos, "an output holds a harmful character");
}

std::optional<Samples> samplesAt(MetaData::Element const& tree) {
    auto const* const data = tree.find("Data");
    auto const* const trace = data != nullptr ? data->find("trace") : nullptr;
    return trace != nullptr ? samplesOf(*trace) : std::nullopt;
}

/// decode and lint.
void checkLine(std::string_view text, Classes const& classes, CapturedCout& printed) {
    auto const line = examine(printed, text);
    for (auto const& one : findingsOf(line, classes)) {
        require(one.path.size() < 8192, "a path has no bound");
        requireHarmless(one.found);
    }
    try {
        requireHarmless(textOf(line, {"log", 1}, classes, Style::ofStandardOutput()));
        auto const row = jsonOf(line, {"log", 1}, classes);
        requireHarmless(row);
        MetaData::Element tree;
        MetaData::ReaderJson::Read(tree, row);
    } catch (Exception::InvalidParameter const&) { // the message holds what JSON cannot
    }
    // As many samples are exported as a reader takes.
    auto const read = samplesAt(line.tree);
    auto const exported = samplesAt(line.input);
    require(!read || !exported || read->size() == 0 || read->size() == exported->size(),
            "another number of samples is exported than read");
}

void checkDiff(MetaData::Element const& left, MetaData::Element const& right) {
    require(differencesOf(left, left, {}, {}).empty(), "a tree differs from itself");
    auto const all = differencesOf(left, right, {}, {"ignored", "Data.ignored"});
    auto const back = differencesOf(right, left, {}, {"ignored", "Data.ignored"});
    require(all.size() == back.size(), "there are other differences the other way round");
    for (auto const& one : all) {
        requireHarmless(one.left);
        requireHarmless(one.right);
    }
}

void checkExport(MetaData::Element const& tree, std::string_view path) {
    static Output nowhere(::open("/dev/null", O_WRONLY));
    if (auto const trace = findTrace(tree, path)) {
        writeCsv(*trace, {0, 1}, nowhere);
        writeRaw(trace->samples, nowhere);
        nowhere.flush();
    }
}

void checkSchema(std::string_view id, Classes const& classes) {
    try {
        static std::set<unsigned long long> seen; // each class has one schema, which takes long
        auto const& known = resolveClass(classes, id);
        if (seen.insert(known.id).second)
            requireHarmless(indentedJson(schemaOf(classes, descriptionOf(known))));
    } catch (UsageError const& e) {
        requireHarmless(e.what());
    }
}

} // namespace

// The input is two lines of logs, then a path, then an id.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Classes const classes;
    CapturedCout printed;
    Fuzzing::Input input(data, size);
    auto const left = input.until('\n');
    auto const right = input.until('\n');
    auto const path = input.until('\n');
    checkLine(left, classes, printed);
    checkLine(right, classes, printed);
    auto const before = parse(left);
    auto const after = parse(right);
    checkDiff(before.input, after.input);
    checkExport(before.input, {});
    checkExport(before.input, path);
    checkSchema(input.until('\n'), classes);
    return 0;
}
