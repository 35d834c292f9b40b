#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <mutex>
#include <new>
#include <utility>

#include <tolv/core/detail/fork.h>
#include <tolv/core/msgs/message.h>

namespace Tolv::Msgs {

/// The entry of one id. A slot exists as long as the library, and is reused if the id is registered
/// again. A lookup therefore never meets freed memory and needs no lock.
struct Message::MsgFactory::Slot {
    unsigned long long id;
    Slot* next;                             ///< in the same bucket
    std::atomic<Creator> creator = nullptr; ///< null if not currently registered
    std::string typeName;                   ///< guarded by the mutex
};

namespace {

/// Static storage for slots. It is released when the library is unloaded, and nothing is freed that
/// another thread may still read while the process ends. It is far larger than the number of
/// classes in use; any further slots are allocated on the heap and never freed.
constexpr std::size_t slotsInside = 1024;

/// Constant-initialized and never destroyed: other static objects may register before this one
/// would be constructed, and deregister after it would be destroyed.
struct State {
    std::mutex mutex; ///< for changes and listings; lookups take no lock
    std::array<std::atomic<void*>, 1024> buckets{};
    std::atomic<std::size_t> size = 0;
    std::size_t slots = 0; ///< number created so far
};

union Immortal {
    State state;

    constexpr Immortal() noexcept : state() {}
    constexpr ~Immortal() {} // NOLINT(modernize-use-equals-default): leaves the state alone
};

constinit Immortal immortal;

State& state() noexcept { return immortal.state; }

[[maybe_unused]] bool const forksInOrder =
    Tolv::Detail::holdAcrossFork([]() -> std::mutex& { return state().mutex; });

/// Memory for the next slot. The caller holds the mutex.
template <class Slot>
void* roomForSlot() {
    alignas(Slot) constinit static std::byte inside[slotsInside][sizeof(Slot)]{};
    auto const index = state().slots++;
    return index < slotsInside ? inside[index] : ::operator new(sizeof(Slot));
}

std::atomic<void*>& bucketOf(unsigned long long id) noexcept {
    // Family, batch and number of a message are in distant bits of the id.
    auto const mixed = id * 0x9E3779B97F4A7C15ULL;
    return state().buckets[static_cast<std::size_t>(mixed >> 54U)];
}

} // namespace

Message::MsgFactory& Message::MsgFactory::Instance() noexcept {
    static MsgFactory factory;
    return factory;
}

Message::MsgFactory::Slot* Message::MsgFactory::slotOf(unsigned long long id) const noexcept {
    auto* slot = static_cast<Slot*>(bucketOf(id).load(std::memory_order_acquire));
    while (slot != nullptr && slot->id != id)
        slot = slot->next;
    return slot;
}

bool Message::MsgFactory::registerMessage(unsigned long long id, Creator creator,
                                          std::string const& typeName) {
    std::lock_guard const lock(state().mutex);
    auto* slot = slotOf(id);
    if (creator == nullptr || (slot != nullptr && slot->creator.load() != nullptr))
        return false;
    if (slot == nullptr) {
        auto& bucket = bucketOf(id);
        auto name = typeName; // may throw, so copy before a slot is taken
        slot = new (roomForSlot<Slot>())
            Slot{id, static_cast<Slot*>(bucket.load()), nullptr, std::move(name)};
        bucket.store(slot, std::memory_order_release);
    } else {
        slot->typeName = typeName;
    }
    slot->creator.store(creator, std::memory_order_release);
    ++state().size;
    return true;
}

void Message::MsgFactory::deregisterMessage(unsigned long long id) noexcept {
    std::lock_guard const lock(state().mutex);
    auto* const slot = slotOf(id);
    if (slot != nullptr && slot->creator.exchange(nullptr) != nullptr) {
        std::string().swap(slot->typeName); // frees the memory, which assignment would keep
        --state().size;
    }
}

Message::MsgFactory::Creator Message::MsgFactory::find(unsigned long long id) const noexcept {
    auto const* const slot = slotOf(id);
    return slot != nullptr ? slot->creator.load(std::memory_order_acquire) : nullptr;
}

std::size_t Message::MsgFactory::size() const noexcept { return state().size.load(); }

std::vector<Message::MsgFactory::Entry> Message::MsgFactory::entries() const {
    std::vector<Entry> all;
    {
        std::lock_guard const lock(state().mutex);
        for (auto const& bucket : state().buckets)
            for (auto* slot = static_cast<Slot*>(bucket.load()); slot != nullptr; slot = slot->next)
                if (slot->creator.load() != nullptr)
                    all.push_back({slot->id, slot->typeName});
    }
    std::sort(all.begin(), all.end(), [](auto const& l, auto const& r) { return l.id < r.id; });
    return all;
}

} // namespace Tolv::Msgs
