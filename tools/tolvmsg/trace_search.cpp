#include <tolv/core/metadata/conversion.h>

#include "trace_search.h"
#include "tree_path.h"

namespace Tolv::Tool {

namespace {

using MetaData::Element;

/// Searches a tree for a trace.
class TraceSearch {
public:
    /// @param wanted its path; empty for the first array under a key "trace"
    explicit TraceSearch(std::string_view wanted) : wanted_(wanted) {}

    std::optional<Trace> in(Element const& tree) { return below(tree, {}, nullptr); }

private:
    [[nodiscard]] bool isWanted(TreePath const& path) const {
        return wanted_.empty() ? path.endsWith("trace") : path.is(wanted_);
    }

    std::optional<Trace> below(Element const& node, TreePath const& path, Element const* parent) {
        if (parent != nullptr && isWanted(path))
            if (auto samples = samplesOf(node))
                return described(*std::move(samples), *parent);
        if (!wanted_.empty() && !path.leadsTo(wanted_))
            return {};
        if (node.isObject()) {
            for (auto const& member : node.object())
                if (auto found = below(member.value, {path, member.key()}, &node))
                    return found;
        } else if (node.isArray()) {
            for (unsigned int i = 0; i < node.array().size(); ++i)
                if (node.array()[i].isObject() || node.array()[i].isArray())
                    if (auto found = below(node.array()[i], {path, i}, &node))
                        return found;
        }
        return {};
    }

    static std::string textAt(Element const* object, char const* key) {
        auto const* const text = object != nullptr ? object->find(key) : nullptr;
        return text != nullptr && text->isString() ? std::string(text->text()) : std::string();
    }

    static Trace described(Samples samples, Element const& parent) {
        Trace trace;
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

    std::string_view wanted_;
};

} // namespace

std::optional<Trace> findTrace(Element const& tree, std::string_view path) {
    return TraceSearch(path).in(tree);
}

} // namespace Tolv::Tool
