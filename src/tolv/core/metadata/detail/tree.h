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
/// What the handles of element.h point at. Not installed.
namespace Tolv::MetaData::Detail {

/// A text too long for an element. Never changed once it is made, so always shared.
struct TextRep {
    enum class Place : unsigned char {
        here,     ///< behind this structure, in the same allocation
        borrowed, ///< this is a `BorrowedText`
        deferred, ///< this is a `DeferredText`
    };

    std::atomic<std::uint32_t> refs{1};
    std::uint32_t size = 0;
    /// All of it is ASCII that stands for itself in JSON, so that nobody need look again.
    bool isPlain = false;
    Place place = Place::here;
    /// It goes with the tree that it stands in, however often it is referred to: to be copied.
    bool isPassing = false;

    [[nodiscard]] inline char const* chars() noexcept;
    [[nodiscard]] char* own() noexcept { return reinterpret_cast<char*>(this + 1); }
};

/// A part of a text that was given to the reader.
struct BorrowedText : TextRep {
    char const* text = nullptr;
    std::shared_ptr<std::string const> owner; ///< kept alive; none in a tree that passes
};

/// Bytes whose base64 is the text: encoded by the writer, straight into its output, or as soon as
/// somebody else looks. Only one thread sees it before.
struct DeferredText : TextRep {
    std::span<unsigned char const> bytes;
    std::unique_ptr<char[]> text; ///< null until then

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

/// What is still to be encoded to give this text, or null.
inline std::span<unsigned char const> const* deferredBytes(TextRep const& text) noexcept {
    if (text.place != TextRep::Place::deferred)
        return nullptr;
    auto const& deferred = static_cast<DeferredText const&>(text);
    return deferred.text == nullptr ? &deferred.bytes : nullptr;
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
    std::uint32_t capacity = 0;   ///< children that fit behind this structure
    ContainerRep* link = nullptr; ///< chain of the containers that wait to be destroyed
};

/// Children never move, so that references to them stay valid while more are added: they fill the
/// room behind the structure, then one chunk after the other.
template <class Item>
struct Children : ContainerRep {
    Chunk<Item>* more = nullptr;
};

struct alignas(Element) ArrayRep : Children<Element> {
    [[nodiscard]] Element* items() noexcept { return reinterpret_cast<Element*>(this + 1); }
};

/// Hash index of an object that is too large to be searched from end to end: open addressing, at
/// most half full.
struct alignas(Member*) Index {
    std::uint32_t mask = 0;

    [[nodiscard]] Member** slots() noexcept { return reinterpret_cast<Member**>(this + 1); }
};

static_assert(alignof(Index) <= alignof(std::max_align_t));

struct alignas(Element) ObjectRep : Children<Member> {
    Index* index = nullptr; ///< present when `size` is above `linearLimit`

    static constexpr std::uint32_t linearLimit = 32;

    [[nodiscard]] Member* items() noexcept { return reinterpret_cast<Member*>(this + 1); }
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
    /// The same in a tree that passes: nobody keeps the text alive.
    static void putPassingText(Element& target, std::string_view text, bool isPlain,
                               Tolv::Detail::Arena& arena);
    /// Makes `target` the base64 of `bytes`, which must stay until they are encoded.
    static void putDeferredText(Element& target, std::span<unsigned char const> bytes);
    /// Another reference to a text of more than 14 bytes, or, of a passing one, a copy.
    static TextRep* share(TextRep* text);
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
        // A window over these has as many bytes of ones as wanted.
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
    /// Whether two strings are equal.
    static bool equalTexts(Element const& left, Element const& right) noexcept {
        if (left.words_[1] != right.words_[1]) // another tag, or a short text of another size
            return false;
        return left.words_[0] == right.words_[0] ||
               (isLongText(left) && left.text() == right.text());
    }

    /// Makes `target`, which is plain, an array of the given elements, and leaves garbage where
    /// they were. With an arena the array stands there, and must go with it: never to be
    /// destroyed, and copied as one that is exposed. On an exception nothing has happened.
    static void takeArray(Element& target, std::span<Element> elements, Tolv::Detail::Arena* arena);

    /// The same for an object of the given members, keys and children in turn. Keys that stand
    /// there twice are found by `indexObject`, which must follow.
    static void takeObject(Element& target, std::span<Element> keysAndValues,
                           Tolv::Detail::Arena* arena);

    /// @return the place among the members of a key that stands there twice, else -1
    static std::ptrdiff_t indexObject(Element& target, Tolv::Detail::Arena* arena);
};

/// A container as an element, without a reference of its own: only for reading, and no longer than
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
