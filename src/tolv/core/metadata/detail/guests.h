#pragma once

#include <cstdint>
#include <vector>

#include <tolv/core/metadata/mirrored_object.h>

/// @file
/// The fields outside of their records. They are rare, so that neither they nor their records spend
/// memory on finding one another: one table, guarded by a lock, has them all.
namespace Tolv::MetaData::Detail {

struct Guest {
    ReflectorBase* field;
    std::int32_t after; ///< the newest field inside of the record when this one registered
};

/// @throws std::bad_alloc
void addGuest(MirroredObject const& record, Guest const& guest);
void removeGuest(ReflectorBase const& field) noexcept;
/// The record of a guest.
MirroredObject const* hostOf(ReflectorBase const& field) noexcept;
/// In the order of their registration. @throws std::bad_alloc
std::vector<Guest> guestsOf(MirroredObject const& record);
/// The same; the table forgets them.
std::vector<Guest> forgetGuestsOf(MirroredObject const& record) noexcept;

} // namespace Tolv::MetaData::Detail
