#include <tolv/msgs/attrs/traces.h>

namespace Tolv::MetaData {
template class ReflectorArray<Msgs::Attrs::TraceSegment>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs::Attrs {

TraceSegment::TraceSegment(Lossless<unsigned long long> offset,
                           Lossless<unsigned long long> length) {
    this->offset = offset;
    this->length = length;
}

template <class T, class M>
bool TracePayload<T, M>::validate() const {
    return true;
}

template <class T, class M>
std::string TracePayload<T, M>::explainInvalid() const {
    return {};
}

template <class T, class M>
bool TraceWithSegmentsPayload<T, M>::validate() const {
    return true;
}

template class TracePayload<double, RangedMetaData<double>>;
template class TracePayload<std::complex<double>, RangedMetaData<double>>;
template class TracePayload<std::complex<double>, RangedMetaData<std::complex<double>>>;
template class TracePayload<bool, RangedMetaData<long long>>;
template class TracePayload<std::complex<bool>, RangedMetaData<long long>>;
template class TracePayload<bool, AttrMetaDataBase>;
template class TracePayload<std::complex<bool>, AttrMetaDataBase>;

template class TraceWithSegmentsPayload<double, RangedMetaData<double>>;
template class TraceWithSegmentsPayload<std::complex<double>, RangedMetaData<double>>;
template class TraceWithSegmentsPayload<bool, RangedMetaData<long long>>;
template class TraceWithSegmentsPayload<std::complex<bool>, RangedMetaData<long long>>;

} // namespace Tolv::Msgs::Attrs
