#pragma once

#include <complex>
#include <string>
#include <type_traits>
#include <vector>

#include <tolv/msgs/attrs/meta_data.h>

/// @file
/// The payloads of attributes with one value, and the check of a value against its metadata.
namespace Tolv::Msgs::Attrs {

/// A value of type `T`, described by a record of class `M`.
///
/// Nothing checks a value while a message is read or written: a receiver asks `validate` when it
/// wants to know.
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
        : value(this, valueKey(), Required, initial) {}

    /// Copies metadata and value; a value that is not set stays so.
    AttrWithMetaData(AttrWithMetaData const& other) : AttrWithMetaData() {
        *this = other;
        if (!other.value.initialized())
            value.uninit();
    }
    AttrWithMetaData& operator=(AttrWithMetaData const&) = default;

    /// Whether the value is acceptable.
    ///
    /// `double` and `long long` with `RangedMetaData`: "Minimum" and "Maximum", where set, are
    /// inclusive; a NaN is valid only without "Maximum"; "Step" is not consulted.
    /// `std::vector<int>`: at most "MaxLength" elements. `std::string`: at most "MaxLength" bytes,
    /// and the whole of it matches "ValidCharacters", where set, also when that is empty. With
    /// `EnumMetaData`: false, the class that adds "enums" judges. All others: true.
    ///
    /// @throws Exception::InvalidOperation when the value of one of the ranged numbers, or a text
    /// or list that has metadata to be checked against, is not set.
    /// @throws std::regex_error when "ValidCharacters" is no expression, or when it, or its work on
    /// this text, is beyond `Limits`.
    [[nodiscard]] virtual bool validate() const;

    /// Extension: why `validate` gives false, as a sentence for people; empty when it gives true.
    /// @throws what `validate` throws, when it does.
    [[nodiscard]] std::string explainInvalid() const;

private:
    static constexpr MetaData::Key const& valueKey() {
        using std::is_same_v;
        if constexpr (is_same_v<M, EnumMetaData>)
            return "value"_key;
        else if constexpr (is_same_v<T, bool>)
            return "b"_key;
        else if constexpr (is_same_v<M, RangedMetaData<double>>)
            return "d"_key;
        else if constexpr (is_same_v<M, RangedMetaData<std::complex<double>>>)
            return "dc"_key;
        else if constexpr (is_same_v<M, RangedMetaData<long long>>)
            return "i"_key;
        else if constexpr (is_same_v<M, IntVectorMetaData>)
            return "iv"_key;
        else if constexpr (is_same_v<M, StringMetaData>)
            return "s"_key;
        else
            return "m"_key;
    }

    /// What a payload holds that was built without a value: zero or empty, but true.
    static T initialValue() {
        if constexpr (std::is_same_v<T, bool>)
            return true;
        else
            return T();
    }
};

extern template class TOLV_MESSAGES_API AttrWithMetaData<bool, AttrMetaDataBase>;

/// A truth value.
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
