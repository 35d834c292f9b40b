#include <tolv/fields/instances.h>

namespace Tolv::MetaData {

#define TOLV_FIELD(...)                                                                            \
    template class ReflectorNoWriteParend<__VA_ARGS__>;                                            \
    template class Reflector<__VA_ARGS__>;
#define TOLV_ARRAY_FIELD(...) template class ReflectorArray<__VA_ARGS__>;
#include <tolv/fields/instances.def>
#undef TOLV_FIELD
#undef TOLV_ARRAY_FIELD

} // namespace Tolv::MetaData
