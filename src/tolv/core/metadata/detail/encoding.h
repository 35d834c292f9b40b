#pragma once

#include <span>

#include <tolv/core/export.h>
#include <tolv/core/metadata/element.h>

namespace Tolv::MetaData::Detail {

/// Makes `element` the base64 of `bytes`. While `MirroredObject::copyToText` of this thread is at
/// work, large blocks are only noted, and encoded straight into its output.
/// @throws std::bad_alloc, and Exception::InvalidParameter for a text of 4 GiB or more; the content
/// is then as it was.
TOLV_CORE_API void putEncoded(Element& element, std::span<unsigned char const> bytes);

} // namespace Tolv::MetaData::Detail
