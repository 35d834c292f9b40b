#pragma once

#include <string>
#include <type_traits>

#include <tolv/msgs/attrs/values.h>

/// @file
/// Attributes that hold one value out of a list that travels with them.
namespace Tolv::Msgs::Attrs {

/// One entry of an enumeration: a number and its text.
class TOLV_MESSAGES_API EnumVal : public MirroredObject {
public:
    Reflector<int> value{this, "Value"_key, Required};             ///< the number
    Reflector<std::string> literal{this, "Literal"_key, Required}; ///< its text

    EnumVal() = default;
    /// An entry with number and text.
    EnumVal(Lossless<int> value, std::string const& literal);
    EnumVal(EnumVal const& other) : EnumVal() { *this = other; }
    EnumVal& operator=(EnumVal const&) = default;

    /// True when number and text are equal, the text byte for byte.
    /// @throws Exception::InvalidOperation when a field that is compared is not set.
    bool operator==(EnumVal const& other) const;
};

} // namespace Tolv::Msgs::Attrs

namespace Tolv::MetaData {
extern template class TOLV_MESSAGES_API ReflectorNoWriteParend<Msgs::Attrs::EnumVal>;
extern template class TOLV_MESSAGES_API Reflector<Msgs::Attrs::EnumVal>;
extern template class TOLV_MESSAGES_API ReflectorArray<Msgs::Attrs::EnumVal>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs::Attrs {

extern template class TOLV_MESSAGES_API AttrWithMetaData<EnumVal, EnumMetaData>;
extern template class TOLV_MESSAGES_API AttrWithMetaData<int, EnumMetaData>;
extern template class TOLV_MESSAGES_API AttrWithMetaData<std::string, EnumMetaData>;

/// What the enumerated attributes have in common. `T` is `EnumVal`, `int` or `std::string`.
template <class T>
class EnumeratedAttr : public AttrWithMetaData<T, EnumMetaData> {
public:
    /// The allowed values; the position of one is its index into "DisabledList".
    ReflectorArray<T> enums{this, "enums"_key, Optional, std::is_same_v<T, int>};

    EnumeratedAttr() = default;
    EnumeratedAttr(EnumeratedAttr const& other) : AttrWithMetaData<T, EnumMetaData>(other) {
        enums = other.enums;
    }
    EnumeratedAttr& operator=(EnumeratedAttr const&) = default;

    /// Whether the value is an entry of "enums" that is not disabled. Without "enums" anything is
    /// valid, with an empty one nothing.
    /// @throws Exception::InvalidOperation when the value has to be compared and is not set.
    [[nodiscard]] bool validate() const override;

    /// Extension: why `validate` gives false, as a sentence for people; empty when it gives true.
    /// @throws what `validate` throws, when it does.
    [[nodiscard]] std::string explainInvalid() const;

private:
    [[nodiscard]] bool isDisabled(std::size_t entry) const;
};

extern template class TOLV_MESSAGES_API EnumeratedAttr<EnumVal>;
extern template class TOLV_MESSAGES_API EnumeratedAttr<int>;
extern template class TOLV_MESSAGES_API EnumeratedAttr<std::string>;

/// One of a list of numbers with texts.
class TOLV_MESSAGES_API EnumData : public EnumeratedAttr<EnumVal> {
public:
    EnumData() = default;
    /// Copies the value; a field of it that is not set stays so.
    // NOLINTNEXTLINE(google-explicit-constructor): a value is an attribute without metadata
    EnumData(EnumVal const& initial);
};

/// One of a list of numbers.
class TOLV_MESSAGES_API EnumIntData : public EnumeratedAttr<int> {};

/// One of a list of texts.
class TOLV_MESSAGES_API EnumStringsData : public EnumeratedAttr<std::string> {};

} // namespace Tolv::Msgs::Attrs
