#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>

#include <tolv/core/metadata/field_info.h>
#include <tolv/fields/value_type_of.h>

/// @file
/// What a record says of a field, in the line that declares it:
///
///     Reflector<double> offset{this, field<"offset", Unit{"ms"}, Doc{"from trigger to pulse"}>,
///                              Required, 0.0};
///
/// The key comes first; `Unit`, `Doc`, `Words`, `OnlyWords`, `OneOf`, `Within` and `Example` follow
/// in any order, each at most once. All of it is stored once per field, in constant memory.
namespace Tolv::MetaData {

/// A key and what is said of the field.
template <Detail::FixedText Text, auto... Words>
inline constexpr FieldSpec<Text, Words...> field{};

/// The unit of a number, or of the numbers in a list: `Unit{"ms"}`.
template <std::size_t N>
struct Unit {
    Detail::FixedText<N> text;
    // NOLINTNEXTLINE(google-explicit-constructor): these classes are made from literals
    constexpr Unit(char const (&literal)[N]) : text(literal) {}
    constexpr void enter(FieldFacts& facts, FieldFacts::Text at) const { facts.unit = at; }
};

/// The meaning in a few words, and what an absent value means: `Doc{"clients at a time"}`.
template <std::size_t N>
struct Doc {
    Detail::FixedText<N> text;
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr Doc(char const (&literal)[N]) : text(literal) {}
    constexpr void enter(FieldFacts& facts, FieldFacts::Text at) const { facts.doc = at; }
};

/// A plausible value for examples: the text of a string or word, otherwise JSON:
/// `Example{"12.5"}`.
template <std::size_t N>
struct Example {
    Detail::FixedText<N> text;
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr Example(char const (&literal)[N]) : text(literal) {}
    constexpr void enter(FieldFacts& facts, FieldFacts::Text at) const { facts.example = at; }
};

/// Names for some of the numbers that an integer field accepts:
/// `Words{"0 blank | 1 port | 2 display"}`.
template <std::size_t N>
struct Words {
    Detail::FixedText<N> text;
    static constexpr bool namesNumbers = true;
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr Words(char const (&literal)[N]) : text(literal) {}
    constexpr void enter(FieldFacts& facts, FieldFacts::Text at) const { facts.words = at; }
};

/// The same for a field whose other numbers are refused by its readers.
template <std::size_t N>
struct OnlyWords {
    Detail::FixedText<N> text;
    static constexpr bool namesNumbers = true;
    // NOLINTNEXTLINE(google-explicit-constructor)
    constexpr OnlyWords(char const (&literal)[N]) : text(literal) {}
    constexpr void enter(FieldFacts& facts, FieldFacts::Text at) const {
        facts.words = at;
        facts.isClosed = true;
    }
};

/// The strings that a text field is meant to hold: those that `wordOf` in the namespace of `E` has
/// for its enumerators from 0 to 63 or, if `E` is a class, those of its static function `literals`.
/// Other strings are accepted, too.
template <class E>
struct OneOf {
    static constexpr bool namesTexts = true;
    constexpr void enter(FieldFacts& facts, FieldFacts::Text /*at*/) const {
        if constexpr (std::is_class_v<E>)
            facts.literals = E::literals;
        else
            facts.literals = literals;
    }

private:
    static std::vector<Literal> literals() {
        std::vector<Literal> words;
        for (int value = 0; value < 64; ++value)
            if (auto const word = wordOf(static_cast<E>(value)); !word.empty())
                words.push_back({std::string(word), value});
        return words;
    }
};

/// The range of plausible numbers, inclusive: `Within{0, 100}`. Reading does not check it.
struct Within {
    long long minimum;
    long long maximum;
    constexpr Within(long long minimum, long long maximum) : minimum(minimum), maximum(maximum) {}
    constexpr void enter(FieldFacts& facts, FieldFacts::Text /*at*/) const {
        facts.hasRange = true;
        facts.minimum = minimum;
        facts.maximum = maximum;
    }
};

namespace Detail {

template <class Word>
constexpr std::size_t textSize(Word const& word) {
    if constexpr (requires { word.text; })
        return word.text.size() + 1;
    else
        return 0;
}

/// Whether the text has the form "0 passed | 1 failed".
consteval bool namesNumbers(std::string_view text) {
    while (true) {
        auto const bar = text.find('|');
        auto one = text.substr(0, bar);
        while (!one.empty() && one.front() == ' ')
            one.remove_prefix(1);
        auto const digits = one.find_first_not_of("0123456789", one.starts_with('-') ? 1 : 0);
        if (digits == std::string_view::npos || digits == (one.starts_with('-') ? 1U : 0U) ||
            one[digits] != ' ' || one.find_first_not_of(' ', digits) == std::string_view::npos)
            return false;
        if (bar == std::string_view::npos)
            return true;
        text.remove_prefix(bar + 1);
    }
}

/// The same. g++ takes no pointer into a template argument for constant when it sanitizes.
template <std::size_t N>
consteval bool namesNumbers(FixedText<N> text) {
    return namesNumbers(text.view());
}

/// Whether `Word` may be said of a field with values of type `V`.
template <class V, auto Word>
consteval bool suits() {
    using Number = typename ElementOf<V>::Type;
    if constexpr (requires { Word.namesNumbers; }) {
        static_assert(std::is_integral_v<V> && !std::is_same_v<V, bool>,
                      "Words and OnlyWords name the numbers of an integer field");
        static_assert(namesNumbers(Word.text),
                      "the words of a field are written as \"0 passed | 1 failed\"");
    }
    if constexpr (requires { Word.namesTexts; })
        static_assert(std::is_same_v<V, std::string>, "OneOf names the strings of a text field");
    if constexpr (requires { Word.minimum; })
        static_assert(std::is_arithmetic_v<Number>, "Within bounds the numbers of a field");
    return true;
}

template <class Word, class Other>
inline constexpr bool sameKind = false;
template <template <std::size_t> class Kind, std::size_t N, std::size_t M>
inline constexpr bool sameKind<Kind<N>, Kind<M>> = true;

/// Whether no two of the words are of one kind.
template <auto Word, auto... Others>
consteval bool eachOnce() {
    using This = std::remove_const_t<decltype(Word)>;
    if constexpr ((false || ... || sameKind<This, std::remove_const_t<decltype(Others)>>))
        return false;
    else if constexpr (sizeof...(Others) != 0)
        return eachOnce<Others...>();
    else
        return true;
}

/// A `FieldInfo` and the texts behind it.
template <class V, FixedText Text, auto... Words>
struct FieldBlock {
    FieldInfo info;
    char texts[(1 + ... + textSize(Words))]{};

    constexpr FieldBlock() : info(Text.view(), &valueType<V>, facts()) {
        [[maybe_unused]] char* end = texts;
        [[maybe_unused]] auto const copy = [&end](auto const& word) {
            if constexpr (requires { word.text; })
                for (char const letter : word.text.chars)
                    *end++ = letter;
        };
        (copy(Words), ...);
    }

private:
    static constexpr FieldFacts facts() {
        static_assert((true && ... && suits<V, Words>()));
        if constexpr (sizeof...(Words) != 0)
            static_assert(eachOnce<Words...>(), "a field says each kind of word once at most");
        FieldFacts facts;
        std::size_t at = sizeof(FieldInfo);
        [[maybe_unused]] auto const enter = [&](auto const& word) {
            auto const size = textSize(word);
            word.enter(facts, {static_cast<std::uint16_t>(at),
                               static_cast<std::uint16_t>(size == 0 ? 0 : size - 1)});
            at += size;
        };
        (enter(Words), ...);
        return facts;
    }
};

template <class V, FixedText Text, auto... Words>
inline constexpr FieldBlock<V, Text, Words...> fieldBlock{};

} // namespace Detail

/// What a field with values of type `V` is built from: `field<...>`, a key, or a key as a text,
/// which is kept until the process ends.
template <class V>
class FieldOf {
public:
    // NOLINTBEGIN(google-explicit-constructor): stands for a parameter of one of these types
    template <Detail::FixedText Text, auto... Words>
    [[gnu::always_inline]] constexpr FieldOf(FieldSpec<Text, Words...> /*field*/)
        : info_(&Detail::fieldBlock<V, Text, Words...>.info) {}
    FieldOf(Key const& key) : info_(&FieldInfo::intern(key.text(), &valueType<V>)) {}
    FieldOf(std::string const& key) : info_(&FieldInfo::intern(key, &valueType<V>)) {}
    FieldOf(char const* key) : info_(&FieldInfo::intern(key, &valueType<V>)) {}
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] constexpr FieldInfo const& info() const noexcept { return *info_; }

private:
    FieldInfo const* info_;
};

/// One key of a class with custom conversion, which lists its keys for descriptions:
///
///     static std::vector<FieldInfo const*> mirroredKeys() {
///         return {&keyInfo<unsigned int>(field<"MaxVersion", Doc{"the highest version"}>), ...};
///     }
template <class T>
constexpr FieldInfo const& keyInfo(FieldOf<T> field) noexcept {
    return field.info();
}

} // namespace Tolv::MetaData
