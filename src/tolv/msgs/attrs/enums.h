#pragma once

#include <string>
#include <type_traits>

#include <tolv/msgs/attrs/values.h>

/// @file
/// Attributes whose value is one of a list that the message contains.
namespace Tolv::Msgs::Attrs {

/// One entry of an enumeration: a number and its text.
class TOLV_MESSAGES_API EnumVal : public MirroredObject {
public:
    Reflector<int> value{this, field<"Value", Doc{"the number of the entry"}, Example{"1"}>,
                         Required};
    Reflector<std::string> literal{
        this, field<"Literal", Doc{"the text of the entry"}, Example{"auto"}>, Required};

    EnumVal() = default;
    /// An entry with number and text.
    EnumVal(Lossless<int> value, std::string const& literal);

    /// Whether number and text are equal; the text is compared byte for byte.
    /// @throws Exception::InvalidOperation if a compared field is uninitialized.
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

/// The common part of the enumerated attributes. `T` is `EnumVal`, `int` or `std::string`.
template <class T>
class EnumeratedAttr : public AttrWithMetaData<T, EnumMetaData> {
public:
    ReflectorArray<T> enums{
        this, field<"enums", Doc{"the allowed values, by position; all are allowed if absent"}>,
        Optional, std::is_same_v<T, int>};

    /// Whether the value is an entry of "enums" that is not disabled. If "enums" is absent, any
    /// value is valid; if it is empty, none is.
    /// @throws Exception::InvalidOperation if the value must be compared and is uninitialized.
    [[nodiscard]] bool validate() const override;

    /// Extension: a human-readable sentence that says why `validate` returns false; empty if it
    /// returns true.
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
    /// Copies the value; its uninitialized fields remain uninitialized.
    // NOLINTNEXTLINE(google-explicit-constructor): a value is an attribute without metadata
    EnumData(EnumVal const& initial);
};

/// One of a list of integers.
class TOLV_MESSAGES_API EnumIntData : public EnumeratedAttr<int> {};

/// One of a list of strings.
class TOLV_MESSAGES_API EnumStringsData : public EnumeratedAttr<std::string> {};

} // namespace Tolv::Msgs::Attrs
