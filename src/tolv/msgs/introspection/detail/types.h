#pragma once

#include <algorithm>
#include <complex>
#include <concepts>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include <tolv/core/detail/type_name.h>
#include <tolv/metadata/enum_strings.h>
#include <tolv/metadata/polymorphic_reflector.h>
#include <tolv/metadata/reflector_array.h>
#include <tolv/metadata/reflector_lambda.h>
#include <tolv/msgs/introspection/description.h>

/// @file
/// Registration of types for introspection. The types of this library are registered. A library
/// with records of its own adds each `T` that it uses in a `Reflector<T>` or `ReflectorArray<T>`:
///
///     Introspection::add<Calibration>();
///
/// The types are kept until the process ends, so such a library must not be unloaded.
namespace Tolv::Msgs::Introspection {

/// The keys of a payload `T` with custom conversion. The author of the payload specializes this
/// template, with a function `static std::vector<FieldDescription> fields()`.
template <class T>
struct HandWritten;

/// The description of `T`, created on first use.
template <class T>
Type const& typeOf();

/// A required key of a payload with custom conversion.
template <class T>
FieldDescription requiredKey(std::string key) {
    FieldDescription field;
    field.key = std::move(key);
    field.type = &typeOf<T>();
    field.required = true;
    return field;
}

namespace Detail {

/// The name of a type, relative to Tolv::Msgs.
TOLV_MESSAGES_API std::string nameOfMessage(unsigned long long id, std::type_info const& type);
TOLV_MESSAGES_API void enter(std::type_info const& field, Type const& type);
/// Adds the values that `record` writes, and the known units and literals of its fields.
TOLV_MESSAGES_API void complete(std::vector<FieldDescription>& fields, std::type_info const& record,
                                MetaData::Element const& written);

template <class T>
inline constexpr bool isComplex = false;
template <class T>
inline constexpr bool isComplex<std::complex<T>> = true;
template <class T>
inline constexpr bool isVector = false;
template <class T>
inline constexpr bool isVector<std::vector<T>> = true;

/// A list of messages of any classes.
template <class T>
concept MessagePointers = std::derived_from<typename T::value_type::element_type, Message>;

template <class T>
std::vector<FieldDescription> fieldsOf() {
    MetaData::Element written;
    std::vector<FieldDescription> fields;
    if constexpr (std::derived_from<T, MetaData::MirroredObject>) {
        return describeFields(MetaData::DefaultOf<T>::make());
    } else {
        fields = HandWritten<T>::fields();
        if constexpr (std::default_initializable<T>)
            MetaData::DefaultOf<T>::make().copyToMetaData(written);
        complete(fields, typeid(T), written);
        return fields;
    }
}

template <class T>
void fillInteger(Type& type) {
    type.kind = TypeKind::integer;
    type.minimum = static_cast<long long>(std::numeric_limits<T>::min());
    type.maximum = static_cast<unsigned long long>(std::numeric_limits<T>::max());
}

template <class T>
void fillMessage(Type& type) {
    type.kind = TypeKind::message;
    type.admits = []([[maybe_unused]] Message const& message) {
        if constexpr (std::same_as<T, Message>)
            return true;
        else
            return dynamic_cast<T const*>(&message) != nullptr;
    };
    if constexpr (requires { T::factoryRegistration; }) { // otherwise a base of several classes
        type.messageId = T::MsgID();
        type.name = nameOfMessage(*type.messageId, typeid(T));
    }
}

template <class T>
void fillList(Type& type, Type const& element) {
    type.kind = TypeKind::list;
    type.element = &element;
    type.name = "std::vector<" + element.name + ">";
    type.encodedTag = MetaData::Detail::encodedTag<T>;
}

template <class T>
Type makeType() {
    Type type;
    type.name = Tolv::Detail::nameOf(typeid(T));
    if constexpr (std::same_as<T, bool>) {
        type.kind = TypeKind::boolean;
    } else if constexpr (std::integral<T>) {
        fillInteger<T>(type);
    } else if constexpr (std::derived_from<T, Identifier>) {
        fillInteger<unsigned long long>(type);
    } else if constexpr (std::floating_point<T>) {
        type.kind = TypeKind::number;
    } else if constexpr (std::same_as<T, std::string>) {
        type.kind = TypeKind::text;
        type.name = "std::string";
    } else if constexpr (MetaData::WordEnumeration<T>) {
        type.kind = TypeKind::word;
        for (auto const& [word, value] : stringsOf(T{}))
            type.literals.push_back({word, static_cast<long long>(value)});
        std::sort(type.literals.begin(), type.literals.end(),
                  [](auto const& l, auto const& r) { return l.value < r.value; });
    } else if constexpr (isComplex<T>) {
        type.kind = TypeKind::pair;
        type.element = &typeOf<typename T::value_type>();
    } else if constexpr (MessagePointers<T>) {
        fillList<void>(type, typeOf<typename T::value_type::element_type>());
    } else if constexpr (isVector<T>) {
        fillList<void>(type, typeOf<typename T::value_type>());
    } else if constexpr (std::derived_from<T, Message>) {
        fillMessage<T>(type);
    } else {
        type.kind = TypeKind::record;
        type.strict = !std::derived_from<T, MetaData::MirroredObject>;
        type.makeFields = fieldsOf<T>;
    }
    return type;
}

template <class T>
Type makeListType() {
    Type type;
    fillList<T>(type, typeOf<T>());
    return type;
}

} // namespace Detail

/// @cond doxygen takes it for a function other than the one above
template <class T>
Type const& typeOf() {
    static Type const type = Detail::makeType<T>();
    return type;
}
/// @endcond

/// The type of a `ReflectorArray<T>`.
template <class T>
Type const& listOf() {
    static Type const type = Detail::makeListType<T>();
    return type;
}

/// Registers the fields that hold a `T` or a list of `T`. Registering a type again has no effect.
template <class T>
void add() {
    using namespace MetaData;
    auto const& type = typeOf<T>();
    Detail::enter(typeid(Reflector<T, true>), type);
    Detail::enter(typeid(Reflector<T, false>), type);
    Detail::enter(typeid(ReflectorLambda<T>), type);
    Detail::enter(typeid(ReflectorArray<T>), listOf<T>());
}

/// Registers the fields that hold a whole message of a class derived from `T`.
template <class T>
void addPolymorphic() {
    Detail::enter(typeid(MetaData::PolymorphicReflector<T>), typeOf<T>());
}

} // namespace Tolv::Msgs::Introspection
