#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Tolv::Tool {

/// Where an element stands in a tree that is being walked: the last step, and the path before it,
/// which lies on the stack of the walk. A step costs nothing but these few words, so that a key is
/// not copied for each element below it; the text is made for what is shown only.
class TreePath {
public:
    /// The root.
    TreePath() = default;
    TreePath(TreePath const&) = delete;
    TreePath& operator=(TreePath const&) = delete;

    /// The element under `key` of the object at `outer`. Both outlive this object.
    TreePath(TreePath const& outer, std::string_view key) : outer_(&outer), key_(key) {}
    /// The entry of the array at `outer`, which outlives this object.
    TreePath(TreePath const& outer, std::size_t index)
        : outer_(&outer), index_(index), isEntry_(true) {}

    /// "Data.Messages[2].trace"; a key that is no plain word stands there in quotes. A longer key
    /// than `mostKeyBytes` is cut, and of a path of more than `mostSteps` steps the middle is left
    /// out: the text has a bound, whatever a peer sends.
    [[nodiscard]] std::string text() const;

    /// Whether the whole path, with nothing cut, is written so.
    [[nodiscard]] bool is(std::string_view text) const { return matched(text) == text.size(); }
    /// Whether `text` begins with it, so that it may name an element below.
    [[nodiscard]] bool leadsTo(std::string_view text) const { return matched(text) != nowhere; }
    /// Whether it ends with `key`, below an element other than the root.
    [[nodiscard]] bool endsWith(std::string_view key) const {
        return outer_ != nullptr && outer_->outer_ != nullptr && !isEntry_ && key_ == key;
    }

    static constexpr std::size_t mostKeyBytes = 80;
    static constexpr std::size_t mostSteps = 16;

private:
    static constexpr auto nowhere = static_cast<std::size_t>(-1);

    /// How many bytes of `text` the path makes up, or `nowhere` when the text begins otherwise.
    [[nodiscard]] std::size_t matched(std::string_view text) const;
    void appendStep(std::string& out) const;

    TreePath const* outer_ = nullptr; ///< null for the root
    std::string_view key_;
    std::size_t index_ = 0;
    bool isEntry_ = false;
};

} // namespace Tolv::Tool
