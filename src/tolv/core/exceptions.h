#pragma once

#include <stdexcept>
#include <string>

#include <tolv/core/export.h>

/// The exceptions of this library. Each is constructed from one text, which `what()` returns.
namespace Tolv::Exception {

/// The base class: `catch (Tolv::Exception::Base const&)` catches every exception that originates
/// in this library.
class TOLV_CORE_API Base : public std::runtime_error {
public:
    /// @param text describes the failure for people.
    explicit Base(std::string const& text);
    Base(Base const&) = default;
    Base& operator=(Base const&) = default;
    ~Base() override;
};

/// The call is invalid in the current state of the object, such as reading a value that was never
/// set.
class TOLV_CORE_API InvalidOperation : public Base {
public:
    using Base::Base;
    ~InvalidOperation() override;
};

/// An argument or a text to be parsed is not acceptable.
class TOLV_CORE_API InvalidParameter : public Base {
public:
    using Base::Base;
    ~InvalidParameter() override;
};

/// Arguments that are each acceptable contradict each other.
class TOLV_CORE_API InconsistentParameters : public Base {
public:
    using Base::Base;
    ~InconsistentParameters() override;
};

/// Memory, a device or another resource ran out.
class TOLV_CORE_API InsufficientResources : public Base {
public:
    using Base::Base;
    ~InsufficientResources() override;
};

/// A handle refers to nothing.
class TOLV_CORE_API InvalidHandle : public Base {
public:
    using Base::Base;
    ~InvalidHandle() override;
};

/// A failure whose class is not known here.
class TOLV_CORE_API UnknownException : public Base {
public:
    using Base::Base;
    ~UnknownException() override;
};

/// A number does not correspond to any enumerator.
class TOLV_CORE_API InvalidEnumValue : public Base {
public:
    using Base::Base;
    ~InvalidEnumValue() override;
};

/// A word does not correspond to any enumerator.
class TOLV_CORE_API InvalidEnumLiteral : public Base {
public:
    using Base::Base;
    ~InvalidEnumLiteral() override;
};

} // namespace Tolv::Exception
