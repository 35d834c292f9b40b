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
/// All three are values. Copying one is cheap: the copies share their content until one of them is
/// changed. A tree that came from a reader, or that has only been read since it was copied, is
/// copied in constant time; content to which a writable reference has been handed out is copied
/// for real, so that a reference taken before a copy never writes into the copy.
///
/// What stays valid: references to children stay valid while keys or entries are added, so
/// `array[9] = array[0]` and `object["new"] = object["old"]` are fine. Removing children ends
/// references to them. Assigning to an element, or destroying it, ends all references into it; so
/// does, for `const` references, any writing access to it after it was copied. An element must not
/// be moved into a child of its own; copying it there is fine.
///
/// Threads: distinct values may be used from distinct threads at the same time, even where they
/// share content. One value must not be used by two threads while one of them writes.
namespace Tolv::MetaData {

class Element;
class Object;

namespace Detail {
struct ArrayRep;
struct ObjectRep;
struct TextRep;
struct Member;
struct Access;

/// A run of children of an array or object, which stand behind this structure.
template <class Item>
struct alignas(std::uint64_t) Chunk {
    Chunk* next = nullptr;
    std::uint32_t capacity = 0;

    [[nodiscard]] Item* items() noexcept { return reinterpret_cast<Item*>(this + 1); }
    [[nodiscard]] Item const* items() const noexcept {
        return reinterpret_cast<Item const*>(this + 1);
    }
};

/// Walks the children of an array or object in order.
template <class Item>
class ChildIterator {
public:
    /// @{
    /// What the standard asks of an iterator.
    using iterator_category = std::forward_iterator_tag;
    using value_type = Item;
    using difference_type = std::ptrdiff_t;
    using pointer = Item const*;
    using reference = Item const&;
    /// @}

    ChildIterator() noexcept = default;
    /// Internal: `size` children, of which `capacity` stand at `items` and the others in `more`.
    ChildIterator(Item const* items, std::uint32_t capacity, Chunk<Item> const* more,
                  std::uint32_t size) noexcept
        : more_(more), left_(size) {
        enter(items, capacity);
    }

    /// @{
    /// What the standard asks of an iterator.
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
    /// Goes to the first of the children that are left: at `items`, or in the next chunk that has
    /// room for any.
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

    Item const* at_ = nullptr; ///< null: behind the last
    Item const* end_ = nullptr;
    Chunk<Item> const* more_ = nullptr;
    std::uint32_t left_ = 0; ///< from `end_` on
};

} // namespace Detail

/// Tag of the null element.
struct Null {};

/// One scalar on its way into an element: `Element(Trivial_T<bool>(true))`.
template <class T>
class Trivial_T {
public:
    /// Holds `value`.
    explicit Trivial_T(T value) : value_(std::move(value)) {}
    /// What it holds.
    [[nodiscard]] T const& value() const& { return value_; }
    [[nodiscard]] T value() && { return std::move(value_); }

private:
    T value_;
};

/// An ordered sequence of elements.
class TOLV_CORE_API Array {
public:
    using ConstIterator = Detail::ChildIterator<Element>; ///< walks over the entries

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
    /// Behind the last entry.
    [[nodiscard]] ConstIterator end() const noexcept;
    /// Number of entries.
    [[nodiscard]] unsigned int size() const noexcept;
    /// Whether there is no entry.
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// The element at `index`. An index at or past the end grows the array with null elements up to
    /// that index.
    /// @throws std::bad_alloc, and then the array is as it was.
    Element& operator[](unsigned int index);
    /// @throws Exception::InvalidParameter when `index` is at or past the end.
    Element const& operator[](unsigned int index) const;

    /// Cuts the array or fills it with null elements.
    void resize(unsigned int size);
    /// Takes all entries out.
    void clear() { resize(0); }

    /// Extension: makes room for `capacity` elements in all, without adding any.
    void reserve(unsigned int capacity);
    /// Extension: adds one element behind the last.
    void push_back(Element element);

    /// Extension: equal element by element, as elements are.
    friend TOLV_CORE_API bool operator==(Array const& left, Array const& right) noexcept;

private:
    friend struct Detail::Access;
    friend class Element;

    void release() noexcept;

    Detail::ArrayRep* rep_ = nullptr; ///< null: empty
};

/// A map from key to element that keeps the order in which keys were added.
class TOLV_CORE_API Object {
public:
    /// Walks over the members: use `member.key()` and `member.value`; a key is a text inside of its
    /// member, so `[key, value]` is not available.
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

    /// Extension: number of keys.
    [[nodiscard]] unsigned int size() const noexcept;
    /// Whether there is no key.
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// Extension: the child of `key`, or null. Never throws. Constant time.
    [[nodiscard]] Element const* find(KeyView const& key) const noexcept;

    /// Extension: the child of `key`, added as null behind the last when it is absent.
    Element& operator[](KeyView const& key);

    /// Extension: takes `key` away; false when it was not there. Ends references to children.
    bool erase(KeyView const& key);

    /// Extension: makes room for `capacity` keys in all, without adding any.
    void reserve(unsigned int capacity);

    /// Extension: the first member, in the order in which keys were added.
    [[nodiscard]] ConstIterator begin() const noexcept;
    /// Behind the last member.
    [[nodiscard]] ConstIterator end() const noexcept;

    /// Extension: equal when both have the same keys with equal children, in whatever order.
    friend TOLV_CORE_API bool operator==(Object const& left, Object const& right) noexcept;

private:
    friend struct Detail::Access;
    friend class Element;

    void release() noexcept;

    Detail::ObjectRep* rep_ = nullptr; ///< null: empty
};

/// What an element can be, as `Element::GetElementType` numbers it.
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

/// The word for a kind in messages to people: "a string", "an array".
TOLV_CORE_API char const* describe(Kind kind) noexcept;

/// One node of a tree: null, a boolean, a number, a string, an `Array` or an `Object`. 16 bytes;
/// strings of up to 14 bytes need no allocation.
class TOLV_CORE_API Element {
public:
    // NOLINTNEXTLINE(modernize-use-equals-default): with a default the union would have none
    Element() noexcept {}
    // NOLINTBEGIN(google-explicit-constructor): these make an element of a value
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

    /// Exchanges the contents, in constant time.
    void swap(Element& other) noexcept {
        // Not by std::swap: an access through a reference to a word tells the compiler that it does
        // not touch the pointer in `array_` or `object_`.
        auto const low = words_[0];
        auto const high = words_[1];
        copyWords(other);
        other.words_[0] = low;
        other.words_[1] = high;
    }

    /// The number of this element's kind: 5 is an array; the others are those of `Kind`.
    [[nodiscard]] int GetElementType() const noexcept { return static_cast<int>(kind()); }
    /// Extension: the same as a name.
    [[nodiscard]] Kind kind() const noexcept {
        return tag() == tagLongText ? Kind::string : static_cast<Kind>(tag());
    }

    /// @throws Exception::InvalidParameter when this is no boolean.
    [[nodiscard]] bool asBoolean() const;
    /// @throws Exception::InvalidParameter when this is no string.
    [[nodiscard]] std::string asString() const;
    /// Extension: the text without a copy; it lives as long as this element is not changed.
    /// @throws Exception::InvalidParameter when this is no string.
    [[nodiscard]] std::string_view asStringView() const&;
    std::string_view asStringView() && = delete; ///< the text would end with the element

    /// The child of `key`. A null element becomes an object, an absent key a null child.
    /// @throws Exception::InvalidParameter when this is neither an object nor null.
    Element& operator[](std::string const& key) & { return child(KeyView(key)); }
    Element& operator[](KeyView const& key) & { return child(key); } ///< extension
    /// The same.
    Element& operator[](char const* key) & { return child(KeyView(key)); }
    Element& operator[](int) = delete; ///< entries are reached through `Array&`

    /// The child of `key`.
    /// @throws Exception::InvalidParameter when this is no object or the key is absent.
    Element const& operator[](std::string const& key) const& { return child(KeyView(key)); }
    Element const& operator[](KeyView const& key) const& { return child(key); } ///< extension
    /// The same.
    Element const& operator[](char const* key) const& { return child(KeyView(key)); }
    Element const& operator[](int) const = delete;

    /// The child of `key` of an element that ends with the expression, as an element of its own.
    /// @throws Exception::InvalidParameter when this is no object or the key is absent.
    Element operator[](std::string const& key) const&& { return child(KeyView(key)); }
    Element operator[](KeyView const& key) const&& { return child(key); } ///< extension
    /// The same.
    Element operator[](char const* key) const&& { return child(KeyView(key)); }

    /// Extension: the child of `key`, or null when this is no object or the key is absent.
    [[nodiscard]] Element const* find(KeyView const& key) const& noexcept {
        return isObject() ? object().find(key) : nullptr;
    }
    Element const* find(KeyView const& key) && = delete; ///< the child would end with the element

    // NOLINTBEGIN(google-explicit-constructor): the conversions are the way to the containers
    /// This element as an array; a null element becomes an empty one.
    /// @throws Exception::InvalidParameter on any other kind.
    operator Array&() &;
    /// @throws Exception::InvalidParameter when this is no array.
    operator Array const&() const&;
    operator Array() &&; ///< of an element that ends with the expression
    /// @throws Exception::InvalidParameter when this is no object.
    operator Object const&() const&;
    operator Object() &&; ///< likewise
    // NOLINTEND(google-explicit-constructor)

    /// Extension: makes this an object with room for `members` keys, unless it is one already.
    /// @throws Exception::InvalidParameter when this is neither an object nor null.
    Object& makeObject(unsigned int members);

    /// @{
    /// Extension: whether it is of this kind. Of the numbers, which kind a value has says how it
    /// was written, not what fits: use `TryGetAs` for that.
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
    /// Extension: the content, without a check: only after the test of the same name was true.
    /// Texts, arrays and objects are those of the element, and live as long as it is not changed.
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
    std::string_view text() && = delete; // what these three refer to would end with the element
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
    /// Extension: replaces the content by a string.
    /// @throws std::bad_alloc for a text of more than 14 bytes, and Exception::InvalidParameter
    /// for one of 4 GiB or more; the content is then as it was.
    void setString(std::string_view text);
    /// Makes this a string of `size` bytes, which the caller writes at once to where the result
    /// points. @throws as `setString`.
    /// @param size in bytes
    /// @param isPlain the caller promises that each byte is ASCII and needs no escape in JSON, so
    /// that no writer looks.
    char* makeString(std::size_t size, bool isPlain = false);

    /// Extension: equality of JSON values. Numbers are compared by exact value, whatever their
    /// kind; a NaN equals a NaN. Nothing is copied, and content that both share is equal at once.
    /// Memory is needed only for trees of more than 64 levels; they count as different when there
    /// is none.
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

    /// Null, booleans, numbers and short texts are nothing but their 16 bytes.
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

/// One key of an object and its child.
struct Member {
    Element key_; ///< always a string
    Element value;

    [[nodiscard]] std::string_view key() const noexcept { return key_.text(); }
};

} // namespace Detail

/// True when `element` is an object that has `key`. Never throws.
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
