#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <random>
#include <utility>
#include <vector>

#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/tree.h>

namespace Tolv::MetaData {

using Detail::Access;
using Detail::ArrayRep;
using Detail::BorrowedText;
using Detail::ChildIterator;
using Detail::Chunk;
using Detail::ContainerRep;
using Detail::ContainerView;
using Detail::DeferredText;
using Detail::Index;
using Detail::Member;
using Detail::ObjectRep;
using Detail::TextRep;
using Tolv::Detail::Arena;

namespace {

// ---- Counting ------------------------------------------------------------------------------

void acquire(std::atomic<std::uint32_t>& refs) noexcept {
    refs.fetch_add(1, std::memory_order_relaxed);
}

/// True if the caller held the last reference. The plain load avoids the locked operation in the
/// common case of an unshared tree.
bool drop(std::atomic<std::uint32_t>& refs) noexcept {
    return refs.load(std::memory_order_acquire) == 1 ||
           refs.fetch_sub(1, std::memory_order_acq_rel) == 1;
}

bool isShared(ContainerRep const& rep) noexcept {
    return rep.refs.load(std::memory_order_acquire) != 1;
}

// ---- Memory --------------------------------------------------------------------------------

// NOLINTBEGIN(bugprone-sizeof-expression): the items of an index are pointers
template <class Rep, class Item>
Rep* allocate(std::uint64_t items, Arena* arena = nullptr) {
    if (items > (std::numeric_limits<std::size_t>::max() - sizeof(Rep)) / sizeof(Item))
        throw std::bad_alloc();
    auto const bytes = sizeof(Rep) + static_cast<std::size_t>(items) * sizeof(Item);
    return new (arena != nullptr ? arena->take(bytes) : ::operator new(bytes)) Rep;
}
// NOLINTEND(bugprone-sizeof-expression)

std::uint32_t checkedTextSize(std::size_t size) {
    if (size > std::numeric_limits<std::uint32_t>::max())
        throw Exception::InvalidParameter("a string of 4 GiB or more does not fit into an element");
    return static_cast<std::uint32_t>(size);
}

TextRep* newText(std::size_t size) {
    auto const checked = checkedTextSize(size);
    auto* const rep = allocate<TextRep, char>(size);
    rep->size = checked;
    return rep;
}

TextRep* copiedText(std::string_view text) {
    auto* const rep = newText(text.size());
    std::memcpy(rep->own(), text.data(), text.size());
    return rep;
}

void destroyText(TextRep* rep) noexcept {
    switch (rep->place) {
    case TextRep::Place::here:
        ::operator delete(rep);
        break;
    case TextRep::Place::borrowed:
        delete static_cast<BorrowedText*>(rep);
        break;
    case TextRep::Place::deferred:
        delete static_cast<DeferredText*>(rep);
    }
}

ArrayRep* newArray(std::uint32_t capacity, Arena* arena = nullptr) {
    auto* const rep = allocate<ArrayRep, Element>(capacity, arena);
    rep->exposed = arena != nullptr; // so that copies do not share it
    rep->capacity = capacity;
    return rep;
}

ObjectRep* newObject(std::uint32_t capacity, Arena* arena = nullptr) {
    auto* const rep = allocate<ObjectRep, Member>(capacity, arena);
    rep->exposed = arena != nullptr; // so that copies do not share it
    rep->isObject = true;
    rep->capacity = capacity;
    return rep;
}

// ---- Children ------------------------------------------------------------------------------

constexpr auto mostChildren = std::numeric_limits<std::uint32_t>::max() - 1; // the last index fits

[[noreturn]] void throwTooMany() {
    throw Exception::InvalidParameter("a container holds at most " + std::to_string(mostChildren) +
                                      " elements");
}

/// Visits the children in order until `visit` returns true. @return that child, or null
template <class Rep, class Visit>
auto* findChild(Rep& rep, Visit const& visit) {
    auto* at = rep.items();
    auto left = rep.size;
    auto room = rep.capacity;
    for (auto* chunk = rep.more;; chunk = chunk->next) {
        for (auto const* const end = at + std::min(room, left); at != end; ++at)
            if (visit(*at))
                return at;
        if (left <= room) [[likely]]
            return decltype(at){nullptr};
        left -= room;
        at = chunk->items();
        room = chunk->capacity;
    }
}

template <class Rep, class Visit>
void forEachChild(Rep& rep, Visit const& visit) {
    findChild(rep, [&](auto& child) {
        visit(child);
        return false;
    });
}

template <class Item>
[[gnu::noinline]] Item* placeIn(Chunk<Item>* chunk, std::uint32_t index) noexcept {
    for (; chunk != nullptr; chunk = chunk->next) {
        if (index < chunk->capacity)
            return chunk->items() + index;
        index -= chunk->capacity;
    }
    return nullptr;
}

/// The address of the child at `index`, which may not exist yet; null if there is no memory for it
/// yet.
template <class Rep>
auto* placeOf(Rep& rep, std::uint32_t index) noexcept {
    if (index < rep.capacity) [[likely]]
        return rep.items() + index;
    return placeIn(rep.more, index - rep.capacity);
}

/// Allocates memory for a total of `capacity` children.
template <class Item>
void makeRoom(Detail::Children<Item>& rep, std::uint32_t capacity) {
    auto room = rep.capacity;
    auto** end = &rep.more;
    for (; *end != nullptr; end = &(*end)->next)
        room += (*end)->capacity;
    if (room >= capacity)
        return;
    auto* const added = allocate<Chunk<Item>, Item>(capacity - room);
    added->capacity = capacity - room;
    *end = added;
}

/// Ensures memory for a total of `size` children. Doubles the memory when it must grow, so that
/// growth is linear and chunks are few.
template <class Rep>
[[gnu::noinline]] void grow(Rep& rep, std::uint32_t size) {
    if (size > mostChildren)
        throwTooMany();
    if (placeOf(rep, size - 1) == nullptr)
        makeRoom(rep,
                 std::max({size, rep.size > mostChildren / 2 ? mostChildren : rep.size * 2, 4U}));
}

/// The address of the next child.
template <class Rep>
auto* placeOfNext(Rep& rep) {
    if (rep.size >= rep.capacity) [[unlikely]]
        grow(rep, rep.size + 1);
    return placeOf(rep, rep.size);
}

template <class Item>
void freeChunks(Detail::Children<Item>& rep) noexcept {
    for (auto* chunk = rep.more; chunk != nullptr;)
        ::operator delete(std::exchange(chunk, chunk->next));
}

/// Constructs an element in raw memory, taking the content of `source`.
void placeMoved(Element* raw, Element& source) noexcept { new (raw) Element(std::move(source)); }

// ---- Members -------------------------------------------------------------------------------

std::uint64_t hashSeed() noexcept {
    // Peers must not be able to choose keys that collide.
    static std::uint64_t const seed = []() noexcept -> std::uint64_t {
        try {
            std::random_device device;
            return std::uint64_t{device()} << 32U | device();
        } catch (...) {
            return reinterpret_cast<std::uintptr_t>(&newText) * 0x9E3779B97F4A7C15ULL;
        }
    }();
    return seed;
}

std::uint64_t mix(std::uint64_t hash, std::uint64_t word) noexcept {
    hash = (hash ^ word) * 0x9E3779B97F4A7C15ULL;
    hash = (hash ^ hash >> 32U) * 0xD6E8FEB86659FD93ULL;
    return hash ^ hash >> 29U;
}

std::uint32_t hashOf(std::string_view text) noexcept {
    auto hash = mix(hashSeed(), text.size());
    while (!text.empty()) {
        std::uint64_t word = 0;
        auto const count = std::min<std::size_t>(text.size(), sizeof word);
        std::memcpy(&word, text.data(), count);
        hash = mix(hash, word);
        text.remove_prefix(count);
    }
    return static_cast<std::uint32_t>(hash);
}

/// The slot of the member with `key`, or the free slot for it.
Member** slotOf(Index& index, std::string_view key) noexcept {
    for (auto i = hashOf(key) & index.mask;; i = (i + 1) & index.mask) {
        auto** const slot = index.slots() + i;
        if (*slot == nullptr || (*slot)->key() == key)
            return slot;
    }
}

/// Creates an index of all members with room for as many again. Sets `duplicate` to the position of
/// a member whose key occurs before it.
Index* newIndex(ObjectRep& rep, std::ptrdiff_t& duplicate, Arena* arena = nullptr) {
    auto const slots = std::bit_ceil(std::uint64_t{rep.size} * 4);
    if (slots > std::uint64_t{1} << 31U)
        throw std::bad_alloc();
    auto* const index = allocate<Index, Member*>(slots, arena);
    index->mask = static_cast<std::uint32_t>(slots - 1);
    std::fill_n(index->slots(), slots, nullptr);
    duplicate = -1;
    std::ptrdiff_t place = 0;
    forEachChild(rep, [&](Member& member) {
        auto** const slot = slotOf(*index, member.key());
        if (*slot != nullptr)
            duplicate = place;
        *slot = &member;
        ++place;
    });
    return index;
}

void reindex(ObjectRep& rep) {
    std::ptrdiff_t duplicate = -1;
    auto* const index = rep.size > ObjectRep::linearLimit ? newIndex(rep, duplicate) : nullptr;
    ::operator delete(std::exchange(rep.index, index));
}

Member* findMember(ObjectRep& rep, KeyView const& key) noexcept {
    if (rep.index != nullptr)
        return *slotOf(*rep.index, key.text());
    if (key.isShort())
        return findChild(rep, [image = key.image()](Member const& member) {
            return Access::hasImage(member.key_, image);
        });
    return findChild(rep, [&](Member const& member) { return member.key() == key.text(); });
}

/// Appends a member with a null value. `rep` must not be shared; it is unchanged if this throws.
Member& appendMember(ObjectRep& rep, KeyView const& key) {
    Element keyElement;
    if (key.isShort())
        Access::putImage(keyElement, key.image());
    else
        keyElement.setString(key.text());
    auto* const member = new (placeOfNext(rep)) Member;
    member->key_.swap(keyElement);
    ++rep.size;
    if (rep.size <= ObjectRep::linearLimit)
        return *member;
    try {
        if (rep.index == nullptr || rep.size > rep.index->mask / 2)
            reindex(rep);
        else
            *slotOf(*rep.index, member->key()) = member;
    } catch (...) {
        --rep.size;
        member->~Member();
        throw;
    }
    return *member;
}

// ---- Destruction: without recursion, since a tree may be a million levels deep --------------

/// Containers without references, linked into a list.
class Graveyard {
public:
    Graveyard() = default;
    Graveyard(Graveyard const&) = delete;
    Graveyard& operator=(Graveyard const&) = delete;
    ~Graveyard() {
        while (first_ != nullptr)
            destroy(*std::exchange(first_, first_->link));
    }

    void drop(ContainerRep* rep) noexcept {
        if (rep != nullptr && Tolv::MetaData::drop(rep->refs)) {
            rep->link = first_;
            first_ = rep;
        }
    }

    /// Drops the content of an element that is not plain, without modifying the element.
    void drop(Element& element) noexcept {
        if (Access::isPlain(element))
            return;
        if (auto* const container = Access::container(element))
            drop(container);
        else if (Access::isLongText(element) && Tolv::MetaData::drop(longText(element)->refs))
            destroyText(longText(element));
    }

private:
    static TextRep* longText(Element const& element) noexcept { return Access::longText(element); }

    void destroy(ContainerRep& container) noexcept {
        if (container.isObject) {
            auto& rep = static_cast<ObjectRep&>(container);
            forEachChild(rep, [this](Member& member) {
                drop(member.key_);
                drop(member.value);
            });
            freeChunks(rep);
            ::operator delete(rep.index);
            ::operator delete(&rep);
        } else {
            auto& rep = static_cast<ArrayRep&>(container);
            forEachChild(rep, [this](Element& element) { drop(element); });
            freeChunks(rep);
            ::operator delete(&rep);
        }
    }

    ContainerRep* first_ = nullptr;
};

// ---- Copying -------------------------------------------------------------------------------

/// Copies trees level by level. Exposed containers are copied; all others are shared.
class Copier {
public:
    /// `target` must be null. On failure it holds a partial copy, which its owner destroys.
    void copy(Element const& source, Element& target) {
        copyOne(source, target);
        copyPending();
    }

    /// Makes `target`, which must be null, a container of copies of the children of `source`.
    void copy(ContainerRep& source, Element& target) {
        copyContent(source, target);
        copyPending();
    }

private:
    void copyPending() {
        while (!pending_.empty()) {
            auto const [from, to] = pending_.back();
            pending_.pop_back();
            copyContent(*Access::container(*from), *to);
        }
    }

    void copyContent(ContainerRep& source, Element& target) {
        if (source.isObject) {
            auto* const rep = newObject(source.size);
            Access::putContainer(target, rep);
            forEachChild(static_cast<ObjectRep&>(source), [&](Member& member) {
                auto& copied = *new (rep->items() + rep->size++) Member;
                copyOne(member.key_, copied.key_);
                copyOne(member.value, copied.value);
            });
            reindex(*rep);
        } else {
            auto* const rep = newArray(source.size);
            Access::putContainer(target, rep);
            forEachChild(static_cast<ArrayRep&>(source), [&](Element& element) {
                copyOne(element, *new (rep->items() + rep->size++) Element);
            });
        }
    }

    void copyOne(Element const& source, Element& target) {
        if (auto* const container = Access::container(source)) {
            if (container->exposed) {
                pending_.emplace_back(&source, &target);
                return;
            }
            acquire(container->refs);
        } else if (Access::isLongText(source)) {
            Access::putLongText(target, Access::share(Access::longText(source)));
            return;
        }
        Access::copyWords(source, target);
    }

    std::vector<std::pair<Element const*, Element*>> pending_;
};

/// The container for another handle: the same one, or a copy if it is exposed.
ContainerRep* shareOrCopy(ContainerRep* rep) {
    if (rep == nullptr)
        return nullptr;
    if (!rep->exposed) {
        acquire(rep->refs);
        return rep;
    }
    Element target;
    Copier().copy(ContainerView(rep).element(), target);
    auto* const copy = Access::container(target);
    Access::forget(target);
    return copy;
}

/// Makes the content of a handle unshared before it is written to.
template <class Rep>
void detach(Rep*& rep) {
    if (!isShared(*rep))
        return;
    Element target;
    Copier().copy(*rep, target);
    Graveyard().drop(std::exchange(rep, static_cast<Rep*>(Access::container(target))));
    Access::forget(target);
}

[[noreturn]] void throwKind(char const* wanted, Element const& found) {
    throw Exception::InvalidParameter(std::string("expected ") + wanted + ", found " +
                                      describe(found.kind()));
}

} // namespace

// ---- Access --------------------------------------------------------------------------------

void Detail::Access::putPlainText(Element& target, std::string_view text) {
    auto* const rep = copiedText(text);
    rep->isPlain = true;
    putLongText(target, rep);
}

void Detail::Access::putBorrowedText(Element& target, std::string_view text, bool isPlain,
                                     std::shared_ptr<std::string const> owner) {
    auto const size = checkedTextSize(text.size());
    auto* const rep = new BorrowedText;
    rep->size = size;
    rep->isPlain = isPlain;
    rep->place = TextRep::Place::borrowed;
    rep->text = text.data();
    rep->owner = std::move(owner);
    putLongText(target, rep);
}

void Detail::Access::putPassingText(Element& target, std::string_view text, bool isPlain,
                                    Arena& arena) {
    auto const size = checkedTextSize(text.size());
    auto* const rep = new (arena.take(sizeof(BorrowedText))) BorrowedText;
    rep->size = size;
    rep->isPlain = isPlain;
    rep->isPassing = true;
    rep->place = TextRep::Place::borrowed;
    rep->text = text.data();
    putLongText(target, rep);
}

void Detail::Access::putDeferredText(Element& target, std::span<unsigned char const> bytes) {
    auto const size = checkedTextSize(Base64::encodedSize(bytes.size()));
    auto* const rep = new DeferredText;
    rep->size = size;
    rep->isPlain = true;
    rep->place = TextRep::Place::deferred;
    rep->bytes = bytes;
    putLongText(target, rep);
}

void Detail::DeferredText::encode() {
    auto encoded = std::make_unique_for_overwrite<char[]>(size);
    Base64::encode(bytes.data(), bytes.size(), encoded.get());
    text = std::move(encoded);
}

TextRep* Detail::Access::share(TextRep* text) {
    if (text->isPassing) {
        auto* const copy = copiedText({text->chars(), text->size});
        copy->isPlain = text->isPlain;
        return copy;
    }
    acquire(text->refs);
    return text;
}

namespace {

/// Moves elements to raw memory; the sources are left indeterminate.
void takeWords(std::span<Element> from, Element* raw) noexcept {
    std::memcpy(static_cast<void*>(raw), static_cast<void const*>(from.data()), from.size_bytes());
}

} // namespace

void Detail::Access::takeArray(Element& target, std::span<Element> elements, Arena* arena) {
    if (elements.empty()) {
        target = Array();
        return;
    }
    auto const count = static_cast<std::uint32_t>(elements.size());
    auto* const rep = newArray(count, arena);
    takeWords(elements, rep->items());
    rep->size = count;
    putContainer(target, rep);
}

void Detail::Access::takeObject(Element& target, std::span<Element> keysAndValues, Arena* arena) {
    auto const members = static_cast<std::uint32_t>(keysAndValues.size() / 2);
    if (members == 0) {
        target = Object();
        return;
    }
    auto* const rep = newObject(members, arena);
    takeWords(keysAndValues, reinterpret_cast<Element*>(rep->items()));
    rep->size = members;
    putContainer(target, rep);
}

std::ptrdiff_t Detail::Access::indexObject(Element& target, Arena* arena) {
    auto* const rep = target.object_.rep_;
    std::ptrdiff_t duplicate = -1;
    if (rep->size > ObjectRep::linearLimit) {
        rep->index = newIndex(*rep, duplicate, arena);
        return duplicate;
    }
    auto const* const all = rep->items();
    for (std::uint32_t i = 1; i < rep->size; ++i)
        for (std::uint32_t k = 0; k < i; ++k)
            if (equalTexts(all[i].key_, all[k].key_))
                duplicate = i;
    return duplicate;
}

// ---- Array ---------------------------------------------------------------------------------

namespace {

template <class Item, class Rep>
ChildIterator<Item> firstChild(Rep* rep) noexcept {
    if (rep == nullptr)
        return {};
    return {rep->items(), rep->capacity, rep->more, rep->size};
}

} // namespace

Array::Array(Array const& other) : rep_(static_cast<ArrayRep*>(shareOrCopy(other.rep_))) {}

Array& Array::operator=(Array const& other) { return *this = Array(other); }

Array& Array::operator=(Array&& other) noexcept {
    Array taken(std::move(other));
    std::swap(rep_, taken.rep_);
    return *this;
}

void Array::release() noexcept { Graveyard().drop(rep_); }

Array::ConstIterator Array::begin() const noexcept { return firstChild<Element>(rep_); }

Array::ConstIterator Array::end() const noexcept { return {}; }

unsigned int Array::size() const noexcept { return rep_ != nullptr ? rep_->size : 0; }

void Array::reserve(unsigned int capacity) {
    if (rep_ == nullptr) {
        if (capacity != 0)
            rep_ = newArray(capacity);
        return;
    }
    detach(rep_);
    makeRoom(*rep_, capacity);
}

void Array::resize(unsigned int size) {
    if (size == this->size())
        return;
    if (rep_ == nullptr) {
        rep_ = newArray(size);
        std::uninitialized_default_construct_n(rep_->items(), size);
        rep_->size = size;
        return;
    }
    detach(rep_);
    if (size > rep_->size)
        grow(*rep_, size);
    for (; rep_->size < size; ++rep_->size)
        new (placeOf(*rep_, rep_->size)) Element;
    Graveyard dead;
    while (rep_->size > size)
        dead.drop(*placeOf(*rep_, --rep_->size));
}

void Array::push_back(Element element) {
    if (rep_ == nullptr)
        rep_ = newArray(4);
    else
        detach(rep_);
    auto* const place = placeOfNext(*rep_);
    auto const* const container = Access::container(element);
    rep_->exposed = rep_->exposed || (container != nullptr && container->exposed);
    placeMoved(place, element);
    ++rep_->size;
}

Element& Array::operator[](unsigned int index) {
    if (rep_ != nullptr && index < rep_->size && !isShared(*rep_)) [[likely]] {
        rep_->exposed = true;
        return *placeOf(*rep_, index);
    }
    if (index >= mostChildren) [[unlikely]]
        throwTooMany();
    if (rep_ == nullptr)
        rep_ = newArray(std::max(index + 1, 4U));
    if (index >= rep_->size)
        resize(index + 1);
    detach(rep_);
    rep_->exposed = true;
    return *placeOf(*rep_, index);
}

Element const& Array::operator[](unsigned int index) const {
    if (index >= size())
        throw Exception::InvalidParameter("index " + std::to_string(index) +
                                          " is out of range for an array of " +
                                          std::to_string(size()));
    return *placeOf(*rep_, index);
}

// ---- Object --------------------------------------------------------------------------------

Object::Object(Object const& other) : rep_(static_cast<ObjectRep*>(shareOrCopy(other.rep_))) {}

Object& Object::operator=(Object const& other) { return *this = Object(other); }

Object& Object::operator=(Object&& other) noexcept {
    Object taken(std::move(other));
    std::swap(rep_, taken.rep_);
    return *this;
}

void Object::release() noexcept { Graveyard().drop(rep_); }

unsigned int Object::size() const noexcept { return rep_ != nullptr ? rep_->size : 0; }

Element const* Object::find(KeyView const& key) const noexcept {
    if (rep_ == nullptr)
        return nullptr;
    auto const* const member = findMember(*rep_, key);
    return member != nullptr ? &member->value : nullptr;
}

void Object::reserve(unsigned int capacity) {
    if (rep_ == nullptr && capacity != 0)
        rep_ = newObject(capacity);
}

Element& Object::operator[](KeyView const& key) {
    if (rep_ == nullptr)
        rep_ = newObject(4);
    else
        detach(rep_);
    auto* const found = findMember(*rep_, key);
    auto& member = found != nullptr ? *found : appendMember(*rep_, key);
    rep_->exposed = true;
    return member.value;
}

bool Object::erase(KeyView const& key) {
    if (find(key) == nullptr)
        return false;
    Object others;
    others.reserve(size() - 1);
    for (auto const& member : std::as_const(*this))
        if (member.key() != key.text())
            others[member.key()] = member.value;
    *this = std::move(others);
    return true;
}

Object::ConstIterator Object::begin() const noexcept { return firstChild<Member>(rep_); }

Object::ConstIterator Object::end() const noexcept { return {}; }

// ---- Element -------------------------------------------------------------------------------

Element::Element(Object object) noexcept {
    words_[1] = std::uint64_t{tagObject} << 56U;
    object_.rep_ = std::exchange(object.rep_, nullptr);
}

Element::Element(Array array) noexcept {
    words_[1] = std::uint64_t{tagArray} << 56U;
    array_.rep_ = std::exchange(array.rep_, nullptr);
}

void Element::copyShared(Element const& other) {
    // The words are null, so nothing leaks if this throws.
    if (auto* const container = Access::container(other)) {
        auto* const rep = shareOrCopy(container);
        Access::putContainer(*this, rep);
        return;
    }
    if (other.tag() == tagLongText)
        Access::putLongText(*this, Access::share(other.longText_));
    else
        copyWords(other); // an empty container
}

void Element::release() noexcept { Graveyard().drop(*this); }

std::string_view Element::separateText() const noexcept {
    return {longText_->chars(), longText_->size};
}

void Element::setString(std::string_view text) {
    if (text.size() <= Detail::inlineTextCapacity) {
        auto const image = Detail::imageOf(text);
        if (!isPlain())
            release();
        words_[0] = image.low;
        words_[1] = image.high;
    } else {
        auto* const rep = copiedText(text);
        Access::putLongText(*this, rep); // last, since `text` may view this element
    }
}

char* Element::makeString(std::size_t size, bool isPlain) {
    if (size > Detail::inlineTextCapacity) {
        auto* const rep = newText(size);
        rep->isPlain = isPlain;
        Access::putLongText(*this, rep);
        return rep->own();
    }
    reset(0, tagText);
    words_[1] |= std::uint64_t{size} << 48U;
    return reinterpret_cast<char*>(words_);
}

bool Element::asBoolean() const {
    if (!isBoolean())
        throwKind("a boolean", *this);
    return boolean();
}

std::string_view Element::asStringView() const& {
    if (!isString())
        throwKind("a string", *this);
    return text();
}

std::string Element::asString() const { return std::string(asStringView()); }

Object& Element::makeObject(unsigned int members) {
    if (isNull())
        words_[1] = std::uint64_t{tagObject} << 56U;
    else if (!isObject())
        throwKind("an object", *this);
    object_.reserve(members);
    return object_;
}

Element& Element::child(KeyView const& key) { return makeObject(0)[key]; }

Element const& Element::child(KeyView const& key) const {
    if (!isObject())
        throwKind("an object", *this);
    auto const* const found = object_.find(key);
    if (found == nullptr)
        throw Exception::InvalidParameter("no key \"" + std::string(key.text()) + '"');
    return *found;
}

Element::operator Array&() & {
    if (isNull())
        words_[1] = std::uint64_t{tagArray} << 56U;
    else if (!isArray())
        throwKind("an array", *this);
    return array_;
}

Element::operator Array const&() const& {
    if (!isArray())
        throwKind("an array", *this);
    return array_;
}

Element::operator Object const&() const& {
    if (!isObject())
        throwKind("an object", *this);
    return object_;
}

Element::operator Array() && { return std::move(static_cast<Array&>(*this)); }

Element::operator Object() && {
    if (!isObject())
        throwKind("an object", *this);
    return std::move(object_);
}

bool HasElement(Element const& element, std::string const& key) noexcept {
    return element.find(KeyView(key)) != nullptr;
}

char const* describe(Kind kind) noexcept {
    switch (kind) {
    case Kind::null:
        return "null";
    case Kind::boolean:
        return "a boolean";
    case Kind::signedNumber:
    case Kind::unsignedNumber:
    case Kind::floatingNumber:
        return "a number";
    case Kind::array:
        return "an array";
    case Kind::object:
        return "an object";
    case Kind::string:
        return "a string";
    }
    return "nothing";
}

} // namespace Tolv::MetaData
