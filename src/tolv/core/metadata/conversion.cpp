#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/conversion.h>
#include <tolv/core/metadata/serializable.h>

namespace Tolv::MetaData {

namespace {

/// What a type accepts, in error texts.
template <class T>
constexpr char const* wanted = nullptr;
template <>
constexpr char const* wanted<bool> = "a boolean";
template <>
constexpr char const* wanted<unsigned char> = "a number that fits unsigned char";
template <>
constexpr char const* wanted<unsigned short> = "a number that fits unsigned short";
template <>
constexpr char const* wanted<int> = "a number that fits int";
template <>
constexpr char const* wanted<unsigned int> = "a number that fits unsigned int";
template <>
constexpr char const* wanted<long long> = "a number that fits long long";
template <>
constexpr char const* wanted<unsigned long long> = "a number that fits unsigned long long";
template <>
constexpr char const* wanted<double> = "a number";
template <>
constexpr char const* wanted<std::string> = "a string";
template <>
constexpr char const* wanted<std::complex<bool>> = "an array of two booleans";
template <>
constexpr char const* wanted<std::complex<double>> = "an array of two numbers";

template <class T>
std::string numberText(T number) {
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof digits, number).ptr};
}

/// What was found: the number itself if its kind alone does not show what is wrong.
std::string found(Element const& element, bool numberWanted) {
    if (numberWanted) {
        if (element.isSigned())
            return numberText(element.signedNumber());
        if (element.isUnsigned())
            return numberText(element.unsignedNumber());
        if (element.isFloating())
            return numberText(element.floatingNumber());
    }
    return describe(element.kind());
}

template <class T>
inline constexpr bool takesInteger = std::is_integral_v<T> && !std::is_same_v<T, bool>;

template <class T>
[[noreturn]] void refuse(Element const& element, std::string const& where) {
    throw Exception::InvalidParameter(std::string("expected ") + wanted<T> + where + ", found " +
                                      found(element, takesInteger<T>));
}

template <class T>
bool tryInteger(Element const& element, T& value) noexcept {
    if (element.isSigned()) {
        if (!std::in_range<T>(element.signedNumber()))
            return false;
        value = static_cast<T>(element.signedNumber());
        return true;
    }
    if (element.isUnsigned()) {
        if (!std::in_range<T>(element.unsignedNumber()))
            return false;
        value = static_cast<T>(element.unsignedNumber());
        return true;
    }
    if (!element.isFloating())
        return false;
    // The largest integers are not exact doubles, but the powers of two just beyond them are.
    auto const number = element.floatingNumber();
    auto const beyond = std::ldexp(1.0, std::numeric_limits<T>::digits);
    auto const least = std::is_signed_v<T> ? -beyond : 0.0;
    if (!(number >= least && number < beyond) || number != std::trunc(number))
        return false;
    value = static_cast<T>(number);
    return true;
}

template <class T>
bool tryComplex(Element const& element, std::complex<T>& value) noexcept {
    if (!element.isArray() || element.array().size() != 2)
        return false;
    T real{};
    T imaginary{};
    if (!TryGetAs(element.array()[0], real) || !TryGetAs(element.array()[1], imaginary))
        return false;
    value = std::complex<T>(real, imaginary);
    return true;
}

/// Reads all children; `value` is written only if all are valid.
/// @return the index of the first that is not a T, or their number
template <class T>
unsigned int readList(Array const& array, std::vector<T>& value) {
    std::vector<T> items(array.size());
    unsigned int index = 0;
    for (auto const& element : array) {
        if (!TryGetAs(element, items[index]))
            return index;
        ++index;
    }
    value = std::move(items);
    return index;
}

template <class T>
bool tryList(Element const& element, std::vector<T>& value) {
    return element.isArray() && readList(element.array(), value) == element.array().size();
}

template <class T>
void get(Element const& element, T& value) {
    if (!TryGetAs(element, value))
        refuse<T>(element, "");
}

template <class T>
void getList(Element const& element, std::vector<T>& value) {
    auto const& array = static_cast<Array const&>(element); // refuses other kinds
    if (auto const index = readList(array, value); index != array.size())
        refuse<T>(array[index], " at index " + std::to_string(index));
}

template <class Items>
void setList(Items const& items, Element& element) {
    Array array;
    array.reserve(static_cast<unsigned int>(items.size()));
    for (auto const& item : items) {
        Element child;
        SetAs(item, child);
        array.push_back(std::move(child));
    }
    element = Element(std::move(array));
}

template <class T>
void setComplex(std::complex<T> const& value, Element& element) {
    Array array;
    array.reserve(2);
    for (auto const part : {value.real(), value.imag()}) {
        Element child;
        SetAs(part, child);
        array.push_back(std::move(child));
    }
    element = Element(std::move(array));
}

} // namespace

// ---- Reading -------------------------------------------------------------------------------

bool TryGetAs(Element const& element, bool& value) noexcept {
    if (!element.isBoolean())
        return false;
    value = element.boolean();
    return true;
}

bool TryGetAs(Element const& element, unsigned char& value) noexcept {
    return tryInteger(element, value);
}

bool TryGetAs(Element const& element, unsigned short& value) noexcept {
    return tryInteger(element, value);
}

bool TryGetAs(Element const& element, int& value) noexcept { return tryInteger(element, value); }

bool TryGetAs(Element const& element, unsigned int& value) noexcept {
    return tryInteger(element, value);
}

bool TryGetAs(Element const& element, long long& value) noexcept {
    return tryInteger(element, value);
}

bool TryGetAs(Element const& element, unsigned long long& value) noexcept {
    return tryInteger(element, value);
}

bool TryGetAs(Element const& element, double& value) noexcept {
    switch (element.kind()) {
    case Kind::floatingNumber:
        value = element.floatingNumber();
        return true;
    case Kind::signedNumber:
        value = static_cast<double>(element.signedNumber());
        return true;
    case Kind::unsignedNumber:
        value = static_cast<double>(element.unsignedNumber());
        return true;
    case Kind::string:
        break;
    default:
        return false;
    }
    // JSON has no numbers for these; the writer emits them as strings.
    using Numbers = std::numeric_limits<double>;
    if (element.text() == "NaN")
        value = Numbers::quiet_NaN();
    else if (element.text() == "Infinity")
        value = Numbers::infinity();
    else if (element.text() == "-Infinity")
        value = -Numbers::infinity();
    else
        return false;
    return true;
}

bool TryGetAs(Element const& element, std::complex<bool>& value) noexcept {
    return tryComplex(element, value);
}

bool TryGetAs(Element const& element, std::complex<double>& value) noexcept {
    return tryComplex(element, value);
}

bool TryGetAs(Element const& element, std::string& value) {
    if (!element.isString())
        return false;
    value = element.text();
    return true;
}

bool TryGetAs(Element const& element, std::vector<int>& value) { return tryList(element, value); }

bool TryGetAs(Element const& element, std::vector<std::string>& value) {
    return tryList(element, value);
}

#define TOLV_GET(...)                                                                              \
    template <>                                                                                    \
    void GetAs(Element const& element, __VA_ARGS__& value) {                                       \
        get(element, value);                                                                       \
    }
TOLV_GET(bool)
TOLV_GET(unsigned char)
TOLV_GET(unsigned short)
TOLV_GET(int)
TOLV_GET(unsigned int)
TOLV_GET(long long)
TOLV_GET(unsigned long long)
TOLV_GET(double)
TOLV_GET(std::string)
TOLV_GET(std::complex<bool>)
TOLV_GET(std::complex<double>)
#undef TOLV_GET

template <>
void GetAs(Element const& element, std::vector<int>& value) {
    getList(element, value);
}

template <>
void GetAs(Element const& element, std::vector<std::string>& value) {
    getList(element, value);
}

// ---- Writing -------------------------------------------------------------------------------

template <>
void SetAs(bool const& value, Element& element) {
    element.setBoolean(value);
}

template <>
void SetAs(unsigned char const& value, Element& element) {
    element.setUnsigned(value);
}

template <>
void SetAs(unsigned short const& value, Element& element) {
    element.setUnsigned(value);
}

template <>
void SetAs(int const& value, Element& element) {
    element.setSigned(value);
}

template <>
void SetAs(unsigned int const& value, Element& element) {
    element.setUnsigned(value);
}

template <>
void SetAs(long long const& value, Element& element) {
    element.setSigned(value);
}

template <>
void SetAs(unsigned long long const& value, Element& element) {
    element.setUnsigned(value);
}

template <>
void SetAs(double const& value, Element& element) {
    element.setFloating(value);
}

template <>
void SetAs(std::string const& value, Element& element) {
    element.setString(value);
}

template <>
void SetAs(std::complex<bool> const& value, Element& element) {
    setComplex(value, element);
}

template <>
void SetAs(std::complex<double> const& value, Element& element) {
    setComplex(value, element);
}

template <>
void SetAs(std::vector<int> const& value, Element& element) {
    setList(value, element);
}

template <>
void SetAs(std::vector<std::string> const& value, Element& element) {
    setList(value, element);
}

template <>
void SetAs(PartiallySerializableInterface const& value, Element& element) {
    value.copyToMetaData(element);
}

} // namespace Tolv::MetaData
