#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include <tolv/core/detail/arena.h>
#include <tolv/core/metadata/element.h>

/// @file
/// The data behind the handles of element.h. Not installed.
namespace Tolv::MetaData::Detail {

/// A text too long for an element. Immutable, and therefore always shared.
struct TextRep {
    enum class Place : unsigned char {
        here,     ///< after this structure, in the same allocation
        borrowed, ///< this is a `BorrowedText`
        deferred, ///< this is a `DeferredText`
    };

    std::atomic<std::uint32_t> refs{1};
    std::uint32_t size = 0;
    /// Whether the text is known to be ASCII that needs no escape in JSON.
    bool isPlain = false;
    Place place = Place::here;
    /// Whether the text is destroyed with its tree regardless of references, so that it must be
    /// copied.
    bool isPassing = false;

    [[nodiscard]] inline char const* chars() noexcept;
    [[nodiscard]] char* own() noexcept { return reinterpret_cast<char*>(this + 1); }
};

/// A part of a text that was passed to the reader.
struct BorrowedText : TextRep {
    char const* text = nullptr;
    std::shared_ptr<std::string const> owner; ///< keeps the text alive; null in a `PassingTree`
};

/// A text that is the base64 of these bytes. The writer encodes them directly into its output; any
/// other access encodes them first. Only one thread may access the text before it is encoded.
struct DeferredText : TextRep {
    std::span<unsigned char const> bytes;
    std::unique_ptr<char[]> text; ///< null until encoded

    /// @throws std::bad_alloc
    void encode();
};

inline char const* TextRep::chars() noexcept {
    if (place == Place::here)
        return own();
    if (place == Place::borrowed)
        return static_cast<BorrowedText*>(this)->text;
    auto* const deferred = static_cast<DeferredText*>(this);
    if (deferred->text == nullptr)
        deferred->encode();
    return deferred->text.get();
}

/// The bytes still to be encoded for this text, or null.
inline std::span<unsigned char const> const* deferredBytes(TextRep const& text) noexcept {
    if (text.place != TextRep::Place::deferred)
        return nullptr;
    auto const& deferred = static_cast<DeferredText const&>(text);
    return deferred.text == nullptr ? &deferred.bytes : nullptr;
}

/// The common part of arrays and objects.
struct ContainerRep {
    std::atomic<std::uint32_t> refs{1};
    std::uint32_t size = 0;
    bool isObject = false;
    /// A writable reference into this container was handed out and may still exist, so copies must
    /// not share the content. A container that is not exposed contains no exposed container.
    bool exposed = false;
    std::uint32_t capacity = 0;   ///< number of children that fit after this structure
    ContainerRep* link = nullptr; ///< next container to be destroyed
};

/// Children never move, so that references to them remain valid while more are added. They fill the
/// memory after this structure, and then one chunk after another.
template <class Item>
struct Children : ContainerRep {
    Chunk<Item>* more = nullptr;
};

struct alignas(Element) ArrayRep : Children<Element> {
    [[nodiscard]] Element* items() noexcept { return reinterpret_cast<Element*>(this + 1); }
};

/// Hash index of an object that is too large for linear search: open addressing, at most half full.
struct alignas(Member*) Index {
    std::uint32_t mask = 0;

    [[nodiscard]] Member** slots() noexcept { return reinterpret_cast<Member**>(this + 1); }
};

static_assert(alignof(Index) <= alignof(std::max_align_t));

struct alignas(Element) ObjectRep : Children<Member> {
    Index* index = nullptr; ///< exists if `size` is above `linearLimit`

    static constexpr std::uint32_t linearLimit = 32;

    [[nodiscard]] Member* items() noexcept { return reinterpret_cast<Member*>(this + 1); }
};

/// Access to the private parts of the handles, for the tree algorithms, the reader and the message
/// base.
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

    /// Copies the bits. `target` must be plain; the caller maintains the reference counts.
    static void copyWords(Element const& source, Element& target) noexcept {
        target.copyWords(source);
    }
    static void forget(Element& element) noexcept { element.forget(); }
    static bool isPlain(Element const& element) noexcept { return element.isPlain(); }
    static bool isLongText(Element const& element) noexcept {
        return element.tag() == Element::tagLongText;
    }
    static TextRep* longText(Element const& element) noexcept { return element.longText_; }
    /// Makes `target` a string with this text of more than 14 bytes.
    static void putPlainText(Element& target, std::string_view text);
    static void putBorrowedText(Element& target, std::string_view text, bool isPlain,
                                std::shared_ptr<std::string const> owner);
    /// The same in a `PassingTree`, which does not keep the text alive.
    static void putPassingText(Element& target, std::string_view text, bool isPlain,
                               Tolv::Detail::Arena& arena);
    /// Makes `target` the base64 of `bytes`, which must remain unchanged until they are encoded.
    static void putDeferredText(Element& target, std::span<unsigned char const> bytes);
    /// Another reference to a text of more than 14 bytes, or a copy of one in a `PassingTree`.
    static TextRep* share(TextRep* text);
    static void putLongText(Element& target, TextRep* text) noexcept {
        target.reset(0, Element::tagLongText);
        target.longText_ = text;
    }
    /// The text if it is stored in the element itself (16 readable bytes), otherwise null.
    static char const* shortText(Element const& element) noexcept {
        return element.tag() == Element::tagText ? reinterpret_cast<char const*>(element.words_)
                                                 : nullptr;
    }
    static std::size_t shortTextSize(Element const& element) noexcept {
        return static_cast<std::size_t>(element.words_[1] >> 48U & 0xFFU);
    }

    /// Makes `target`, which must be null, the text of `size` bytes, at most 14. 16 bytes must be
    /// readable at `bytes`.
    static void putShortText(Element& target, char const* bytes, std::size_t size) noexcept {
        // A 16-byte window into these words has `size` bytes of ones.
        static constexpr std::uint64_t ones[4] = {~std::uint64_t{0}, ~std::uint64_t{0}, 0, 0};
        std::uint64_t mask[2];
        std::memcpy(mask, reinterpret_cast<char const*>(ones) + (16 - size), sizeof mask);
        std::uint64_t words[2];
        std::memcpy(words, bytes, sizeof words);
        target.words_[0] = words[0] & mask[0];
        target.words_[1] = (words[1] & mask[1]) | std::uint64_t{size} << 48U |
                           std::uint64_t{Element::tagText} << 56U;
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
    /// Whether two string elements are equal.
    static bool equalTexts(Element const& left, Element const& right) noexcept {
        if (left.words_[1] != right.words_[1]) // another tag, or a short text of another size
            return false;
        return left.words_[0] == right.words_[0] ||
               (isLongText(left) && left.text() == right.text());
    }

    /// Makes `target`, which must be plain, an array of the given elements, which are left
    /// indeterminate. With an arena the array lies in it, must never be destroyed itself, and is
    /// copied like an exposed one. If this throws, nothing has changed.
    static void takeArray(Element& target, std::span<Element> elements, Tolv::Detail::Arena* arena);

    /// The same for an object of the given keys and children, in turn. Call `indexObject` next; it
    /// detects duplicate keys.
    static void takeObject(Element& target, std::span<Element> keysAndValues,
                           Tolv::Detail::Arena* arena);

    /// @return the position of a member with a duplicate key, or -1
    static std::ptrdiff_t indexObject(Element& target, Tolv::Detail::Arena* arena);
};

/// A container as an element that holds no reference. It must only be read, and must not outlive
/// the container.
class ContainerView {
public:
    /// @param container null for an empty object
    explicit ContainerView(ContainerRep* container) noexcept : element_(Object()) {
        if (container != nullptr)
            Access::putContainer(element_, container);
    }
    ContainerView(ContainerView const&) = delete;
    ContainerView& operator=(ContainerView const&) = delete;
    ~ContainerView() { Access::forget(element_); }

    [[nodiscard]] Element const& element() const noexcept { return element_; }

private:
    Element element_;
};

} // namespace Tolv::MetaData::Detail
