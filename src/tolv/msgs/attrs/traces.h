#pragma once

#include <complex>
#include <string>

#include <tolv/msgs/attrs/meta_data.h>

/// @file
/// Arrays of samples with the metadata of their attribute. Samples are written in the encoded form:
/// about 11 bytes per `double`, and a sixth of a byte per `bool`.
namespace Tolv::Msgs::Attrs {

/// A segment of a trace. Nothing checks that it lies within the trace.
class TOLV_MESSAGES_API TraceSegment : public MirroredObject {
public:
    Reflector<unsigned long long> offset{
        this, field<"offset", Unit{"samples"}, Doc{"the start of the segment within the trace"}>,
        Required};
    Reflector<unsigned long long> length{
        this, field<"length", Unit{"samples"}, Doc{"the length of the segment"}, Example{"1024"}>,
        Required};

    TraceSegment() = default;
    /// A segment of `length` samples, starting at `offset`.
    TraceSegment(Lossless<unsigned long long> offset, Lossless<unsigned long long> length);
};

} // namespace Tolv::Msgs::Attrs

namespace Tolv::MetaData {
extern template class TOLV_MESSAGES_API ReflectorArray<Msgs::Attrs::TraceSegment>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs::Attrs {

/// Marks the trace payloads.
class isTrace {};

/// Samples of type `T`, with metadata of the class `M`.
template <class T, class M>
class TracePayload : public HasMetaData<M>, public isTrace {
public:
    ReflectorArray<T> trace{this, field<"trace", Doc{"the samples of the trace"}>, Required, true};

    /// Always true: neither samples nor segments are compared with the metadata.
    [[nodiscard]] virtual bool validate() const;

    /// Extension: why `validate` returns false; always empty.
    [[nodiscard]] std::string explainInvalid() const;
};

/// A trace that consists of several segments, which need not cover it.
template <class T, class M>
class TraceWithSegmentsPayload : public TracePayload<T, M> {
public:
    ReflectorArray<TraceSegment> segments{
        this, field<"segments", Doc{"the segments of the trace, which need not cover it"}>,
        Required};

    /// Always true, as for a trace without segments.
    [[nodiscard]] bool validate() const override;
};

extern template class TOLV_MESSAGES_API TracePayload<double, RangedMetaData<double>>;
extern template class TOLV_MESSAGES_API TracePayload<std::complex<double>, RangedMetaData<double>>;
extern template class TOLV_MESSAGES_API
    TracePayload<std::complex<double>, RangedMetaData<std::complex<double>>>;
extern template class TOLV_MESSAGES_API TracePayload<bool, RangedMetaData<long long>>;
extern template class TOLV_MESSAGES_API TracePayload<std::complex<bool>, RangedMetaData<long long>>;
extern template class TOLV_MESSAGES_API TracePayload<bool, AttrMetaDataBase>;
extern template class TOLV_MESSAGES_API TracePayload<std::complex<bool>, AttrMetaDataBase>;

extern template class TOLV_MESSAGES_API TraceWithSegmentsPayload<double, RangedMetaData<double>>;
extern template class TOLV_MESSAGES_API
    TraceWithSegmentsPayload<std::complex<double>, RangedMetaData<double>>;
extern template class TOLV_MESSAGES_API TraceWithSegmentsPayload<bool, RangedMetaData<long long>>;
extern template class TOLV_MESSAGES_API
    TraceWithSegmentsPayload<std::complex<bool>, RangedMetaData<long long>>;

} // namespace Tolv::Msgs::Attrs
