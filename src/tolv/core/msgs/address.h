#pragma once

#include <string>
#include <vector>

#include <tolv/core/export.h>
#include <tolv/fields/reflector_array.h>

namespace Tolv::MetaData {
extern template class TOLV_CORE_API ReflectorArray<std::string>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs {

/// An address: the list of strings that identifies an endpoint.
using Address = std::vector<std::string>;

/// A mirrored address. Final, because lists that were read are moved in without calling `assign`.
class TOLV_CORE_API ReflectedAddress final : public MetaData::ReflectorArray<std::string> {
public:
    /// The form in which a field is declared.
    using Field = MetaData::FieldOf<MetaData::ListOf<std::string>>;

    /// Constructs an empty list, initialized if required.
    ReflectedAddress(MetaData::Owner const& owner, Field field, MetaData::Presence required);
    /// Constructs an initialized field with this content.
    ReflectedAddress(MetaData::Owner const& owner, Field field, Address const& initial);

    ReflectedAddress(ReflectedAddress const&) = default;
    ~ReflectedAddress() override;

    ReflectedAddress& operator=(ReflectedAddress const&) = default;
    using MetaData::ReflectorArray<std::string>::operator=;
};

} // namespace Tolv::Msgs
