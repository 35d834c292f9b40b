#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <tolv/core/metadata/element.h>

/// @file
/// What the handles of element.h point at. Not installed.
namespace Tolv::MetaData::Detail {

/// A text too long for an element. Never changed once it is made, so always shared.
struct TextRep {
    std::atomic<std::uint32_t> refs{1};
    std::uint32_t size = 0;
    /// All of it is ASCII that stands for itself in JSON, so that nobody need look again.
    bool isPlain = false;
    bool isBorrowed = false; ///< this is a `BorrowedText`; else the text stands behind this

    [[nodiscard]] inline char const* chars() const noexcept;
    [[nodiscard]] char* own() noexcept { return reinterpret_cast<char*>(this + 1); }
};

/// A part of a text that was given to the reader, which it keeps alive.
struct BorrowedText : TextRep {
    char const* text = nullptr;
    std::shared_ptr<std::string const> owner;
};

inline char const* TextRep::chars() const noexcept {
    return isBorrowed ? static_cast<BorrowedText const*>(this)->text
                      : reinterpret_cast<char const*>(this + 1);
}

/// What arrays and objects have in common.
struct ContainerRep {
    std::atomic<std::uint32_t> refs{1};
    std::uint32_t size = 0;
    bool isObject = false;
    /// A writable reference into this container was handed out and may still be held by somebody:
    /// a copy must then have content of its own. A container that is not exposed has no exposed
    /// container below it.
    bool exposed = false;
    ContainerRep* link = nullptr; ///< chain of the containers that wait to be destroyed
};

struct alignas(Element) ArrayRep : ContainerRep {
    std::uint32_t capacity = 0;

    [[nodiscard]] Element* items() noexcept { return reinterpret_cast<Element*>(this + 1); }
};

/// A run of members that never moves.
struct alignas(Element) Chunk {
    Chunk* next = nullptr;
    std::uint32_t size = 0;
    std::uint32_t capacity = 0;

    [[nodiscard]] Member* members() noexcept { return reinterpret_cast<Member*>(this + 1); }
    [[nodiscard]] Member const* members() const noexcept {
        return reinterpret_cast<Member const*>(this + 1);
    }
};

/// Hash index of an object that is too large to be searched from end to end: open addressing, at
/// most half full.
struct alignas(Member*) Index {
    std::uint32_t mask = 0;

    [[nodiscard]] Member** slots() noexcept { return reinterpret_cast<Member**>(this + 1); }
};

static_assert(alignof(Index) <= alignof(std::max_align_t));

struct ObjectRep : ContainerRep {
    Index* index = nullptr; ///< present when `size` is above `linearLimit`
    Chunk* last = nullptr;
    Chunk first; ///< its members stand behind this structure, in the same allocation

    static constexpr std::uint32_t linearLimit = 32;
};

/// The ways into the handles, for the algorithms over trees, the reader and the message base.
struct Access {
    static ArrayRep*& rep(Array& array) noexcept { return array.rep_; }
    static ArrayRep* rep(Array const& array) noexcept { return array.rep_; }
    static ObjectRep*& rep(Object& object) noexcept { return object.rep_; }
    static ObjectRep* rep(Object const& object) noexcept { return object.rep_; }

    /// The container behind an array or object; null for an empty one and for other kinds.
    static ContainerRep* container(Element const& element) noexcept {
        if (element.isArray())
            return element.array_.rep_;
        return element.isObject() ? element.object_.rep_ : nullptr;
    }

    /// The same bits: `target` must be plain. What is counted is up to the caller.
    static void copyWords(Element const& source, Element& target) noexcept {
        target.copyWords(source);
    }
    static void forget(Element& element) noexcept { element.forget(); }
    static bool isPlain(Element const& element) noexcept { return element.isPlain(); }
    static bool isLongText(Element const& element) noexcept {
        return element.tag() == Element::tagLongText;
    }
    static TextRep* longText(Element const& element) noexcept { return element.longText_; }
    /// Makes `target` the text, of more than 14 bytes.
    static void putPlainText(Element& target, std::string_view text);
    static void putBorrowedText(Element& target, std::string_view text, bool isPlain,
                                std::shared_ptr<std::string const> owner);
    static void putLongText(Element& target, TextRep* text) noexcept {
        target.reset(0, Element::tagLongText);
        target.longText_ = text;
    }
    /// The text that stands in the element itself, 16 bytes of memory, or null.
    static char const* shortText(Element const& element) noexcept {
        return element.tag() == Element::tagText ? reinterpret_cast<char const*>(element.words_)
                                                 : nullptr;
    }
    static std::size_t shortTextSize(Element const& element) noexcept {
        return static_cast<std::size_t>(element.words_[1] >> 48U & 0xFFU);
    }

    /// Makes `target`, which is null, the text of `size` bytes, at most 14; 16 may be read at
    /// `bytes`.
    static void putShortText(Element& target, char const* bytes, std::size_t size) noexcept {
        std::memcpy(target.words_, bytes, sizeof target.words_);
        auto const shift = size * 8;
        auto const below = [](std::size_t bits) { return (std::uint64_t{1} << bits) - 1; };
        if (shift < 64)
            target.words_[0] &= below(shift);
        target.words_[1] &= shift > 64 ? below(shift - 64) : 0;
        target.words_[1] |= std::uint64_t{size} << 48U | std::uint64_t{Element::tagText} << 56U;
    }
    static void putContainer(Element& target, ContainerRep* container) noexcept {
        target.reset(0, container->isObject ? Element::tagObject : Element::tagArray);
        if (container->isObject)
            target.object_.rep_ = static_cast<ObjectRep*>(container);
        else
            target.array_.rep_ = static_cast<ArrayRep*>(container);
    }
    static bool hasImage(Element const& element, TextImage const& image) noexcept {
        return element.words_[0] == image.low && element.words_[1] == image.high;
    }
    static void putImage(Element& target, TextImage const& image) noexcept {
        target.words_[0] = image.low;
        target.words_[1] = image.high;
    }
    /// Whether two strings are equal.
    static bool equalTexts(Element const& left, Element const& right) noexcept {
        if (left.words_[1] != right.words_[1]) // another tag, or a short text of another size
            return false;
        return left.words_[0] == right.words_[0] ||
               (isLongText(left) && left.text() == right.text());
    }

    /// An array of the given elements, which are left null.
    static Element takeArray(std::span<Element> elements);

    /// An object of the given members, keys and children in turn, which are left null. When a key
    /// stands there twice, `duplicate` is its place among the members, else -1.
    static Element takeObject(std::span<Element> keysAndValues, std::ptrdiff_t& duplicate);

    /// An element that shares the content of `object` even where a copy would have content of its
    /// own. Only for reading, and only while nobody writes to the original.
    TOLV_CORE_API static Element alias(Object const& object) noexcept;
};

} // namespace Tolv::MetaData::Detail
