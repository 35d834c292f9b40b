#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include <tolv/core/metadata/element.h>

#include "samples.h"

namespace Tolv::Tool {

/// An array in its encoded form: the object with "type", "len" and "base64". It refers to the tree
/// that it was found in.
class EncodedArray {
public:
    /// Empty when the element is no encoded array of a known type.
    static std::optional<EncodedArray> from(MetaData::Element const& element);

    /// "double", "complex bool", ...
    [[nodiscard]] char const* typeName() const noexcept;
    /// The number of elements that a reader takes from it; nothing when a reader refuses it, since
    /// its text has another size than "len" truth values take.
    [[nodiscard]] std::optional<std::size_t> count() const noexcept;
    /// What "len" says.
    [[nodiscard]] unsigned long long statedCount() const noexcept { return len_; }

    /// The first elements, at most `most`; none when a reader refuses the array.
    /// @throws Exception::InvalidParameter when the part of the text that holds them is no base64,
    /// or has a bit set behind the last element
    [[nodiscard]] Samples samples(std::size_t most) const;
    /// The same in the form that they have in a plain array.
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
    std::optional<std::string_view> text_; ///< nothing: absent
};

} // namespace Tolv::Tool
