#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

#include <tolv/core/export.h>
#include <tolv/core/metadata/key.h>

/// @file
/// The metadata tree: `Element`, `Array` and `Object`.
///
/// All three are value types. Copies are cheap, because they share their content until one of them
/// is modified. A tree that came from a reader, or that has only been read since it was copied, is
/// copied in constant time. Content to which a writable reference has been handed out is copied
/// deeply, so that a reference obtained before a copy never writes into the copy.
///
/// Reference validity: references to children remain valid while keys or entries are added, so
/// `array[9] = array[0]` and `object["new"] = object["old"]` are safe. Removing children
/// invalidates references to them. Assigning to an element or destroying it invalidates all
/// references into it; a write access after a copy also invalidates `const` references. An element
/// must not be moved into one of its own children; copying it there is safe.
///
/// Threads: distinct values may be used concurrently, even if they share content. A single value
/// must not be used by another thread while one thread writes to it.
namespace Tolv::MetaData {

class Element;
class Object;

namespace Detail {
struct ArrayRep;
struct ObjectRep;
struct TextRep;
struct Member;
struct Access;

/// A block of children of an array or object, stored directly after this structure.
template <class Item>
struct alignas(std::uint64_t) Chunk {
    Chunk* next = nullptr;
    std::uint32_t capacity = 0;

    [[nodiscard]] Item* items() noexcept { return reinterpret_cast<Item*>(this + 1); }
    [[nodiscard]] Item const* items() const noexcept {
        return reinterpret_cast<Item const*>(this + 1);
    }
};

/// Iterates over the children of an array or object in order.
template <class Item>
class ChildIterator {
public:
    /// @{
    /// Required of a standard iterator.
    using iterator_category = std::forward_iterator_tag;
    using value_type = Item;
    using difference_type = std::ptrdiff_t;
    using pointer = Item const*;
    using reference = Item const&;
    /// @}

    ChildIterator() noexcept = default;
    /// Internal: `size` children, of which `capacity` are at `items` and the others in `more`.
    ChildIterator(Item const* items, std::uint32_t capacity, Chunk<Item> const* more,
                  std::uint32_t size) noexcept
        : more_(more), left_(size) {
        enter(items, capacity);
    }

    /// @{
    /// Required of a standard iterator.
    reference operator*() const noexcept { return *at_; }
    pointer operator->() const noexcept { return at_; }
    ChildIterator& operator++() noexcept {
        if (++at_ == end_) [[unlikely]]
            enter(nullptr, 0);
        return *this;
    }
    ChildIterator operator++(int) noexcept {
        auto const before = *this;
        ++*this;
        return before;
    }
    bool operator==(ChildIterator const& other) const noexcept { return at_ == other.at_; }
    /// @}

private:
    /// Moves to the first of the remaining children: at `items`, or in the next chunk that is not
    /// empty.
    [[gnu::noinline]] void enter(Item const* items, std::uint32_t capacity) noexcept {
        at_ = nullptr;
        if (left_ == 0)
            return;
        for (; capacity == 0; more_ = more_->next) {
            items = more_->items();
            capacity = more_->capacity;
        }
        auto const count = capacity < left_ ? capacity : left_;
        left_ -= count;
        at_ = items;
        end_ = items + count;
    }

    Item const* at_ = nullptr; ///< null: past the end
    Item const* end_ = nullptr;
    Chunk<Item> const* more_ = nullptr;
    std::uint32_t left_ = 0; ///< number of children from `end_` on
};

} // namespace Detail

/// Tag type for the null element.
struct Null {};

/// Wraps a scalar for an element: `Element(Trivial_T<bool>(true))`.
template <class T>
class Trivial_T {
public:
    /// Holds `value`.
    explicit Trivial_T(T value) : value_(std::move(value)) {}
    /// The value.
    [[nodiscard]] T const& value() const& { return value_; }
    [[nodiscard]] T value() && { return std::move(value_); }

private:
    T value_;
};

/// An ordered sequence of elements.
class TOLV_CORE_API Array {
public:
    using ConstIterator = Detail::ChildIterator<Element>; ///< iterates over the entries

    Array() noexcept = default;
    Array(Array const& other);
    Array(Array&& other) noexcept : rep_(std::exchange(other.rep_, nullptr)) {}
    Array& operator=(Array const& other);
    Array& operator=(Array&& other) noexcept;
    ~Array() {
        if (rep_ != nullptr)
            release();
    }

    /// The first entry.
    [[nodiscard]] ConstIterator begin() const noexcept;
    /// Past the last entry.
    [[nodiscard]] ConstIterator end() const noexcept;
    /// The number of entries.
    [[nodiscard]] unsigned int size() const noexcept;
    /// Whether there are no entries.
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// The element at `index`. An index at or past the end grows the array with null elements up to
    /// that index.
    /// @throws std::bad_alloc; the array is then unchanged.
    Element& operator[](unsigned int index);
    /// @throws Exception::InvalidParameter if `index` is at or past the end.
    Element const& operator[](unsigned int index) const;

    /// Truncates the array, or extends it with null elements.
    void resize(unsigned int size);
    /// Removes all entries.
    void clear() { resize(0); }

    /// Extension: allocates memory for a total of `capacity` elements, without adding any.
    void reserve(unsigned int capacity);
    /// Extension: appends an element.
    void push_back(Element element);

    /// Extension: compares element by element, as `Element` does.
    friend TOLV_CORE_API bool operator==(Array const& left, Array const& right) noexcept;

private:
    friend struct Detail::Access;
    friend class Element;

    void release() noexcept;

    Detail::ArrayRep* rep_ = nullptr; ///< null: empty
};

/// A map from keys to elements that keeps the order of insertion.
class TOLV_CORE_API Object {
public:
    /// Iterates over the members: use `member.key()` and `member.value`. Structured bindings such
    /// as `[key, value]` are not available, because the text of a key is stored in its member.
    using ConstIterator = Detail::ChildIterator<Detail::Member>;

    Object() noexcept = default;
    Object(Object const& other);
    Object(Object&& other) noexcept : rep_(std::exchange(other.rep_, nullptr)) {}
    Object& operator=(Object const& other);
    Object& operator=(Object&& other) noexcept;
    ~Object() {
        if (rep_ != nullptr)
            release();
    }

    /// Extension: the number of keys.
    [[nodiscard]] unsigned int size() const noexcept;
    /// Whether there are no keys.
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// Extension: the child of `key`, or null. Never throws. Constant time.
    [[nodiscard]] Element const* find(KeyView const& key) const noexcept;

    /// Extension: the child of `key`. An absent key is appended with a null child.
    Element& operator[](KeyView const& key);

    /// Extension: removes `key`. Invalidates references to children. @return false if it was absent
    bool erase(KeyView const& key);

    /// Extension: allocates memory for a total of `capacity` keys, without adding any.
    void reserve(unsigned int capacity);

    /// Extension: the first member, in the order of insertion.
    [[nodiscard]] ConstIterator begin() const noexcept;
    /// Past the last member.
    [[nodiscard]] ConstIterator end() const noexcept;

    /// Extension: equal if both have the same keys with equal children, in any order.
    friend TOLV_CORE_API bool operator==(Object const& left, Object const& right) noexcept;

private:
    friend struct Detail::Access;
    friend class Element;

    void release() noexcept;

    Detail::ObjectRep* rep_ = nullptr; ///< null: empty
};

/// The kinds of elements, numbered as by `Element::GetElementType`.
enum class Kind : unsigned char {
    null = 0,
    boolean = 1,
    signedNumber = 2,
    unsignedNumber = 3,
    floatingNumber = 4,
    array = 5,
    object = 6,
    string = 7
};

/// The name of a kind for error texts: "a string", "an array".
TOLV_CORE_API char const* describe(Kind kind) noexcept;

/// One node of a tree: null, a boolean, a number, a string, an `Array` or an `Object`. 16 bytes;
/// strings of up to 14 bytes need no allocation.
class TOLV_CORE_API Element {
public:
    // NOLINTNEXTLINE(modernize-use-equals-default): a default would not initialize the union
    Element() noexcept {}
    // NOLINTBEGIN(google-explicit-constructor): values convert to elements
    /// Null.
    Element(Null) noexcept {}
    Element(Object object) noexcept; ///< an object
    Element(Array array) noexcept;   ///< extension
    /// A boolean.
    Element(Trivial_T<bool> const& value) noexcept { setBoolean(value.value()); }
    /// A string. @throws as `setString`.
    Element(Trivial_T<std::string> const& value) { setString(value.value()); }
    // NOLINTEND(google-explicit-constructor)

    Element(Element const& other) {
        if (other.isPlain())
            copyWords(other);
        else
            copyShared(other);
    }
    Element(Element&& other) noexcept {
        copyWords(other);
        other.forget();
    }
    Element& operator=(Element const& other) {
        if (this != &other) {
            Element copy(other);
            swap(copy);
        }
        return *this;
    }
    Element& operator=(Element&& other) noexcept {
        if (this != &other) {
            Element taken(std::move(other));
            swap(taken);
        }
        return *this;
    }
    ~Element() {
        if (!isPlain())
            release();
    }

    /// Exchanges the contents in constant time.
    void swap(Element& other) noexcept {
        // Not std::swap: when it accesses a word through a reference, the compiler may assume that
        // the pointer in `array_` or `object_` does not change.
        auto const low = words_[0];
        auto const high = words_[1];
        copyWords(other);
        other.words_[0] = low;
        other.words_[1] = high;
    }

    /// The kind of this element as a number; see `Kind`.
    [[nodiscard]] int GetElementType() const noexcept { return static_cast<int>(kind()); }
    /// Extension: the kind as an enumerator.
    [[nodiscard]] Kind kind() const noexcept {
        return tag() == tagLongText ? Kind::string : static_cast<Kind>(tag());
    }

    /// @throws Exception::InvalidParameter if this is not a boolean.
    [[nodiscard]] bool asBoolean() const;
    /// @throws Exception::InvalidParameter if this is not a string.
    [[nodiscard]] std::string asString() const;
    /// Extension: the text without a copy, valid until this element is modified.
    /// @throws Exception::InvalidParameter if this is not a string.
    [[nodiscard]] std::string_view asStringView() const&;
    std::string_view asStringView() && = delete; ///< the view would dangle

    /// The child of `key`. A null element becomes an object; an absent key is added with a null
    /// child.
    /// @throws Exception::InvalidParameter if this is neither an object nor null.
    Element& operator[](std::string const& key) & { return child(KeyView(key)); }
    Element& operator[](KeyView const& key) & { return child(key); } ///< extension
    /// The same.
    Element& operator[](char const* key) & { return child(KeyView(key)); }
    Element& operator[](int) = delete; ///< use `Array&` to access entries

    /// The child of `key`.
    /// @throws Exception::InvalidParameter if this is not an object or the key is absent.
    Element const& operator[](std::string const& key) const& { return child(KeyView(key)); }
    Element const& operator[](KeyView const& key) const& { return child(key); } ///< extension
    /// The same.
    Element const& operator[](char const* key) const& { return child(KeyView(key)); }
    Element const& operator[](int) const = delete;

    /// A copy of the child of `key` of a temporary element.
    /// @throws Exception::InvalidParameter if this is not an object or the key is absent.
    Element operator[](std::string const& key) const&& { return child(KeyView(key)); }
    Element operator[](KeyView const& key) const&& { return child(key); } ///< extension
    /// The same.
    Element operator[](char const* key) const&& { return child(KeyView(key)); }

    /// Extension: the child of `key`, or null if this is not an object or the key is absent.
    [[nodiscard]] Element const* find(KeyView const& key) const& noexcept {
        return isObject() ? object().find(key) : nullptr;
    }
    Element const* find(KeyView const& key) && = delete; ///< the pointer would dangle

    // NOLINTBEGIN(google-explicit-constructor): conversions give access to the containers
    /// This element as an array; a null element becomes an empty one.
    /// @throws Exception::InvalidParameter for any other kind.
    operator Array&() &;
    /// @throws Exception::InvalidParameter if this is not an array.
    operator Array const&() const&;
    operator Array() &&; ///< takes the array out of a temporary element
    /// @throws Exception::InvalidParameter if this is not an object.
    operator Object const&() const&;
    operator Object() &&; ///< likewise
    // NOLINTEND(google-explicit-constructor)

    /// Extension: makes a null element an object, and allocates memory for `members` keys.
    /// @throws Exception::InvalidParameter if this is neither an object nor null.
    Object& makeObject(unsigned int members);

    /// @{
    /// Extension: whether the element is of this kind. The kind of a number says how it was
    /// written, not which types it fits; for that use `TryGetAs`.
    [[nodiscard]] bool isNull() const noexcept { return tag() == tagNull; }
    [[nodiscard]] bool isBoolean() const noexcept { return tag() == tagBoolean; }
    [[nodiscard]] bool isSigned() const noexcept { return tag() == tagSigned; }
    [[nodiscard]] bool isUnsigned() const noexcept { return tag() == tagUnsigned; }
    [[nodiscard]] bool isFloating() const noexcept { return tag() == tagFloating; }
    [[nodiscard]] bool isArray() const noexcept { return tag() == tagArray; }
    [[nodiscard]] bool isObject() const noexcept { return tag() == tagObject; }
    [[nodiscard]] bool isString() const noexcept {
        return tag() == tagText || tag() == tagLongText;
    }

    /// @}
    /// @{
    /// Extension: the content, unchecked. Call these only if the test of the same name is true.
    /// Texts, arrays and objects belong to the element and are valid until it is modified.
    [[nodiscard]] bool boolean() const noexcept { return words_[0] != 0; }
    [[nodiscard]] std::int64_t signedNumber() const noexcept {
        return static_cast<std::int64_t>(words_[0]);
    }
    [[nodiscard]] std::uint64_t unsignedNumber() const noexcept { return words_[0]; }
    [[nodiscard]] double floatingNumber() const noexcept {
        return std::bit_cast<double>(words_[0]);
    }
    [[nodiscard]] std::string_view text() const& noexcept {
        if (tag() == tagLongText)
            return separateText();
        return {reinterpret_cast<char const*>(words_),
                static_cast<std::size_t>(words_[1] >> 48U & 0xFFU)};
    }
    [[nodiscard]] Array const& array() const& noexcept { return array_; }
    [[nodiscard]] Object const& object() const& noexcept { return object_; }
    std::string_view text() && = delete; // these three would dangle
    Array const& array() && = delete;
    Object const& object() && = delete;
    /// @}

    /// @{
    /// Extension: replaces the content.
    void setNull() noexcept { reset(0, tagNull); }
    void setBoolean(bool value) noexcept { reset(value ? 1 : 0, tagBoolean); }
    void setSigned(std::int64_t value) noexcept {
        reset(static_cast<std::uint64_t>(value), tagSigned);
    }
    void setUnsigned(std::uint64_t value) noexcept { reset(value, tagUnsigned); }
    void setFloating(double value) noexcept {
        reset(std::bit_cast<std::uint64_t>(value), tagFloating);
    }
    /// @}
    /// Extension: replaces the content with a string.
    /// @throws std::bad_alloc for a text of more than 14 bytes, and Exception::InvalidParameter for
    /// one of 4 GiB or more; the element is then unchanged.
    void setString(std::string_view text);
    /// Makes this a string of `size` bytes. The caller must write all of them immediately, at the
    /// address returned. @throws as `setString`.
    /// @param size in bytes
    /// @param isPlain the caller guarantees that every byte is ASCII and needs no escape in JSON,
    /// so that writers need not check.
    char* makeString(std::size_t size, bool isPlain = false);

    /// Extension: equality of JSON values. Numbers are compared by exact value, regardless of their
    /// kind; NaN equals NaN. Nothing is copied, and shared content compares equal in constant time.
    /// Trees of more than 64 levels need memory; if there is none, they compare unequal.
    friend TOLV_CORE_API bool operator==(Element const& left, Element const& right) noexcept;

private:
    friend struct Detail::Access;
    friend class Array;
    friend class Object;

    static constexpr unsigned char tagNull = 0;
    static constexpr unsigned char tagBoolean = 1;
    static constexpr unsigned char tagSigned = 2;
    static constexpr unsigned char tagUnsigned = 3;
    static constexpr unsigned char tagFloating = 4;
    static constexpr unsigned char tagArray = 5;
    static constexpr unsigned char tagObject = 6;
    static constexpr unsigned char tagText = Detail::inlineTextTag;
    static constexpr unsigned char tagLongText = 8;

    /// Null, booleans, numbers and short texts own no memory beyond their 16 bytes.
    static constexpr unsigned int plainTags = 1U << tagNull | 1U << tagBoolean | 1U << tagSigned |
                                              1U << tagUnsigned | 1U << tagFloating | 1U << tagText;

    [[nodiscard]] unsigned char tag() const noexcept {
        return static_cast<unsigned char>(words_[1] >> 56U);
    }
    [[nodiscard]] bool isPlain() const noexcept { return (plainTags >> tag() & 1U) != 0; }
    void forget() noexcept { words_[0] = words_[1] = 0; }
    void copyWords(Element const& other) noexcept {
        words_[0] = other.words_[0];
        words_[1] = other.words_[1];
    }
    void reset(std::uint64_t word, unsigned char newTag) noexcept {
        if (!isPlain())
            release();
        words_[0] = word;
        words_[1] = std::uint64_t{newTag} << 56U;
    }
    [[nodiscard]] std::string_view separateText() const noexcept;
    void copyShared(Element const& other);
    void release() noexcept;
    Element& child(KeyView const& key);
    [[nodiscard]] Element const& child(KeyView const& key) const;

    union {
        std::uint64_t words_[2]{0, 0}; ///< the tag is the highest byte of the second word
        Array array_;
        Object object_;
        Detail::TextRep* longText_;
    };
};

static_assert(sizeof(Element) == 16);

namespace Detail {

/// A key of an object and its child.
struct Member {
    Element key_; ///< always a string
    Element value;

    [[nodiscard]] std::string_view key() const noexcept { return key_.text(); }
};

} // namespace Detail

/// Whether `element` is an object that has `key`. Never throws.
TOLV_CORE_API bool HasElement(Element const& element, std::string const& key) noexcept;
/// Extension: the same.
inline bool HasElement(Element const& element, KeyView const& key) noexcept {
    return element.find(key) != nullptr;
}
/// The same.
inline bool HasElement(Element const& element, char const* key) noexcept {
    return element.find(KeyView(key)) != nullptr;
}

} // namespace Tolv::MetaData
