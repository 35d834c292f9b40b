#include <algorithm>
#include <vector>

#include <tolv/core/metadata/detail/read_hooks.h>

#include "text.h"
#include "tree_path.h"

namespace Tolv::Tool {

namespace {

std::string entryText(std::size_t index) { return '[' + std::to_string(index) + ']'; }

} // namespace

void TreePath::appendStep(std::string& out) const {
    if (isEntry_) {
        out.append(entryText(index_));
        return;
    }
    if (!out.empty())
        out.push_back('.');
    out.append(key_.size() > mostKeyBytes ? quoted(key_, mostKeyBytes)
                                          : MetaData::Detail::pathBelow({}, key_));
}

std::string TreePath::text() const {
    std::vector<TreePath const*> steps;
    for (auto const* at = this; at->outer_ != nullptr; at = at->outer_)
        steps.push_back(at);
    std::reverse(steps.begin(), steps.end());
    std::string out;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        if (i == mostSteps / 2 && steps.size() > mostSteps) {
            out.append("...");
            i = steps.size() - mostSteps / 2;
        }
        steps[i]->appendStep(out);
    }
    return out;
}

std::size_t TreePath::matched(std::string_view text) const {
    if (outer_ == nullptr)
        return 0;
    auto const before = outer_->matched(text);
    if (before == nowhere)
        return nowhere;
    auto const rest = text.substr(before);
    if (!isEntry_ && key_.size() > rest.size()) // cannot match; avoids copying the key
        return nowhere;
    auto step = isEntry_ ? entryText(index_) : MetaData::Detail::pathBelow({}, key_);
    if (!isEntry_ && before > 0)
        step.insert(0, ".");
    if (!rest.starts_with(step))
        return nowhere;
    auto const end = before + step.size();
    // A plain key must not match the beginning of a longer key.
    return end == text.size() || text[end] == '.' || text[end] == '[' ? end : nowhere;
}

} // namespace Tolv::Tool
