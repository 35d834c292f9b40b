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
    Reflector<std::string> name{
        this,
        field<"Name", Doc{"the name of the attribute, for people; none if absent"},
              Example{"Center frequency"}>,
        Optional};
    ReflectedAddress controlAttrId{
        this,
        field<"ControlAttrID", Doc{"an address whose meaning the peers define; none if absent"},
              Example{R"(["rx1","frequency"])"}>,
        Optional};
};

/// How a number is displayed.
class TOLV_MESSAGES_API NumericMetaData : public AttrMetaDataBase {
public:
    ReflectorArray<std::string> broadcastUnits{
        this,
        field<"BroadcastUnits", Doc{"the units in which the value is available; unknown if absent"},
              Example{R"(["Hz","MHz"])"}>,
        Optional};
    Reflector<std::string> currentBroadcastUnit{
        this,
        field<"CurrentBroadcastUnit", Doc{"the unit of the value; unknown if absent"},
              Example{"Hz"}>,
        Optional};
    Reflector<int> precision{
        this,
        field<"Precision", Doc{"the number of decimal places on a display; not fixed if absent"},
              Example{"3"}>,
        Optional};
};

/// The limits of a number, both inclusive, and the step between values. `T` is `double`, `long
/// long` or `std::complex<double>`. Nothing checks the limits of a complex number.
template <class T>
class RangedMetaData : public NumericMetaData {
public:
    Reflector<T> minimum{
        this, field<"Minimum", Doc{"the lowest accepted value; no lower limit if absent"}>,
        Optional};
    Reflector<T> maximum{
        this, field<"Maximum", Doc{"the highest accepted value; no upper limit if absent"}>,
        Optional};
    Reflector<T> step{
        this, field<"Step", Doc{"the step between values, which nothing checks; none if absent"}>,
        Optional};
    Reflector<bool> stepDimensionless{
        this,
        field<"StepDimensionless",
              Doc{"whether the step is a plain number; in the unit of the value if absent"}>,
        Optional};
};

/// Statistics of a measured number. "Minimum" and "Maximum" are measured values, not limits.
class TOLV_MESSAGES_API NumericMeasMetaData : public AttrMetaDataBase {
public:
    ReflectorArray<std::string> broadcastUnits{
        this,
        field<"BroadcastUnits", Doc{"the units in which the value is available; unknown if absent"},
              Example{R"(["Hz","MHz"])"}>,
        Optional};
    Reflector<std::string> currentBroadcastUnit{
        this,
        field<"CurrentBroadcastUnit", Doc{"the unit of the value; unknown if absent"},
              Example{"Hz"}>,
        Optional};
    Reflector<int> precision{
        this,
        field<"Precision", Doc{"the number of decimal places on a display; not fixed if absent"},
              Example{"3"}>,
        Optional};
    Reflector<double> average{
        this,
        field<"Average", Doc{"the average of the measured values; unknown if absent"},
              Example{"20.5"}>,
        Optional};
    Reflector<double> minimum{
        this,
        field<"Minimum", Doc{"the lowest measured value; unknown if absent"}, Example{"19.0"}>,
        Optional};
    Reflector<double> maximum{
        this,
        field<"Maximum", Doc{"the highest measured value; unknown if absent"}, Example{"22.0"}>,
        Optional};
    Reflector<double> percent{
        this,
        field<"Percent", Doc{"a percentage that the producer defines; none if absent"},
              Example{"50.0"}>,
        Optional};
};

/// `NumericMeasMetaData` with the result of a limit test.
class TOLV_MESSAGES_API NumericMeasMetaDataWithStatus : public AttrMetaDataBase {
public:
    ReflectorArray<std::string> broadcastUnits{
        this,
        field<"BroadcastUnits", Doc{"the units in which the value is available; unknown if absent"},
              Example{R"(["Hz","MHz"])"}>,
        Optional};
    Reflector<std::string> currentBroadcastUnit{
        this,
        field<"CurrentBroadcastUnit", Doc{"the unit of the value; unknown if absent"},
              Example{"Hz"}>,
        Optional};
    Reflector<int> precision{
        this,
        field<"Precision", Doc{"the number of decimal places on a display; not fixed if absent"},
              Example{"3"}>,
        Optional};
    Reflector<double> average{
        this,
        field<"Average", Doc{"the average of the measured values; unknown if absent"},
              Example{"20.5"}>,
        Optional};
    Reflector<double> minimum{
        this,
        field<"Minimum", Doc{"the lowest measured value; unknown if absent"}, Example{"19.0"}>,
        Optional};
    Reflector<double> maximum{
        this,
        field<"Maximum", Doc{"the highest measured value; unknown if absent"}, Example{"22.0"}>,
        Optional};
    Reflector<double> percent{
        this,
        field<"Percent", Doc{"a percentage that the producer defines; none if absent"},
              Example{"50.0"}>,
        Optional};
    Reflector<int> limitStatus{
        this,
        field<"LimitStatus",
              Doc{"the result of the limit test, as the peers number it; unknown if absent"}>,
        Optional};
};

/// Which entries of an enumerated payload's "enums" are disabled, by position. The list may differ
/// in length from "enums": missing flags count as false; surplus flags are ignored.
class TOLV_MESSAGES_API EnumMetaData : public AttrMetaDataBase {
public:
    ReflectorArray<bool> disabledList{
        this,
        field<"DisabledList",
              Doc{"whether the entry at this position is disabled; false where missing"}>,
        Required, true};
};

/// The maximum length of a list of integers.
class TOLV_MESSAGES_API IntVectorMetaData : public AttrMetaDataBase {
public:
    Reflector<unsigned int> maxLength{
        this,
        field<"MaxLength", Unit{"elements"},
              Doc{"the maximum length of the list; unlimited if absent"}, Example{"16"}>,
        Optional};
};

/// The strings that are accepted.
class TOLV_MESSAGES_API StringMetaData : public AttrMetaDataBase {
public:
    Reflector<unsigned int> maxLength{
        this,
        field<"MaxLength", Unit{"bytes"}, Doc{"the maximum size of the text; unlimited if absent"},
              Example{"64"}>,
        Optional};
    Reflector<bool> passwordField{
        this,
        field<"PasswordField",
              Doc{"whether a display treats the text as a password; it does not if absent"}>,
        Optional};
    Reflector<std::string> validCharacters{
        this,
        field<"ValidCharacters",
              Doc{"the POSIX extended regular expression for the text; any text if absent"},
              Example{"[A-Za-z ]*"}>,
        Optional};
};

/// A payload that contains metadata of the class `M` alongside its value.
template <class M>
class HasMetaData : public MirroredObject {
public:
    Reflector<M> attributeMetaData{
        this,
        field<"AttributeMetaData", Doc{"the metadata of the attribute; it has none if absent"}>,
        Optional};

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
