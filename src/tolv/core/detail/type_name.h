#pragma once

#include <string>
#include <typeinfo>

#include <tolv/core/export.h>

namespace Tolv::Detail {

/// The name of a class as people write it, without the namespaces of this project and without
/// default template arguments. @throws std::bad_alloc
TOLV_CORE_API std::string nameOf(std::type_info const& type);

} // namespace Tolv::Detail
