#pragma once

#include <cstdint>

#include <tolv/core/export.h>
#include <tolv/core/metadata/element.h>

namespace Tolv::Msgs {

/// The 64-bit number that identifies a message class. It consists of four 16-bit fields; from the
/// most significant: family, sub1, sub2 and type.
class TOLV_CORE_API Identifier {
public:
    /// The identifier with this value.
    // NOLINTNEXTLINE(google-explicit-constructor): a number is an identifier
    Identifier(unsigned long long value = 0) noexcept : value_(value) {}
    Identifier(Identifier const&) = default;
    Identifier& operator=(Identifier const&) = default;
    virtual ~Identifier();

    /// The value.
    // NOLINTNEXTLINE(google-explicit-constructor): and the other way round
    operator unsigned long long() const noexcept { return value_; }

    [[nodiscard]] unsigned short family() const noexcept { return field(48); } ///< extension
    /// The second field from the top; 0 in most families.
    [[nodiscard]] unsigned short sub1() const noexcept { return field(32); }
    /// The third field; the category in family 7.
    [[nodiscard]] unsigned short sub2() const noexcept { return field(16); }
    /// The lowest field: the number of the message within its family.
    [[nodiscard]] unsigned short type() const noexcept { return field(0); }

    /// The value composed of the four fields.
    [[nodiscard]] static constexpr unsigned long long toValue(unsigned short family,
                                                              unsigned short sub1,
                                                              unsigned short sub2,
                                                              unsigned short type) noexcept {
        return static_cast<unsigned long long>(family) << 48U |
               static_cast<unsigned long long>(sub1) << 32U |
               static_cast<unsigned long long>(sub2) << 16U | type;
    }

    /// Stores the value in `element` as an unsigned number.
    void copyToMetaData(MetaData::Element& element) const;
    /// @throws Exception::InvalidParameter if `element` is not a number that fits into an unsigned
    /// 64-bit integer; the value is then unchanged.
    void copyFromMetaData(MetaData::Element const& element);

private:
    [[nodiscard]] unsigned short field(unsigned int shift) const noexcept {
        return static_cast<unsigned short>(value_ >> shift);
    }

    unsigned long long value_;
};

} // namespace Tolv::Msgs
