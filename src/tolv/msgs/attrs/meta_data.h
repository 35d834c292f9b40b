#pragma once

#include <complex>
#include <string>

#include <tolv/msgs/export.h>
#include <tolv/msgs/record.h>

/// @file
/// What an attribute can say of its value beside the value: a name, limits, units, the text that it
/// accepts. Every field but "DisabledList" is optional and zero, false or empty by default.
namespace Tolv::Msgs::Attrs {

/// What any attribute can say of itself.
class TOLV_MESSAGES_API AttrMetaDataBase : public MirroredObject {
public:
    Reflector<std::string> name{this, "Name"_key, Optional};             ///< for people
    ReflectedAddress controlAttrId{this, "ControlAttrID"_key, Optional}; ///< carried, not used here

    AttrMetaDataBase() = default;
    AttrMetaDataBase(AttrMetaDataBase const& other) : AttrMetaDataBase() { *this = other; }
    AttrMetaDataBase& operator=(AttrMetaDataBase const&) = default;
};

/// How a number is shown.
class TOLV_MESSAGES_API NumericMetaData : public AttrMetaDataBase {
public:
    /// The units that the value can be had in.
    ReflectorArray<std::string> broadcastUnits{this, "BroadcastUnits"_key, Optional};
    /// The unit that the value is in now: "Hz".
    Reflector<std::string> currentBroadcastUnit{this, "CurrentBroadcastUnit"_key, Optional};
    /// Digits behind the point, for displays.
    Reflector<int> precision{this, "Precision"_key, Optional};

    NumericMetaData() = default;
    NumericMetaData(NumericMetaData const& other) : NumericMetaData() { *this = other; }
    NumericMetaData& operator=(NumericMetaData const&) = default;
};

/// The limits of a number, both inclusive, and the step between values. `T` is `double`,
/// `long long` or `std::complex<double>`.
template <class T>
class RangedMetaData : public NumericMetaData {
public:
    Reflector<T> minimum{this, "Minimum"_key, Optional}; ///< inclusive
    Reflector<T> maximum{this, "Maximum"_key, Optional}; ///< inclusive
    Reflector<T> step{this, "Step"_key, Optional};       ///< between values; not checked
    /// Whether "Step" is a plain number, not in the unit of the value.
    Reflector<bool> stepDimensionless{this, "StepDimensionless"_key, Optional};

    RangedMetaData() = default;
    RangedMetaData(RangedMetaData const& other) : RangedMetaData() { *this = other; }
    RangedMetaData& operator=(RangedMetaData const&) = default;
};

/// Statistics of a measured number. "Minimum" and "Maximum" are measured values, no limits.
class TOLV_MESSAGES_API NumericMeasMetaData : public AttrMetaDataBase {
public:
    /// The units that the value can be had in.
    ReflectorArray<std::string> broadcastUnits{this, "BroadcastUnits"_key, Optional};
    /// The unit that the value is in now: "Hz".
    Reflector<std::string> currentBroadcastUnit{this, "CurrentBroadcastUnit"_key, Optional};
    /// Digits behind the point, for displays.
    Reflector<int> precision{this, "Precision"_key, Optional};
    Reflector<double> average{this, "Average"_key, Optional}; ///< of the values measured
    Reflector<double> minimum{this, "Minimum"_key, Optional}; ///< the lowest value measured
    Reflector<double> maximum{this, "Maximum"_key, Optional}; ///< the highest value measured
    Reflector<double> percent{this, "Percent"_key, Optional}; ///< as the producer means it

    NumericMeasMetaData() = default;
    NumericMeasMetaData(NumericMeasMetaData const& other) : NumericMeasMetaData() { *this = other; }
    NumericMeasMetaData& operator=(NumericMeasMetaData const&) = default;
};

/// The same with the outcome of a limit test.
class TOLV_MESSAGES_API NumericMeasMetaDataWithStatus : public AttrMetaDataBase {
public:
    /// The units that the value can be had in.
    ReflectorArray<std::string> broadcastUnits{this, "BroadcastUnits"_key, Optional};
    /// The unit that the value is in now: "Hz".
    Reflector<std::string> currentBroadcastUnit{this, "CurrentBroadcastUnit"_key, Optional};
    /// Digits behind the point, for displays.
    Reflector<int> precision{this, "Precision"_key, Optional};
    Reflector<double> average{this, "Average"_key, Optional}; ///< of the values measured
    Reflector<double> minimum{this, "Minimum"_key, Optional}; ///< the lowest value measured
    Reflector<double> maximum{this, "Maximum"_key, Optional}; ///< the highest value measured
    Reflector<double> percent{this, "Percent"_key, Optional}; ///< as the producer means it
    /// The outcome, a number that the peers agree on.
    Reflector<int> limitStatus{this, "LimitStatus"_key, Optional};

    NumericMeasMetaDataWithStatus() = default;
    NumericMeasMetaDataWithStatus(NumericMeasMetaDataWithStatus const& other)
        : NumericMeasMetaDataWithStatus() {
        *this = other;
    }
    NumericMeasMetaDataWithStatus& operator=(NumericMeasMetaDataWithStatus const&) = default;
};

/// Which entries of an enumerated payload's "enums" are switched off, by position. The list need
/// not have the length of "enums": missing flags count as false, surplus ones are ignored.
class TOLV_MESSAGES_API EnumMetaData : public AttrMetaDataBase {
public:
    /// True: the entry at this position is switched off.
    ReflectorArray<bool> disabledList{this, "DisabledList"_key, Required, true};

    EnumMetaData() = default;
    EnumMetaData(EnumMetaData const& other) : EnumMetaData() { *this = other; }
    EnumMetaData& operator=(EnumMetaData const&) = default;
};

/// The bound of a list of whole numbers.
class TOLV_MESSAGES_API IntVectorMetaData : public AttrMetaDataBase {
public:
    Reflector<unsigned int> maxLength{this, "MaxLength"_key, Optional}; ///< elements

    IntVectorMetaData() = default;
    IntVectorMetaData(IntVectorMetaData const& other) : IntVectorMetaData() { *this = other; }
    IntVectorMetaData& operator=(IntVectorMetaData const&) = default;
};

/// What a text may be.
class TOLV_MESSAGES_API StringMetaData : public AttrMetaDataBase {
public:
    Reflector<unsigned int> maxLength{this, "MaxLength"_key, Optional}; ///< bytes
    Reflector<bool> passwordField{this, "PasswordField"_key, Optional}; ///< for displays
    /// A regular expression in the POSIX extended grammar that describes the whole text.
    Reflector<std::string> validCharacters{this, "ValidCharacters"_key, Optional};

    StringMetaData() = default;
    StringMetaData(StringMetaData const& other) : StringMetaData() { *this = other; }
    StringMetaData& operator=(StringMetaData const&) = default;
};

/// A payload that carries a record of the class `M` beside its value.
template <class M>
class HasMetaData : public MirroredObject {
public:
    /// The record; unset: the attribute says nothing but its value.
    Reflector<M> attributeMetaData{this, "AttributeMetaData"_key, Optional};

    HasMetaData() = default;
    HasMetaData(HasMetaData const& other) : HasMetaData() { *this = other; }
    HasMetaData& operator=(HasMetaData const&) = default;

    /// The record.
    /// @throws Exception::InvalidOperation when it is not set; `attributeMetaData.initialized()`
    /// tells.
    [[nodiscard]] M const& metaData() const& { return attributeMetaData(); }
    template <class = void>
    [[nodiscard]] M metaData() && { ///< of a temporary payload
        return attributeMetaData();
    }
    /// Extension: the record, to be changed in place; it counts as set from now on.
    M& editMetaData() & { return attributeMetaData.edit(); }
};

extern template class TOLV_MESSAGES_API RangedMetaData<double>;
extern template class TOLV_MESSAGES_API RangedMetaData<long long>;
extern template class TOLV_MESSAGES_API RangedMetaData<std::complex<double>>;

extern template class TOLV_MESSAGES_API HasMetaData<AttrMetaDataBase>;
extern template class TOLV_MESSAGES_API HasMetaData<NumericMetaData>;
extern template class TOLV_MESSAGES_API HasMetaData<RangedMetaData<double>>;
extern template class TOLV_MESSAGES_API HasMetaData<RangedMetaData<long long>>;
extern template class TOLV_MESSAGES_API HasMetaData<RangedMetaData<std::complex<double>>>;
extern template class TOLV_MESSAGES_API HasMetaData<NumericMeasMetaData>;
extern template class TOLV_MESSAGES_API HasMetaData<NumericMeasMetaDataWithStatus>;
extern template class TOLV_MESSAGES_API HasMetaData<EnumMetaData>;
extern template class TOLV_MESSAGES_API HasMetaData<IntVectorMetaData>;
extern template class TOLV_MESSAGES_API HasMetaData<StringMetaData>;

} // namespace Tolv::Msgs::Attrs
