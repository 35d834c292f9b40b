#pragma once

#include <span>
#include <utility>
#include <vector>

#include <tolv/core/metadata/detail/encoding.h>

namespace Tolv::MetaData::Detail {

/// While a scope exists, `putEncoded` on this thread defers the encoding of large blocks of lasting
/// fields, for a tree that is immediately written to text. The tree must be destroyed before the
/// scope.
class EncodingScope {
public:
    /// @param root the record to be written
    explicit EncodingScope(MirroredObject const& root) noexcept;
    EncodingScope(EncodingScope const&) = delete;
    EncodingScope& operator=(EncodingScope const&) = delete;
    /// Encodes the blocks that are still referred to from outside the tree; if memory runs out,
    /// they become empty.
    ~EncodingScope();

    /// The innermost scope of this thread, or null.
    [[nodiscard]] static EncodingScope* current() noexcept;

    [[nodiscard]] bool isRoot(MirroredObject const& record) const noexcept {
        return &record == root_;
    }
    [[nodiscard]] bool isLasting(ReflectorBase const& field) const noexcept {
        return lasting_ != nullptr && field.isOwnedBy(*lasting_);
    }
    /// Sets the record whose fields are lasting; null for none. @return the previous one
    MirroredObject const* setLasting(MirroredObject const* record) noexcept {
        return std::exchange(lasting_, record);
    }

    /// Defers the encoding of `bytes`. @throws as `putEncoded`
    void put(Element& element, std::span<unsigned char const> bytes);

private:
    EncodingScope* outer_;
    MirroredObject const* root_;
    MirroredObject const* lasting_ = nullptr; ///< its fields outlive the text
    std::vector<Element> noted_;
};

} // namespace Tolv::MetaData::Detail
