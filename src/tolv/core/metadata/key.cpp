#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>

#include <tolv/core/metadata/field_info.h>

namespace Tolv::MetaData {

namespace {

/// A key created at run time, with the text that it views.
struct InternedKey {
    InternedKey(std::string_view from, ValueType const* type) : text(from), key(text, type) {}

    std::string const text;
    FieldInfo const key;
    InternedKey const* next = nullptr; ///< in the same bucket
};

using Bucket = std::atomic<InternedKey const*>;

/// Keys are only ever added, each at the front of its bucket, so neither lookup nor insertion takes
/// a lock that a forked child could find held. Keys are never freed, because fields that use them
/// may be destroyed after all statics of this library.
constinit std::array<Bucket, 1024> buckets{};

/// The key with this text and type from `first` on and before `end`, or null.
InternedKey const* find(InternedKey const* first, InternedKey const* end, std::string_view text,
                        ValueType const* type) {
    while (first != end && (first->text != text || first->key.type() != type))
        first = first->next;
    return first != end ? first : nullptr;
}

InternedKey const& interned(std::string_view text, ValueType const* type = nullptr) {
    auto& bucket = buckets[std::hash<std::string_view>{}(text) % buckets.size()];
    auto const* newest = bucket.load(std::memory_order_acquire);
    if (auto const* const known = find(newest, nullptr, text, type))
        return *known;
    auto made = std::make_unique<InternedKey>(text, type);
    for (;;) {
        auto const* const searched = newest;
        made->next = newest;
        if (bucket.compare_exchange_strong(newest, made.get(), std::memory_order_acq_rel))
            return *made.release();
        // Other threads have added keys in the meantime.
        if (auto const* const known = find(newest, searched, text, type))
            return *known;
    }
}

} // namespace

Key const& Key::intern(std::string_view text) { return interned(text).key; }

FieldInfo const& FieldInfo::intern(std::string_view key, ValueType const* type) {
    return interned(key, type).key;
}

std::string const& Key::name() const { return interned(text()).text; }

} // namespace Tolv::MetaData
