#include <tolv/msgs/utils/may_contain_error.h>

namespace Tolv::MetaData {
template class PolymorphicReflector<Msgs::Errs::ErrorMessage>;
} // namespace Tolv::MetaData
