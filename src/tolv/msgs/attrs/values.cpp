#include <tolv/msgs/attrs/values.h>

#include <tolv/msgs/attrs/detail/sentences.h>
#include <tolv/msgs/attrs/detail/valid_characters.h>
#include <tolv/msgs/attrs/enums.h>

namespace Tolv::Msgs::Attrs {

namespace {

/// What is wrong with a value. Shared by `validate` and `explainInvalid`.
enum class Fault {
    none,
    belowMinimum,
    aboveMaximum,
    notComparable, ///< with "Maximum": one of the two is NaN
    tooLong,
    noMatch,
    noJudge, ///< only a derived class can decide
};

/// The numbers for which limits are enforced; complex numbers have no order.
template <class T>
concept Ordered = std::is_arithmetic_v<T>;

template <class T, class M>
Fault faultOf(AttrWithMetaData<T, M> const& /*unbounded*/) {
    return Fault::none;
}

template <class T>
Fault faultOf(AttrWithMetaData<T, EnumMetaData> const& /*base of an enumerated attribute*/) {
    return Fault::noJudge;
}

template <Ordered T>
Fault faultOf(AttrWithMetaData<T, RangedMetaData<T>> const& attr) {
    T const value = attr.value();
    if (!attr.attributeMetaData.initialized())
        return Fault::none;
    auto const& limits = attr.metaData();
    if (limits.minimum.initialized() && value < limits.minimum())
        return Fault::belowMinimum;
    if (!limits.maximum.initialized() || value <= limits.maximum())
        return Fault::none;
    return value > limits.maximum() ? Fault::aboveMaximum : Fault::notComparable;
}

template <class Attr>
bool isTooLong(Attr const& attr) {
    auto const& maxLength = attr.metaData().maxLength;
    return maxLength.initialized() && attr.value().size() > maxLength();
}

Fault faultOf(AttrWithMetaData<std::vector<int>, IntVectorMetaData> const& attr) {
    return attr.attributeMetaData.initialized() && isTooLong(attr) ? Fault::tooLong : Fault::none;
}

Fault faultOf(AttrWithMetaData<std::string, StringMetaData> const& attr) {
    if (!attr.attributeMetaData.initialized())
        return Fault::none;
    if (isTooLong(attr))
        return Fault::tooLong;
    auto const& pattern = attr.metaData().validCharacters;
    return pattern.initialized() && !matchesWhole(attr.value(), pattern()) ? Fault::noMatch
                                                                           : Fault::none;
}

template <class T, class M>
std::string sentence(AttrWithMetaData<T, M> const& /*unbounded*/, Fault /*none*/) {
    return {};
}

template <class T>
std::string sentence(AttrWithMetaData<T, EnumMetaData> const& attr, Fault /*noJudge*/) {
    if (auto const* const enumerated = dynamic_cast<EnumeratedAttr<T> const*>(&attr))
        return enumerated->explainInvalid();
    return "an enumerated value without enums is never valid";
}

template <Ordered T>
std::string sentence(AttrWithMetaData<T, RangedMetaData<T>> const& attr, Fault fault) {
    auto const value = "value " + shown(attr.value());
    auto const& limits = attr.metaData();
    switch (fault) {
    case Fault::belowMinimum:
        return value + " is below Minimum " + shown(limits.minimum());
    case Fault::aboveMaximum:
        return value + " is above Maximum " + shown(limits.maximum());
    default:
        return value + " cannot be compared with Maximum " + shown(limits.maximum());
    }
}

std::string sentence(AttrWithMetaData<std::vector<int>, IntVectorMetaData> const& attr,
                     Fault /*tooLong*/) {
    return std::to_string(attr.value().size()) + " elements, MaxLength is " +
           std::to_string(attr.metaData().maxLength());
}

std::string sentence(AttrWithMetaData<std::string, StringMetaData> const& attr, Fault fault) {
    auto const& limits = attr.metaData();
    if (fault == Fault::tooLong)
        return std::to_string(attr.value().size()) + " bytes, MaxLength is " +
               std::to_string(limits.maxLength());
    return "value " + shown(attr.value()) + " does not match ValidCharacters " +
           shown(limits.validCharacters());
}

} // namespace

template <class T, class M>
std::string const
    AttrWithMetaData<T, M>::valMirrorName(static_cast<MetaData::Key const&>(valueField()).text());

template <class T, class M>
bool AttrWithMetaData<T, M>::validate() const {
    return faultOf(*this) == Fault::none;
}

template <class T, class M>
std::string AttrWithMetaData<T, M>::explainInvalid() const {
    auto const fault = faultOf(*this);
    return fault == Fault::none ? std::string() : sentence(*this, fault);
}

template class AttrWithMetaData<bool, AttrMetaDataBase>;
template class AttrWithMetaData<double, RangedMetaData<double>>;
template class AttrWithMetaData<std::complex<double>, RangedMetaData<std::complex<double>>>;
template class AttrWithMetaData<long long, RangedMetaData<long long>>;
template class AttrWithMetaData<std::vector<int>, IntVectorMetaData>;
template class AttrWithMetaData<std::string, StringMetaData>;
template class AttrWithMetaData<double, NumericMetaData>;
template class AttrWithMetaData<double, NumericMeasMetaData>;
template class AttrWithMetaData<double, NumericMeasMetaDataWithStatus>;
template class AttrWithMetaData<EnumVal, EnumMetaData>;
template class AttrWithMetaData<int, EnumMetaData>;
template class AttrWithMetaData<std::string, EnumMetaData>;

} // namespace Tolv::Msgs::Attrs
