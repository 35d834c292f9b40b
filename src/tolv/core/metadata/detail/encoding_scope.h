#pragma once

#include <span>
#include <vector>

#include <tolv/core/metadata/element.h>

namespace Tolv::MetaData::Detail {

/// While one exists, `putEncoded` of this thread only notes large blocks: for a tree that is
/// written to text at once, before the blocks change. The tree goes before this.
class EncodingScope {
public:
    EncodingScope() noexcept;
    EncodingScope(EncodingScope const&) = delete;
    EncodingScope& operator=(EncodingScope const&) = delete;
    /// Encodes what somebody has taken out of the tree; where memory runs out, it is empty.
    ~EncodingScope();

    /// The innermost of this thread, or null.
    [[nodiscard]] static EncodingScope* current() noexcept;

    /// @throws as `putEncoded`
    void put(Element& element, std::span<unsigned char const> bytes);

private:
    EncodingScope* outer_;
    std::vector<Element> noted_;
};

} // namespace Tolv::MetaData::Detail
