#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <tolv/core/metadata/element.h>

#include "samples.h"

namespace Tolv::Tool {

/// An array in encoded form: an object with "type", "len" and "base64". It refers to its tree,
/// which must outlive it.
class EncodedArray {
public:
    /// Empty if the element is not an encoded array of a known type.
    static std::optional<EncodedArray> from(MetaData::Element const& element);

    /// "double", "complex bool", ...
    [[nodiscard]] char const* typeName() const noexcept;
    /// The number of elements that a reader takes from it; empty if a reader refuses it, because
    /// the size of its text does not match a "len" of booleans.
    [[nodiscard]] std::optional<std::size_t> count() const noexcept;
    /// The value of "len".
    [[nodiscard]] unsigned long long statedCount() const noexcept { return len_; }

    /// The first elements, at most `most`; none if a reader refuses the array.
    /// @throws Exception::InvalidParameter if the part of the text that holds them is not base64,
    /// or a bit after the last element is set
    [[nodiscard]] Samples samples(std::size_t most) const;
    /// The same, in the form of a plain array.
    [[nodiscard]] MetaData::Array values(std::size_t most) const;

private:
    enum class Type : unsigned int {
        boolean = 1,
        complexBoolean = 2,
        floating = 3,
        complexFloating = 4,
        integer = 9
    };

    EncodedArray(Type type, unsigned long long len, std::optional<std::string_view> text)
        : type_(type), len_(len), text_(text) {}

    [[nodiscard]] std::size_t bitsPerElement() const noexcept;

    Type type_;
    unsigned long long len_;
    std::optional<std::string_view> text_; ///< empty if absent
};

} // namespace Tolv::Tool
