#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include <tolv/core/export.h>

namespace Tolv::MetaData {

namespace Detail {

/// How the tree stores a short text: up to 14 bytes, then the length, then the tag. Two such texts
/// are equal if and only if both words are.
struct TextImage {
    std::uint64_t low = 0;
    std::uint64_t high = 0;

    friend constexpr bool operator==(TextImage const&, TextImage const&) = default;
};

inline constexpr std::size_t inlineTextCapacity = 14;
inline constexpr unsigned char inlineTextTag = 7;

constexpr TextImage imageOf(std::string_view text) {
    TextImage image;
    if (text.size() > inlineTextCapacity)
        return image; // the null image, which no stored text equals
    if (std::is_constant_evaluated()) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            auto const byte = static_cast<std::uint64_t>(static_cast<unsigned char>(text[i]));
            (i < 8 ? image.low : image.high) |= byte << (i % 8 * 8);
        }
    } else {
        // Overlapping words cover any size without a call or a loop.
        auto const* const bytes = text.data();
        auto const size = text.size();
        auto const load = [&]<class Word>(std::size_t at, Word word) {
            std::memcpy(&word, bytes + at, sizeof word);
            return std::uint64_t{word};
        };
        if (size >= 8) {
            image.low = load(0, std::uint64_t{});
            if (size > 8)
                image.high = load(size - 8, std::uint64_t{}) >> (16 - size) * 8;
        } else if (size >= 4) {
            image.low = load(0, std::uint32_t{}) | load(size - 4, std::uint32_t{})
                                                       << (size - 4) * 8;
        } else if (size != 0) {
            image.low = load(0, std::uint8_t{}) | load(size / 2, std::uint8_t{}) << size / 2 * 8 |
                        load(size - 1, std::uint8_t{}) << (size - 1) * 8;
        }
    }
    image.high |= std::uint64_t{text.size()} << 48U | std::uint64_t{inlineTextTag} << 56U;
    return image;
}

static_assert(std::endian::native == std::endian::little,
              "text images and the binary form of arrays are little-endian");

} // namespace Detail

/// A key to look up in an object: a view of its text and, precomputed, the form in which the tree
/// stores short texts. It owns nothing; the text must outlive it.
class KeyView {
public:
    /// A key with this text, which must be shorter than 4 GiB.
    // NOLINTNEXTLINE(google-explicit-constructor): a lookup accepts any text
    constexpr KeyView(std::string_view text)
        : image_(Detail::imageOf(text)), text_(text.data()),
          size_(static_cast<std::uint32_t>(text.size())) {}
    /// The same.
    // NOLINTNEXTLINE(google-explicit-constructor)
    KeyView(std::string const& text) : KeyView(std::string_view(text)) {}
    /// The same.
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr KeyView(char const* text) : KeyView(std::string_view(text)) {}

    /// The text.
    [[nodiscard]] constexpr std::string_view text() const { return {text_, size_}; }
    /// The form in which the tree stores a short text; meaningless for a long one.
    [[nodiscard]] constexpr Detail::TextImage const& image() const { return image_; }
    /// Whether the text has at most 14 bytes, and so is stored in the element itself.
    [[nodiscard]] constexpr bool isShort() const { return size_ <= Detail::inlineTextCapacity; }

private:
    Detail::TextImage image_;
    char const* text_;
    std::uint32_t size_;
};

/// A `KeyView` that lives as long as the program or library that defines it, so that all
/// objects of a class share it. It is made by the literal `"Name"_key`, at compile time, or by
/// `intern`.
class Key : public KeyView {
public:
    /// A key with this text, which must be a literal or live as long as the key.
    constexpr explicit Key(std::string_view staticText) : KeyView(staticText) {}
    explicit Key(std::string const&&) = delete; ///< the text would be destroyed first: use `intern`
    Key(Key const&) = delete;
    Key& operator=(Key const&) = delete;

    /// The unique key with this text, created on first use and kept until the process ends.
    /// Thread-safe.
    TOLV_CORE_API static Key const& intern(std::string_view text);

    /// The text as a string that lives until the process ends. Intended for diagnostics, not for
    /// hot paths. Thread-safe.
    [[nodiscard]] TOLV_CORE_API std::string const& name() const;
};

namespace Detail {

/// A literal as a template argument.
template <std::size_t N>
struct FixedText {
    char chars[N]{};

    // NOLINTNEXTLINE(google-explicit-constructor): made from a literal
    constexpr FixedText(char const (&literal)[N]) {
        for (std::size_t i = 0; i < N; ++i)
            chars[i] = literal[i];
    }

    [[nodiscard]] static constexpr std::size_t size() { return N - 1; }
    [[nodiscard]] constexpr std::string_view view() const { return {chars, N - 1}; }
};

template <FixedText Text>
inline constexpr Key keyOf{Text.view()};

} // namespace Detail

/// The key of a field and what else is said of the field, all of it in the type: see field.h. An
/// object of this class is empty.
template <Detail::FixedText Text, auto... Words>
struct FieldSpec {
    static_assert(Text.size() != 0, "the key of a field must not be empty");

    /// The key, for lookups.
    // NOLINTNEXTLINE(google-explicit-constructor): a key, wherever one is expected
    constexpr operator Key const&() const noexcept { return Detail::keyOf<Text>; }
};

inline namespace Literals {

/// `"MaxVersion"_key`: a key, made at compile time.
template <Detail::FixedText Text>
constexpr FieldSpec<Text> operator""_key() {
    return {};
}

} // namespace Literals

} // namespace Tolv::MetaData
