#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Tolv::Tool {

/// The path of an element during a walk over a tree: its last step, linked to the enclosing path on
/// the stack of the walk. A step takes only a few words and copies no keys; the text is built only
/// for output.
class TreePath {
public:
    /// The root.
    TreePath() = default;
    TreePath(TreePath const&) = delete;
    TreePath& operator=(TreePath const&) = delete;

    /// The element under `key` of the object at `outer`. Both must outlive this object.
    TreePath(TreePath const& outer, std::string_view key) : outer_(&outer), key_(key) {}
    /// The entry of the array at `outer`, which must outlive this object.
    TreePath(TreePath const& outer, std::size_t index)
        : outer_(&outer), index_(index), isEntry_(true) {}

    /// For example "Data.Messages[2].trace"; keys that are not plain words are quoted. Keys longer
    /// than `mostKeyBytes` are cut, and the middle of a path of more than `mostSteps` steps is left
    /// out, so that a peer cannot make the text arbitrarily long.
    [[nodiscard]] std::string text() const;

    /// Whether `text` is the complete path, with nothing cut.
    [[nodiscard]] bool is(std::string_view text) const { return matched(text) == text.size(); }
    /// Whether `text` begins with the path, and so may denote an element below.
    [[nodiscard]] bool leadsTo(std::string_view text) const { return matched(text) != nowhere; }
    /// Whether the path ends with `key`, below an element other than the root.
    [[nodiscard]] bool endsWith(std::string_view key) const {
        return outer_ != nullptr && outer_->outer_ != nullptr && !isEntry_ && key_ == key;
    }

    static constexpr std::size_t mostKeyBytes = 80;
    static constexpr std::size_t mostSteps = 16;

private:
    static constexpr auto nowhere = static_cast<std::size_t>(-1);

    /// The length of the path within `text`, or `nowhere` if `text` does not begin with it.
    [[nodiscard]] std::size_t matched(std::string_view text) const;
    void appendStep(std::string& out) const;

    TreePath const* outer_ = nullptr; ///< null for the root
    std::string_view key_;
    std::size_t index_ = 0;
    bool isEntry_ = false;
};

} // namespace Tolv::Tool
