#pragma once

#include <complex>
#include <string>

#include <tolv/msgs/export.h>
#include <tolv/msgs/record.h>

/// @file
/// The metadata of an attribute: name, limits, units and accepted text. All fields except
/// "DisabledList" are optional, and zero, false or empty by default.
namespace Tolv::Msgs::Attrs {

/// Metadata common to all attributes.
class TOLV_MESSAGES_API AttrMetaDataBase : public MirroredObject {
public:
    Reflector<std::string> name{this, "Name"_key, Optional}; ///< human-readable
    /// Not used by this library.
    ReflectedAddress controlAttrId{this, "ControlAttrID"_key, Optional};
};

/// How a number is displayed.
class TOLV_MESSAGES_API NumericMetaData : public AttrMetaDataBase {
public:
    /// The units in which the value is available.
    ReflectorArray<std::string> broadcastUnits{this, "BroadcastUnits"_key, Optional};
    /// The unit of the value: "Hz".
    Reflector<std::string> currentBroadcastUnit{this, "CurrentBroadcastUnit"_key, Optional};
    /// Decimal places on a display.
    Reflector<int> precision{this, "Precision"_key, Optional};
};

/// The limits of a number, both inclusive, and the step between values. `T` is `double`, `long
/// long` or `std::complex<double>`.
template <class T>
class RangedMetaData : public NumericMetaData {
public:
    Reflector<T> minimum{this, "Minimum"_key, Optional}; ///< inclusive
    Reflector<T> maximum{this, "Maximum"_key, Optional}; ///< inclusive
    Reflector<T> step{this, "Step"_key, Optional};       ///< between values; not checked
    /// Whether "Step" is a plain number rather than in the unit of the value.
    Reflector<bool> stepDimensionless{this, "StepDimensionless"_key, Optional};
};

/// Statistics of a measured number. "Minimum" and "Maximum" are measured values, not limits.
class TOLV_MESSAGES_API NumericMeasMetaData : public AttrMetaDataBase {
public:
    /// The units in which the value is available.
    ReflectorArray<std::string> broadcastUnits{this, "BroadcastUnits"_key, Optional};
    /// The unit of the value: "Hz".
    Reflector<std::string> currentBroadcastUnit{this, "CurrentBroadcastUnit"_key, Optional};
    /// Decimal places on a display.
    Reflector<int> precision{this, "Precision"_key, Optional};
    Reflector<double> average{this, "Average"_key, Optional}; ///< of the measured values
    Reflector<double> minimum{this, "Minimum"_key, Optional}; ///< the lowest measured value
    Reflector<double> maximum{this, "Maximum"_key, Optional}; ///< the highest measured value
    Reflector<double> percent{this, "Percent"_key, Optional}; ///< defined by the producer
};

/// `NumericMeasMetaData` with the result of a limit test.
class TOLV_MESSAGES_API NumericMeasMetaDataWithStatus : public AttrMetaDataBase {
public:
    /// The units in which the value is available.
    ReflectorArray<std::string> broadcastUnits{this, "BroadcastUnits"_key, Optional};
    /// The unit of the value: "Hz".
    Reflector<std::string> currentBroadcastUnit{this, "CurrentBroadcastUnit"_key, Optional};
    /// Decimal places on a display.
    Reflector<int> precision{this, "Precision"_key, Optional};
    Reflector<double> average{this, "Average"_key, Optional}; ///< of the measured values
    Reflector<double> minimum{this, "Minimum"_key, Optional}; ///< the lowest measured value
    Reflector<double> maximum{this, "Maximum"_key, Optional}; ///< the highest measured value
    Reflector<double> percent{this, "Percent"_key, Optional}; ///< defined by the producer
    /// The result of the limit test, a number whose meaning the peers define.
    Reflector<int> limitStatus{this, "LimitStatus"_key, Optional};
};

/// Which entries of an enumerated payload's "enums" are disabled, by position. The list may differ
/// in length from "enums": missing flags count as false; surplus flags are ignored.
class TOLV_MESSAGES_API EnumMetaData : public AttrMetaDataBase {
public:
    /// True if the entry at this position is disabled.
    ReflectorArray<bool> disabledList{this, "DisabledList"_key, Required, true};
};

/// The maximum length of a list of integers.
class TOLV_MESSAGES_API IntVectorMetaData : public AttrMetaDataBase {
public:
    Reflector<unsigned int> maxLength{this, field<"MaxLength", Unit{"elements"}>, Optional}; ///< elements
};

/// The strings that are accepted.
class TOLV_MESSAGES_API StringMetaData : public AttrMetaDataBase {
public:
    Reflector<unsigned int> maxLength{this, field<"MaxLength", Unit{"bytes"}>, Optional}; ///< bytes
    Reflector<bool> passwordField{this, "PasswordField"_key, Optional}; ///< for displays
    /// A regular expression in the POSIX extended grammar that must match the whole string.
    Reflector<std::string> validCharacters{this, "ValidCharacters"_key, Optional};
};

/// A payload that contains metadata of the class `M` alongside its value.
template <class M>
class HasMetaData : public MirroredObject {
public:
    /// The metadata; unset if the attribute has none.
    Reflector<M> attributeMetaData{this, "AttributeMetaData"_key, Optional};

    /// The metadata.
    /// @throws Exception::InvalidOperation if it is uninitialized; check
    /// `attributeMetaData.initialized()`.
    [[nodiscard]] M const& metaData() const& { return attributeMetaData(); }
    template <class = void>
    [[nodiscard]] M metaData() && { ///< of a temporary payload
        return attributeMetaData();
    }
    /// Extension: the metadata for changes in place; it is initialized from now on.
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
