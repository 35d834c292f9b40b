#pragma once

#include <string_view>

#include <tolv/core/detail/arena.h>
#include <tolv/core/limits.h>
#include <tolv/core/metadata/element.h>

namespace Tolv::MetaData::Detail {

/// The tree of a text that is read only once. All of it lies in one arena and refers to the text,
/// so it costs a fraction of an ordinary tree. Elements copied out of it are independent.
class PassingTree {
public:
    /// @param text must outlive this object
    /// @param limits of the text
    /// @throws as `ReaderJson::Read`.
    PassingTree(std::string_view text, Limits const& limits);
    PassingTree(PassingTree const&) = delete;
    PassingTree& operator=(PassingTree const&) = delete;
    ~PassingTree();

    /// The value of the text. It must be neither modified nor moved from.
    [[nodiscard]] Element const& root() const noexcept { return root_; }

private:
    Tolv::Detail::Arena arena_;
    Element root_;
};

} // namespace Tolv::MetaData::Detail
