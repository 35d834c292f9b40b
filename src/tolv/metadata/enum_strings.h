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

/// The words of an enumeration: each literal stands for one value and each value for one literal.
/// `E` is an enumeration or `Msgs::Identifier`.
///
/// Tables are global constants, filled while the library that owns them loads. Reading one is
/// thread-safe.
template <class E>
class EnumStringsThrow {
    using Map = std::map<std::string, E, std::less<>>;

public:
    /// Inserts the pairs in order. A pair that `insert` refuses is left out.
    EnumStringsThrow(std::initializer_list<std::pair<E, std::string>> pairs) {
        for (auto const& [value, literal] : pairs)
            insert(value, literal);
    }

    /// Adds a pair, unless the literal is empty or one of the two is taken: the first literal of a
    /// value and the first value of a literal stay.
    /// @return whether the table now holds this very pair.
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

    /// Takes the pair with this value out, if there is one.
    void remove(E value) {
        if (auto const* const known = tryLiteral(value); known != nullptr)
            map_.erase(map_.find(*known));
    }

    /// @throws Exception::InvalidEnumValue whose text is the value as a decimal number of 32 bits.
    std::string const& literal(E value) const& {
        if (auto const* const found = tryLiteral(value); found != nullptr)
            return *found;
        throw Exception::InvalidEnumValue(std::to_string(numberOf(value)));
    }

    std::string const& literal(E value) && = delete; ///< the text would end with the table

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

    /// The pairs (literal, value), in the order of the literals' bytes.
    [[nodiscard]] auto begin() const noexcept { return map_.begin(); }
    /// Behind the last pair.
    [[nodiscard]] auto end() const noexcept { return map_.end(); }
    /// Number of pairs.
    [[nodiscard]] std::size_t size() const noexcept { return map_.size(); }

protected:
    /// Takes the pair with this literal out, if there is one.
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

/// A table with a pair beside it that stands for a missing entry. `literal` and `value` do not
/// fall back on that pair: they throw. Who wants it asks for it.
template <class E>
class EnumStringsDefault : public EnumStringsThrow<E> {
public:
    /// The entries of `table`, without those that have the default value or the default literal.
    EnumStringsDefault(E defaultValue, std::string const& defaultLiteral,
                       EnumStringsThrow<E> const& table)
        : EnumStringsThrow<E>(table), defaultValue_(defaultValue), defaultLiteral_(defaultLiteral) {
        this->removeLiteral(defaultLiteral);
        this->remove(defaultValue);
    }
    /// The same with the table that is built from `pairs`.
    EnumStringsDefault(E defaultValue, std::string const& defaultLiteral,
                       std::initializer_list<std::pair<E, std::string>> pairs)
        : EnumStringsDefault(defaultValue, defaultLiteral, EnumStringsThrow<E>(pairs)) {}

    // Extensions.
    /// The value that stands for a missing entry.
    [[nodiscard]] E defaultValue() const noexcept { return defaultValue_; }
    /// The literal that stands for a missing entry.
    [[nodiscard]] std::string const& defaultLiteral() const& noexcept { return defaultLiteral_; }
    std::string const& defaultLiteral() && = delete; ///< the text would end with the table

private:
    E defaultValue_;
    std::string defaultLiteral_;
};

namespace MetaData {

/// An enumeration that travels as a word. Beside it stands one function, which names its table:
///
///     enum class Slot { None = 0, Front = 1 };
///     extern TOLV_MESSAGES_API EnumStringsThrow<Slot> const& SlotEnums;
///     inline auto const& stringsOf(Slot) { return SlotEnums; }
///
/// It can then be the type of a field, and `SetAs`, `GetAs` and `TryGetAs` take it.
template <class E>
concept WordEnumeration = std::is_enum_v<E> && requires(E value) {
    stringsOf(value);
};

/// False when `element` is no string or the table doesn't hold it; `value` is then as it was.
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

/// @throws Exception::InvalidParameter when `element` is no string, and
/// Exception::InvalidEnumLiteral when it is a word that the table doesn't hold.
template <WordEnumeration E>
E GetAs(Element const& element) {
    return stringsOf(E{}).value(GetAs<std::string>(element));
}

/// The same into a variable, which stays as it is on failure.
template <WordEnumeration E>
void GetAs(Element const& element, E& value) {
    value = GetAs<E>(element);
}

/// @throws Exception::InvalidEnumValue when the table doesn't hold `value`.
template <WordEnumeration E>
void SetAs(E const& value, Element& element) {
    SetAs<std::string>(stringsOf(E{}).literal(value), element);
}

} // namespace MetaData

} // namespace Tolv
