#pragma once

#include <tolv/fields/reflector.h>
#include <tolv/fields/reflector_array.h>

/// @file
/// The fields of plain types, instantiated once in libTolvMessages for all of its users.
namespace Tolv::MetaData {

/// @cond
#define TOLV_FIELD(...)                                                                            \
    extern template class TOLV_MESSAGES_API ReflectorNoWriteParend<__VA_ARGS__>;                   \
    extern template class TOLV_MESSAGES_API Reflector<__VA_ARGS__>;
#define TOLV_ARRAY_FIELD(...) extern template class TOLV_MESSAGES_API ReflectorArray<__VA_ARGS__>;
#include <tolv/fields/instances.def>
#undef TOLV_FIELD
#undef TOLV_ARRAY_FIELD
/// @endcond

} // namespace Tolv::MetaData
