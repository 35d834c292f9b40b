#pragma once

#include <complex>
#include <string>
#include <type_traits>
#include <vector>

#include <tolv/msgs/attrs/meta_data.h>

/// @file
/// The payloads of single-valued attributes, and the check of a value against its metadata.
namespace Tolv::Msgs::Attrs {

/// A value of type `T` with metadata of the class `M`.
///
/// Values are not checked while a message is read or written; a receiver calls `validate` if it
/// needs the check.
template <class T, class M>
class AttrWithMetaData : public HasMetaData<M> {
public:
    /// The key of the value: "b", "d", "dc", "i", "iv", "s", "m" or "value".
    static std::string const valMirrorName;

    using ValueType = T; ///< the type of the value

    Reflector<T> value; ///< under the key `valMirrorName`

    /// An attribute with this value and without metadata.
    // NOLINTNEXTLINE(google-explicit-constructor): a value is an attribute without metadata
    AttrWithMetaData(MetaData::Parameter<T> initial = initialValue())
        : value(this, valueField(), Required, initial) {}

    /// Copies metadata and value; an uninitialized value remains uninitialized.
    AttrWithMetaData(AttrWithMetaData const& other) : HasMetaData<M>(other), value(other.value) {
        if (!other.value.initialized())
            value.uninit();
    }
    AttrWithMetaData& operator=(AttrWithMetaData const&) = default;

    /// Whether the value is acceptable.
    ///
    /// `double` and `long long` with `RangedMetaData`: "Minimum" and "Maximum", if set, are
    /// inclusive; a NaN is valid only without "Maximum"; "Step" is ignored. `std::vector<int>`: at
    /// most "MaxLength" elements. `std::string`: at most "MaxLength" bytes, and the whole string
    /// must match "ValidCharacters", if set, even if the pattern is empty. With `EnumMetaData`:
    /// false; the derived class that adds "enums" decides. All others: true.
    ///
    /// @throws Exception::InvalidOperation if the value is uninitialized and is one of the ranged
    /// numbers, or a string or list with metadata to check against.
    /// @throws std::regex_error if "ValidCharacters" is not a valid expression, or if its size or
    /// the work on this string exceeds `Limits`.
    [[nodiscard]] virtual bool validate() const;

    /// Extension: a human-readable sentence that says why `validate` returns false; empty if it
    /// returns true.
    /// @throws what `validate` throws, when it does.
    [[nodiscard]] std::string explainInvalid() const;

private:
    static constexpr auto valueField() {
        using std::is_same_v;
        if constexpr (is_same_v<M, EnumMetaData>)
            return field<"value", Doc{"the entry of \"enums\" that is selected"}>;
        else if constexpr (is_same_v<T, bool>)
            return field<"b", Doc{"whether the attribute is on"}>;
        else if constexpr (is_same_v<M, RangedMetaData<double>>)
            return field<"d", Doc{"the number, in the unit that the metadata names"}>;
        else if constexpr (is_same_v<M, RangedMetaData<std::complex<double>>>)
            return field<"dc", Doc{"the complex number, in the unit that the metadata names"}>;
        else if constexpr (is_same_v<M, RangedMetaData<long long>>)
            return field<"i", Doc{"the integer, in the unit that the metadata names"}>;
        else if constexpr (is_same_v<M, IntVectorMetaData>)
            return field<"iv", Doc{"the integers of the attribute"}>;
        else if constexpr (is_same_v<M, StringMetaData>)
            return field<"s", Doc{"the text of the attribute"}>;
        else
            return field<"m", Doc{"the measured number, in the unit that the metadata names"}>;
    }

    /// The initial value of a payload built without one: true for a boolean, otherwise zero or
    /// empty.
    static T initialValue() {
        if constexpr (std::is_same_v<T, bool>)
            return true;
        else
            return T();
    }
};

extern template class TOLV_MESSAGES_API AttrWithMetaData<bool, AttrMetaDataBase>;

/// A boolean.
class TOLV_MESSAGES_API BoolData : public AttrWithMetaData<bool, AttrMetaDataBase> {
public:
    /// An attribute with this value and without metadata.
    // NOLINTNEXTLINE(google-explicit-constructor): a value is an attribute without metadata
    BoolData(MetaData::Lossless<bool> initial = true) : AttrWithMetaData(initial) {}
};

extern template class TOLV_MESSAGES_API AttrWithMetaData<double, RangedMetaData<double>>;
extern template class TOLV_MESSAGES_API
    AttrWithMetaData<std::complex<double>, RangedMetaData<std::complex<double>>>;
extern template class TOLV_MESSAGES_API AttrWithMetaData<long long, RangedMetaData<long long>>;
extern template class TOLV_MESSAGES_API AttrWithMetaData<std::vector<int>, IntVectorMetaData>;
extern template class TOLV_MESSAGES_API AttrWithMetaData<std::string, StringMetaData>;
extern template class TOLV_MESSAGES_API AttrWithMetaData<double, NumericMetaData>;
extern template class TOLV_MESSAGES_API AttrWithMetaData<double, NumericMeasMetaData>;
extern template class TOLV_MESSAGES_API AttrWithMetaData<double, NumericMeasMetaDataWithStatus>;

} // namespace Tolv::Msgs::Attrs
