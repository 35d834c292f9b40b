#pragma once

#include <complex>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <tolv/core/base64.h>
#include <tolv/core/bit_vectors.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/encoding.h>
#include <tolv/fields/reflector.h>

namespace Tolv::MetaData {

namespace Detail {

template <class T>
inline constexpr bool isPacked = isOneOf<T, bool, std::complex<bool>>;

/// The memory of the elements.
/// @throws Exception::InvalidParameter if its size exceeds an `unsigned int`.
template <class T>
std::span<unsigned char const> bytesOf(std::vector<T> const& values) {
    auto const size = values.size() * sizeof(T);
    if (size > std::numeric_limits<unsigned int>::max())
        throw Exception::InvalidParameter("an array of " + std::to_string(size) +
                                          " bytes is too large for the encoded form");
    return {reinterpret_cast<unsigned char const*>(values.data()), size};
}

/// The elements as base64 text: the memory of the vector, or its bits packed.
template <class T>
void encodeElements(std::vector<T> const& values, std::string& text) {
    if constexpr (isPacked<T>) {
        encodeBits(values, text);
    } else {
        auto const bytes = bytesOf(values);
        Base64::encode(bytes.data(), bytes.size(), text);
    }
}

/// Encodes directly into the tree, without an intermediate string if possible.
/// @param values to be encoded
/// @param element receives the text
/// @param field holds `values`; null if they may change before the tree is written
template <class T>
void encodeElements(std::vector<T> const& values, Element& element,
                    [[maybe_unused]] ReflectorBase const* field) {
    if constexpr (isPacked<T>) {
        std::string text;
        encodeBits(values, text);
        element.setString(text);
    } else {
        putEncoded(element, bytesOf(values), field);
    }
}

/// The elements of `text`. The text determines their number; for packed bits, `count` must match.
template <class T>
std::vector<T> decodeElements(std::string_view text, [[maybe_unused]] unsigned long long count) {
    std::vector<T> values;
    if constexpr (isPacked<T>) {
        decodeBits(text, count, values);
    } else {
        // A vector zero-fills its memory before it can be written. For a large vector that costs
        // more than copying through a block that stays in the cache.
        values.reserve(Base64::decodedSize(text) / sizeof(T));
        auto const append = [](void* context, unsigned char const* bytes, std::size_t size) {
            auto const* const elements = reinterpret_cast<T const*>(bytes);
            auto& all = *static_cast<std::vector<T>*>(context);
            all.insert(all.end(), elements, elements + size / sizeof(T));
        };
        static_assert(Base64::pieceSize % sizeof(T) == 0);
        Base64::decodePieces(text, append, &values);
    }
    return values;
}

} // namespace Detail

/// The encoded form of an array: an object in place of a JSON array. `T` is one of `bool`,
/// `std::complex<bool>`, `int`, `double` and `std::complex<double>`.
template <class T>
class Base64Encoder : public MirroredObject {
    static_assert(Detail::encodedTag<T> != 0, "this type has no encoded form");

    /// `Reflector<U>`, instantiated only with the encoder, not when this header is included; see
    /// instances.h.
    template <class U>
    using Field = Reflector<std::conditional_t<true, U, T>>;

public:
    Field<unsigned int> type{
        this, field<"type", Doc{"the number that identifies the type of the elements"}>, Required,
        Detail::encodedTag<T>};
    Field<unsigned long long> len{
        this, field<"len", Unit{"elements"}, Doc{"the number of encoded elements"}>, Required,
        0ULL};
    Field<std::string> base64{
        this, field<"base64", Doc{"the memory of the elements as base64; no elements if absent"}>,
        Optional};

    /// Encodes the elements: the vector's memory in little-endian order; booleans are packed, the
    /// first in the lowest bit.
    /// @throws Exception::InvalidParameter if the size in bytes exceeds an `unsigned int`.
    void encode(std::vector<T> const& values) {
        type.assign(Detail::encodedTag<T>);
        len.assign(static_cast<unsigned long long>(values.size()));
        base64.reset();
        if (!values.empty())
            Detail::encodeElements(values, base64.edit());
    }

    /// Decodes the elements. The size of the text determines their number, rounded down, not "len".
    /// However, if "len" is 0 there are no elements, and the number of booleans must match "len".
    /// @throws Exception::InvalidOperation if a required field is uninitialized, and
    /// Exception::InvalidParameter if the tag is that of another type or the text is invalid;
    /// `values` is then unchanged.
    void decode(std::vector<T>& values) const {
        std::string_view text;
        if (base64.initialized())
            text = base64();
        decode(values, base64.initialized() ? &text : nullptr);
    }

    /// Extension: decodes a text stored elsewhere; null if there is none.
    void decode(std::vector<T>& values, std::string_view const* text) const {
        if (type() != Detail::encodedTag<T>)
            throw Exception::InvalidParameter("an encoded array of type " + std::to_string(type()) +
                                              " where type " +
                                              std::to_string(Detail::encodedTag<T>) + " belongs");
        if (len() == 0 && (!Detail::isPacked<T> || text == nullptr)) {
            values.clear();
            return;
        }
        if (text == nullptr)
            base64.throwIfUninited("Tolv::MetaData::Reflector::operator()()");
        else
            values = Detail::decodeElements<T>(*text, len());
    }
};

} // namespace Tolv::MetaData
