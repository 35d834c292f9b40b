#pragma once

#include <tolv/core/export.h>

namespace Tolv::MetaData {

class Element;

/// The interface of everything that can be written to an element and read from one. Implementations
/// inherit it as a virtual base.
class TOLV_CORE_API PartiallySerializableInterface {
public:
    virtual ~PartiallySerializableInterface() = 0;

    /// Writes this object into `element`.
    virtual void copyToMetaData(Element& element) const = 0;

    /// Reads this object from `element`.
    virtual void copyFromMetaData(Element const& element) = 0;

protected:
    PartiallySerializableInterface() = default;
    PartiallySerializableInterface(PartiallySerializableInterface const&) = default;
    PartiallySerializableInterface& operator=(PartiallySerializableInterface const&) = default;
};

} // namespace Tolv::MetaData
