#include <algorithm>
#include <mutex>
#include <unordered_map>
#include <utility>

#include <tolv/core/detail/fork.h>
#include <tolv/core/metadata/detail/guests.h>

namespace Tolv::MetaData::Detail {

namespace {

struct Table {
    std::mutex mutex;
    std::unordered_map<MirroredObject const*, std::vector<Guest>> byRecord;
    std::unordered_map<ReflectorBase const*, MirroredObject const*> records;
};

/// Never destroyed: static records may be destroyed after the statics of this library.
Table& table() {
    static auto& only = *new Table;
    return only;
}

[[maybe_unused]] bool const forksInOrder =
    Tolv::Detail::holdAcrossFork([]() -> std::mutex& { return table().mutex; });

} // namespace

void addGuest(MirroredObject const& record, Guest const& guest) {
    auto& all = table();
    std::lock_guard const lock(all.mutex);
    auto& guests = all.byRecord[&record];
    guests.reserve(guests.size() + 1);
    all.records.emplace(guest.field, &record);
    guests.push_back(guest);
}

void removeGuest(ReflectorBase const& field) noexcept {
    auto& all = table();
    std::lock_guard const lock(all.mutex);
    auto const record = all.records.find(&field);
    if (record == all.records.end())
        return;
    auto const guests = all.byRecord.find(record->second);
    std::erase_if(guests->second, [&](Guest const& guest) { return guest.field == &field; });
    all.records.erase(record);
}

MirroredObject const* hostOf(ReflectorBase const& field) noexcept {
    auto& all = table();
    std::lock_guard const lock(all.mutex);
    auto const record = all.records.find(&field);
    return record != all.records.end() ? record->second : nullptr;
}

std::vector<Guest> guestsOf(MirroredObject const& record) {
    auto& all = table();
    std::lock_guard const lock(all.mutex);
    auto const guests = all.byRecord.find(&record);
    return guests != all.byRecord.end() ? guests->second : std::vector<Guest>();
}

std::vector<Guest> forgetGuestsOf(MirroredObject const& record) noexcept {
    auto& all = table();
    std::lock_guard const lock(all.mutex);
    auto const found = all.byRecord.find(&record);
    if (found == all.byRecord.end())
        return {};
    auto guests = std::move(found->second);
    all.byRecord.erase(found);
    for (auto const& guest : guests)
        all.records.erase(guest.field);
    return guests;
}

} // namespace Tolv::MetaData::Detail
