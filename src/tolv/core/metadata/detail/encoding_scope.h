#pragma once

#include <span>
#include <utility>
#include <vector>

#include <tolv/core/metadata/detail/encoding.h>

namespace Tolv::MetaData::Detail {

/// While one exists, `putEncoded` of this thread only notes large blocks of lasting fields, for a
/// tree that is written to text at once. The tree must be destroyed first.
class EncodingScope {
public:
    /// @param root the record that is written
    explicit EncodingScope(MirroredObject const& root) noexcept;
    EncodingScope(EncodingScope const&) = delete;
    EncodingScope& operator=(EncodingScope const&) = delete;
    /// Encodes what somebody has taken out of the tree; where memory runs out, it is empty.
    ~EncodingScope();

    /// The innermost of this thread, or null.
    [[nodiscard]] static EncodingScope* current() noexcept;

    [[nodiscard]] bool isRoot(MirroredObject const& record) const noexcept {
        return &record == root_;
    }
    [[nodiscard]] bool isLasting(ReflectorBase const& field) const noexcept {
        return lasting_ != nullptr && field.isOwnedBy(*lasting_);
    }
    /// Takes another record as that whose fields last; null for none. @return that of before
    MirroredObject const* setLasting(MirroredObject const* record) noexcept {
        return std::exchange(lasting_, record);
    }

    /// @throws as `putEncoded`
    void put(Element& element, std::span<unsigned char const> bytes);

private:
    EncodingScope* outer_;
    MirroredObject const* root_;
    MirroredObject const* lasting_ = nullptr; ///< its fields outlive the text
    std::vector<Element> noted_;
};

} // namespace Tolv::MetaData::Detail
