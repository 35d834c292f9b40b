#pragma once

#include <complex>
#include <string>
#include <type_traits>
#include <vector>

#include <tolv/core/export.h>
#include <tolv/core/metadata/element.h>

/// @file
/// Conversion of values to elements and back.
///
/// Reading accepts any number that fits, whatever its kind: 3.0 is a valid `int`; 3.5 and 3e10 are
/// not. A `double` accepts every number (large integers become the nearest double) and the strings
/// "NaN", "Infinity" and "-Infinity". A `std::complex` is an array of two: real part, imaginary
/// part.
namespace Tolv::MetaData {

class PartiallySerializableInterface;

namespace Detail {

template <class T, class... Ts>
inline constexpr bool isOneOf = (std::is_same_v<T, Ts> || ...);

/// The types that have a conversion of their own, without being records.
template <class T>
inline constexpr bool isScalar =
    isOneOf<T, bool, unsigned char, unsigned short, int, unsigned int, long long,
            unsigned long long, double, std::string, std::complex<bool>, std::complex<double>,
            std::vector<int>, std::vector<std::string>>;

} // namespace Detail

/// @{
/// Extension: like `GetAs`, but returns false instead of throwing if the element is of the wrong
/// kind or its number does not fit; `value` is then unchanged. The overloads for strings and lists
/// may throw `std::bad_alloc`.
TOLV_CORE_API bool TryGetAs(Element const& element, bool& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, unsigned char& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, unsigned short& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, int& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, unsigned int& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, long long& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, unsigned long long& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, double& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, std::complex<bool>& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, std::complex<double>& value) noexcept;
TOLV_CORE_API bool TryGetAs(Element const& element, std::string& value);
TOLV_CORE_API bool TryGetAs(Element const& element, std::vector<int>& value);
TOLV_CORE_API bool TryGetAs(Element const& element, std::vector<std::string>& value);
/// @}

namespace Detail {

template <class T>
consteval void requireConversion() {
    static_assert(
        isScalar<T>,
        "this type has no conversion to an element; these have one: bool, unsigned char, unsigned "
        "short, int, unsigned int, long long, unsigned long long, double, std::string, "
        "std::complex<bool>, std::complex<double>, std::vector<int>, "
        "std::vector<std::string>, and enumerations with a table of words; a record has "
        "copyToMetaData and copyFromMetaData");
}

} // namespace Detail

/// Reads `element` into `value`.
/// @throws Exception::InvalidParameter if the element is of the wrong kind or its number does not
/// fit; the text says what was expected and what was found. `value` is then unchanged.
template <class T>
void GetAs([[maybe_unused]] Element const& element, [[maybe_unused]] T& value) {
    Detail::requireConversion<T>();
}

/// The same, returning the value.
template <class T>
T GetAs(Element const& element) {
    T value{};
    GetAs(element, value);
    return value;
}

/// Replaces the content of `element` with `value`.
template <class T>
void SetAs([[maybe_unused]] T const& value, [[maybe_unused]] Element& element) {
    Detail::requireConversion<T>();
}

/// @cond the templates above document these
#define TOLV_CONVERSION(...)                                                                       \
    template <>                                                                                    \
    TOLV_CORE_API void GetAs(Element const& element, __VA_ARGS__& value);                          \
    template <>                                                                                    \
    TOLV_CORE_API void SetAs(__VA_ARGS__ const& value, Element& element);
TOLV_CONVERSION(bool)
TOLV_CONVERSION(unsigned char)
TOLV_CONVERSION(unsigned short)
TOLV_CONVERSION(int)
TOLV_CONVERSION(unsigned int)
TOLV_CONVERSION(long long)
TOLV_CONVERSION(unsigned long long)
TOLV_CONVERSION(double)
TOLV_CONVERSION(std::string)
TOLV_CONVERSION(std::complex<bool>)
TOLV_CONVERSION(std::complex<double>)
TOLV_CONVERSION(std::vector<int>)
TOLV_CONVERSION(std::vector<std::string>)
#undef TOLV_CONVERSION
/// @endcond

/// Writes `value` through its virtual `copyToMetaData`.
template <>
TOLV_CORE_API void SetAs(PartiallySerializableInterface const& value, Element& element);

} // namespace Tolv::MetaData
