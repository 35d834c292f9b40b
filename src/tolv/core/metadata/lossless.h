#pragma once

#include <complex>
#include <concepts>
#include <limits>
#include <type_traits>

/// @file
/// Parameters that accept a value only if it converts without loss.
namespace Tolv::MetaData {

namespace Detail {

template <class T>
inline constexpr bool isComplex = false;
template <class T>
inline constexpr bool isComplex<std::complex<T>> = true;

/// The type of the parts of a number: the type itself, or for a complex number that of its real and
/// imaginary part.
template <class To>
struct PartOf {
    using Type = To;
};
template <class T>
struct PartOf<std::complex<T>> {
    using Type = T;
};

/// Whether every value of the number type `From` is a value of the number type `To`.
template <class From, class To>
consteval bool alwaysFits() {
    using F = std::numeric_limits<From>;
    using T = std::numeric_limits<To>;
    if constexpr (std::same_as<From, To>)
        return true;
    else if constexpr (std::same_as<To, bool> || (F::is_signed && !T::is_signed) ||
                       (T::is_integer && !F::is_integer))
        return false;
    else
        return F::digits <= T::digits;
}

/// The number type of `From`: for an enumeration that converts implicitly, its underlying type.
template <class From>
struct NumberOf {
    using Type = From;
};
template <class From>
requires(std::is_enum_v<From>&& std::convertible_to<From, int>) struct NumberOf<From> {
    using Type = std::underlying_type_t<From>;
};

template <class Given, class To>
concept Braced = requires(Given given) {
    To{static_cast<Given>(given)};
};

/// How a `From` becomes a `To`.
enum class Passage {
    always,    ///< every value fits
    byValue,   ///< an integer that may fit, so its value must be a constant
    variable,  ///< an integer, or a class that converts to one, whose value is known only at run
               ///< time
    fraction,  ///< a floating-point number for an integer or a boolean
    notNumber, ///< not a number
    none       ///< a class that does not convert, or only with loss
};

template <class Given, class To>
consteval Passage passageOf() {
    using From = typename NumberOf<std::remove_cvref_t<Given>>::Type;
    if constexpr (std::is_class_v<From> || std::is_union_v<From>)
        return !std::convertible_to<Given, To> ? Passage::none
               : Braced<Given, To>             ? Passage::always
                                               : Passage::variable;
    else if constexpr (!std::is_arithmetic_v<From>)
        return Passage::notNumber;
    else if constexpr (alwaysFits<From, To>())
        return Passage::always;
    else if constexpr (!std::integral<From>)
        return Passage::fraction;
    else if constexpr (std::is_lvalue_reference_v<Given> &&
                       !std::is_const_v<std::remove_reference_t<Given>>)
        return Passage::variable;
    else
        return Passage::byValue;
}

template <class To, class From>
constexpr bool fits(From number) {
    auto const result = static_cast<To>(number);
    return static_cast<From>(result) == number && (result < To{}) == (number < From{});
}

// Not consteval: clang 14 calls it at run time in the initializer of a member.
template <class To, class From>
constexpr To checkedNumber(From number) {
    if (!fits<To>(number))
        throw "this number does not fit into the type of the field";
    return static_cast<To>(number);
}

} // namespace Detail

/// The types to which a conversion can lose part of a value: numbers and booleans.
template <class T>
concept Numeric = std::is_arithmetic_v<T> || Detail::isComplex<T>;

/// A parameter of type `T` that rejects at compile time what brace initialization would reject: a
/// floating-point number for an integer, an integer variable that is wider or of different
/// signedness, a pointer for a boolean. Lossless conversions remain implicit: an `int` for a
/// `double`, the literal 200 for an `unsigned char`. An intended narrowing must be explicit:
/// `static_cast<int>(x)`.
template <Numeric T>
class Lossless {
    using Part = typename Detail::PartOf<T>::Type;
    using Passage = Detail::Passage;

public:
    /// A value that fits.
    // NOLINTBEGIN(google-explicit-constructor): stands for a parameter of type T
    template <class Given>
    requires(Detail::passageOf<Given, Part>() == Passage::always)
        // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): no Given is a Lossless<T>
        constexpr Lossless(Given&& given)
        : value_(static_cast<Part>(given)) {}

    /// A constant integer of a wider type, or of different signedness, that fits.
    template <class Given>
    requires(Detail::passageOf<Given, Part>() == Passage::byValue) consteval Lossless(Given&& given)
        : value_(Detail::checkedNumber<Part>(given)) {}

    /// @cond overloads that only produce an error message
    template <class Given>
    requires(Detail::passageOf<Given, Part>() ==
             Passage::variable) constexpr Lossless(Given&& /*given*/) {
        static_assert(Detail::passageOf<Given, Part>() != Passage::variable,
                      "this integer may not fit into the field without loss: check it, then "
                      "convert it with static_cast");
    }
    template <class Given>
    requires(Detail::passageOf<Given, Part>() ==
             Passage::fraction) constexpr Lossless(Given&& /*given*/) {
        static_assert(Detail::passageOf<Given, Part>() != Passage::fraction,
                      "a double does not fit into this field without loss: round it, then convert "
                      "it with static_cast");
    }
    template <class Given>
    requires(Detail::passageOf<Given, Part>() ==
             Passage::notNumber) constexpr Lossless(Given&& /*given*/) {
        static_assert(Detail::passageOf<Given, Part>() != Passage::notNumber,
                      "this field takes a number or a boolean, but no string, pointer or "
                      "enumerator of an enum class");
    }
    /// @endcond

    /// A complex number.
    constexpr Lossless(T const& value) requires(Detail::isComplex<T>) : value_(value) {}
    // NOLINTEND(google-explicit-constructor)

    /// The value.
    [[nodiscard]] constexpr T const& get() const noexcept { return value_; }

private:
    T value_{};
};

namespace Detail {

/// A type other than `T` for which `assign` must check that the conversion to `T` is lossless.
template <class Given, class T>
concept Another = Numeric<T> && !std::same_as<std::remove_cvref_t<Given>, T> &&
                  passageOf<Given, typename PartOf<T>::Type>() != Passage::none;

} // namespace Detail

/// The parameter type of a function that takes a value of type `T`.
template <class T>
struct ParameterOf {
    using Type = T const&; ///< no conversion can lose anything
};
template <Numeric T>
struct ParameterOf<T> {
    using Type = Lossless<T>;
};
template <class T>
using Parameter = typename ParameterOf<T>::Type;

/// The value of a parameter.
template <class T>
constexpr T const& valueOf(T const& value) noexcept {
    return value;
}
template <Numeric T>
constexpr T const& valueOf(Lossless<T> const& value) noexcept {
    return value.get();
}

/// A parameter of type `bool` that accepts only a `bool`, not a type that converts to one.
class Flag {
public:
    // NOLINTNEXTLINE(google-explicit-constructor): stands for a parameter of type bool
    template <std::same_as<bool> Bool>
    constexpr Flag(Bool value) noexcept : value_(value) {}

    /// Whether the flag is set.
    constexpr explicit operator bool() const noexcept { return value_; }

private:
    bool value_;
};

} // namespace Tolv::MetaData
