#pragma once

#include <algorithm>
#include <complex>
#include <concepts>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include <tolv/core/metadata/value_type.h>
#include <tolv/fields/enum_strings.h>
#include <tolv/fields/traits.h>

namespace Tolv::Msgs {
class Identifier;
} // namespace Tolv::Msgs

namespace Tolv::MetaData {

/// The values of a `ReflectorArray<T>`.
template <class T>
struct ListOf {};

namespace Detail {

/// The number that identifies the element type of the encoded form.
template <class T>
inline constexpr unsigned int encodedTag = 0; ///< 0: no encoded form
template <>
inline constexpr unsigned int encodedTag<bool> = 1;
template <>
inline constexpr unsigned int encodedTag<std::complex<bool>> = 2;
template <>
inline constexpr unsigned int encodedTag<double> = 3;
template <>
inline constexpr unsigned int encodedTag<std::complex<double>> = 4;
template <>
inline constexpr unsigned int encodedTag<int> = 9;

/// The type of the single values in a list or complex number.
template <class T>
struct ElementOf {
    using Type = T;
};
template <class T>
struct ElementOf<ListOf<T>> : ElementOf<T> {};
template <class T>
struct ElementOf<std::vector<T>> : ElementOf<T> {};
template <class T>
struct ElementOf<std::complex<T>> : ElementOf<T> {};

/// A list of messages of any classes, held by pointers.
template <class T>
concept MessagePointers = std::derived_from<typename T::value_type::element_type, Msgs::Message>;

template <class T>
struct MakeType;

template <class T>
constexpr ValueType listType(ValueType const& element) {
    ValueType type;
    type.kind = ValueKind::list;
    type.type = &typeid(T);
    type.element = &element;
    return type;
}

} // namespace Detail

/// The values of type `T`. Not `constexpr`: clang++ would need the type where a field is declared,
/// and it may be a record that is still incomplete there.
template <class T>
inline constinit ValueType const valueType = Detail::MakeType<T>::make();

namespace Detail {

template <class T>
RecordForm formOfClass() {
    if constexpr (std::derived_from<T, MirroredObject>) {
        auto const record = DefaultOf<T>::make();
        return formOf(record);
    } else {
        RecordForm form;
        form.type = &typeid(T);
        for (auto const* const info : T::mirroredKeys())
            form.fields.push_back({info, true});
        if constexpr (std::default_initializable<T>)
            T().copyToMetaData(form.written);
        return form;
    }
}

template <class E>
std::vector<Literal> literalsOf() {
    std::vector<Literal> all;
    for (auto const& [word, value] : stringsOf(E{}))
        all.push_back({word, static_cast<long long>(value)});
    std::sort(all.begin(), all.end(),
              [](auto const& l, auto const& r) { return l.value < r.value; });
    return all;
}

template <class T>
struct MakeType {
    static constexpr ValueType make() {
        ValueType type;
        type.type = &typeid(T);
        if constexpr (MessagePointers<T>) {
            using Entry = typename T::value_type::element_type;
            type = listType<Entry>(valueType<Entry>);
        } else if constexpr (std::same_as<T, bool>) {
            type.kind = ValueKind::boolean;
        } else if constexpr (std::integral<T>) {
            type.kind = ValueKind::integer;
            type.minimum = static_cast<long long>(std::numeric_limits<T>::min());
            type.maximum = static_cast<unsigned long long>(std::numeric_limits<T>::max());
        } else if constexpr (std::same_as<T, Msgs::Identifier>) {
            type.kind = ValueKind::integer;
            type.maximum = std::numeric_limits<unsigned long long>::max();
        } else if constexpr (std::floating_point<T>) {
            type.kind = ValueKind::number;
        } else if constexpr (std::same_as<T, std::string>) {
            type.kind = ValueKind::text;
        } else if constexpr (WordEnumeration<T>) {
            type.kind = ValueKind::word;
            type.literals = literalsOf<T>;
        } else if constexpr (std::derived_from<T, Msgs::Message>) {
            type.kind = ValueKind::message;
            type.admits = admits;
            if constexpr (requires { T::factoryRegistration; }) // otherwise a base of classes
                type.messageId = []() -> unsigned long long { return T::MsgID(); };
        } else {
            type.kind = ValueKind::record;
            type.strict = !std::derived_from<T, MirroredObject>;
            if constexpr (std::derived_from<T, MirroredObject> || requires { T::mirroredKeys(); })
                type.form = formOfClass<T>;
        }
        return type;
    }

private:
    static bool admits([[maybe_unused]] Msgs::Message const& message) {
        if constexpr (std::same_as<T, Msgs::Message>)
            return true;
        else
            return dynamic_cast<T const*>(&message) != nullptr;
    }
};

template <class T>
struct MakeType<std::complex<T>> {
    static constexpr ValueType make() {
        auto type = listType<std::complex<T>>(valueType<T>);
        type.kind = ValueKind::pair;
        return type;
    }
};

template <class T>
struct MakeType<std::vector<T>> {
    static constexpr ValueType make() {
        if constexpr (MessagePointers<std::vector<T>>)
            return listType<typename T::element_type>(valueType<typename T::element_type>);
        else
            return listType<T>(valueType<T>);
    }
};

template <class T>
struct MakeType<ListOf<T>> {
    static constexpr ValueType make() {
        auto type = listType<T>(valueType<T>);
        type.encodedTag = encodedTag<T>;
        return type;
    }
};

} // namespace Detail

} // namespace Tolv::MetaData
