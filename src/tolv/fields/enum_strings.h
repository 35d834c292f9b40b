#pragma once

#include <cstddef>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/conversion.h>

namespace Tolv {

/// The words of an enumeration: a one-to-one mapping between values and literals. `E` is an
/// enumeration or `Msgs::Identifier`.
///
/// Tables are global constants, filled while the library that owns them loads. Reading one is
/// thread-safe.
template <class E>
class EnumStringsThrow {
    using Map = std::map<std::string, E, std::less<>>;

public:
    /// Inserts the pairs in order. Pairs that `insert` refuses are left out.
    EnumStringsThrow(std::initializer_list<std::pair<E, std::string>> pairs) {
        for (auto const& [value, literal] : pairs)
            insert(value, literal);
    }

    /// Adds a pair unless the literal is empty, or the value or the literal is already present: the
    /// first literal of a value and the first value of a literal are kept.
    /// @return whether the table now contains this very pair.
    bool insert(E value, std::string const& literal) {
        if (literal.empty())
            return false;
        if (auto const* const known = tryValue(literal); known != nullptr)
            return *known == value;
        if (tryLiteral(value) != nullptr)
            return false;
        map_.emplace(literal, value);
        return true;
    }

    /// Removes the pair with this value, if there is one.
    void remove(E value) {
        if (auto const* const known = tryLiteral(value); known != nullptr)
            map_.erase(map_.find(*known));
    }

    /// @throws Exception::InvalidEnumValue whose text is the value as a 32-bit decimal number.
    std::string const& literal(E value) const& {
        if (auto const* const found = tryLiteral(value); found != nullptr)
            return *found;
        throw Exception::InvalidEnumValue(std::to_string(numberOf(value)));
    }

    std::string const& literal(E value) && = delete; ///< the string dies with the table

    /// @throws Exception::InvalidEnumLiteral whose text is the literal.
    E value(std::string const& literal) const {
        if (auto const* const found = tryValue(literal); found != nullptr)
            return *found;
        throw Exception::InvalidEnumLiteral(literal);
    }

    // Extensions.

    /// The literal of `value`, or null.
    [[nodiscard]] std::string const* tryLiteral(E value) const noexcept {
        for (auto const& [literal, entry] : map_)
            if (entry == value)
                return &literal;
        return nullptr;
    }

    /// The value of `literal`, or null.
    [[nodiscard]] E const* tryValue(std::string_view literal) const noexcept {
        auto const found = map_.find(literal);
        return found != map_.end() ? &found->second : nullptr;
    }

    /// The pairs (literal, value), in byte order of the literals.
    [[nodiscard]] auto begin() const noexcept { return map_.begin(); }
    /// Past the last pair.
    [[nodiscard]] auto end() const noexcept { return map_.end(); }
    /// The number of pairs.
    [[nodiscard]] std::size_t size() const noexcept { return map_.size(); }

protected:
    /// Removes the pair with this literal, if there is one.
    void removeLiteral(std::string const& literal) { map_.erase(literal); }

private:
    static int numberOf(E const& value) noexcept {
        if constexpr (std::is_enum_v<E>)
            return static_cast<int>(value);
        else
            return static_cast<int>(static_cast<unsigned long long>(value));
    }

    Map map_;
};

/// A table with a default value and a default literal for missing entries. `literal` and `value` do
/// not use these defaults: they throw. Callers that want a default use its accessor.
template <class E>
class EnumStringsDefault : public EnumStringsThrow<E> {
public:
    /// The entries of `table`, except those with the default value or the default literal.
    EnumStringsDefault(E defaultValue, std::string const& defaultLiteral,
                       EnumStringsThrow<E> const& table)
        : EnumStringsThrow<E>(table), defaultValue_(defaultValue), defaultLiteral_(defaultLiteral) {
        this->removeLiteral(defaultLiteral);
        this->remove(defaultValue);
    }
    /// The same with a table built from `pairs`.
    EnumStringsDefault(E defaultValue, std::string const& defaultLiteral,
                       std::initializer_list<std::pair<E, std::string>> pairs)
        : EnumStringsDefault(defaultValue, defaultLiteral, EnumStringsThrow<E>(pairs)) {}

    // Extensions.
    /// The value that represents a missing entry.
    [[nodiscard]] E defaultValue() const noexcept { return defaultValue_; }
    /// The literal that represents a missing entry.
    [[nodiscard]] std::string const& defaultLiteral() const& noexcept { return defaultLiteral_; }
    std::string const& defaultLiteral() && = delete; ///< the string dies with the table

private:
    E defaultValue_;
    std::string defaultLiteral_;
};

namespace MetaData {

/// An enumeration that is written as a word. A function in its namespace returns the table:
///
///     enum class Slot { None = 0, Front = 1 };
///     extern TOLV_MESSAGES_API EnumStringsThrow<Slot> const& SlotEnums;
///     inline auto const& stringsOf(Slot) { return SlotEnums; }
///
/// The enumeration can then be the type of a field, and `SetAs`, `GetAs` and `TryGetAs` accept it.
template <class E>
concept WordEnumeration = std::is_enum_v<E> && requires(E value) {
    stringsOf(value);
};

/// False if `element` is not a string or the table does not contain it; `value` is then unchanged.
template <WordEnumeration E>
bool TryGetAs(Element const& element, E& value) noexcept {
    if (!element.isString())
        return false;
    auto const* const found = stringsOf(E{}).tryValue(element.text());
    if (found == nullptr)
        return false;
    value = *found;
    return true;
}

/// @throws Exception::InvalidParameter if `element` is not a string, and
/// Exception::InvalidEnumLiteral if it is a word that the table does not contain.
template <WordEnumeration E>
E GetAs(Element const& element) {
    return stringsOf(E{}).value(GetAs<std::string>(element));
}

/// The same into a variable, which is unchanged on failure.
template <WordEnumeration E>
void GetAs(Element const& element, E& value) {
    value = GetAs<E>(element);
}

/// @throws Exception::InvalidEnumValue if the table does not contain `value`.
template <WordEnumeration E>
void SetAs(E const& value, Element& element) {
    SetAs<std::string>(stringsOf(E{}).literal(value), element);
}

} // namespace MetaData

} // namespace Tolv
