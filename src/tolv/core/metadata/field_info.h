#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include <tolv/core/export.h>
#include <tolv/core/metadata/key.h>
#include <tolv/core/metadata/value_type.h>

namespace Tolv::MetaData {

/// What is said of a field beside its key and type. The texts stand behind the `FieldInfo` that
/// holds these facts, at the given distance from its start, so that nothing is relocated when a
/// library is loaded.
struct FieldFacts {
    struct Text {
        std::uint16_t at = 0;
        std::uint16_t size = 0;
    };

    Text unit;
    Text doc;
    Text example;
    Text words;
    bool isClosed = false;                        ///< values other than the words are refused
    bool hasRange = false;                        ///< `minimum` and `maximum` are set
    long long minimum = 0;                        ///< inclusive
    long long maximum = 0;                        ///< inclusive
    std::vector<Literal> (*literals)() = nullptr; ///< words from the table of an enumeration
};

/// A field as its record declares it: key, type of the values, unit, meaning. All objects of a
/// record share it. It lives as long as the library that defines the record; one made by `intern`
/// lives until the process ends.
class FieldInfo : public Key {
public:
    /// @param key must live as long as this object
    constexpr FieldInfo(std::string_view key, ValueType const* type, FieldFacts const& facts = {})
        : Key(key), type_(type), facts_(facts) {}

    /// The one field with this key and type that has no further facts, made on first use.
    /// Thread-safe.
    TOLV_CORE_API static FieldInfo const& intern(std::string_view key, ValueType const* type);

    /// The type of the values; null for a field class that does not say so.
    [[nodiscard]] ValueType const* type() const noexcept { return type_; }
    /// The unit, as in "ms"; empty if there is none.
    [[nodiscard]] std::string_view unit() const noexcept { return textAt(facts_.unit); }
    /// The meaning, in a few words.
    [[nodiscard]] std::string_view doc() const noexcept { return textAt(facts_.doc); }
    /// A plausible value: of a text or a word as it stands, otherwise as JSON. Empty if none.
    [[nodiscard]] std::string_view example() const noexcept { return textAt(facts_.example); }
    /// The values that have names of their own.
    [[nodiscard]] TOLV_CORE_API std::vector<Literal> literals() const;
    /// Whether values other than `literals` are refused.
    [[nodiscard]] bool isClosed() const noexcept { return facts_.isClosed; }
    /// Whether plausible values lie between `minimum` and `maximum`. Reading does not check it.
    [[nodiscard]] bool hasRange() const noexcept { return facts_.hasRange; }
    [[nodiscard]] long long minimum() const noexcept { return facts_.minimum; } ///< inclusive
    [[nodiscard]] long long maximum() const noexcept { return facts_.maximum; } ///< inclusive

private:
    [[nodiscard]] std::string_view textAt(FieldFacts::Text const& which) const noexcept {
        return {reinterpret_cast<char const*>(this) + which.at, which.size};
    }

    ValueType const* type_;
    FieldFacts facts_;
};

} // namespace Tolv::MetaData
