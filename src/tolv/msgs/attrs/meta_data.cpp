#include <tolv/msgs/attrs/meta_data.h>

namespace Tolv::Msgs::Attrs {

template class RangedMetaData<double>;
template class RangedMetaData<long long>;
template class RangedMetaData<std::complex<double>>;

template class HasMetaData<AttrMetaDataBase>;
template class HasMetaData<NumericMetaData>;
template class HasMetaData<RangedMetaData<double>>;
template class HasMetaData<RangedMetaData<long long>>;
template class HasMetaData<RangedMetaData<std::complex<double>>>;
template class HasMetaData<NumericMeasMetaData>;
template class HasMetaData<NumericMeasMetaDataWithStatus>;
template class HasMetaData<EnumMetaData>;
template class HasMetaData<IntVectorMetaData>;
template class HasMetaData<StringMetaData>;

} // namespace Tolv::Msgs::Attrs
