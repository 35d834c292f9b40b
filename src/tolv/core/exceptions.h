#pragma once

#include <stdexcept>
#include <string>

#include <tolv/core/export.h>

/// The failures of the platform. Each is built from one text, and `what()` gives that text back.
namespace Tolv::Exception {

/// Root of the family: `catch (Tolv::Exception::Base const&)` takes all that this library raises
/// by itself.
class TOLV_CORE_API Base : public std::runtime_error {
public:
    /// @param text says what has failed, for people.
    explicit Base(std::string const& text);
    Base(Base const&) = default;
    Base& operator=(Base const&) = default;
    ~Base() override;
};

/// The call makes no sense in the object's present state (a value read that was never set).
class TOLV_CORE_API InvalidOperation : public Base {
public:
    using Base::Base;
    ~InvalidOperation() override;
};

/// An argument, or a text that was to be parsed, is not acceptable.
class TOLV_CORE_API InvalidParameter : public Base {
public:
    using Base::Base;
    ~InvalidParameter() override;
};

/// Arguments that are acceptable one by one contradict each other.
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

/// A handle names nothing.
class TOLV_CORE_API InvalidHandle : public Base {
public:
    using Base::Base;
    ~InvalidHandle() override;
};

/// A failure of a class that is not known here.
class TOLV_CORE_API UnknownException : public Base {
public:
    using Base::Base;
    ~UnknownException() override;
};

/// A number that stands for no enumerator.
class TOLV_CORE_API InvalidEnumValue : public Base {
public:
    using Base::Base;
    ~InvalidEnumValue() override;
};

/// A word that stands for no enumerator.
class TOLV_CORE_API InvalidEnumLiteral : public Base {
public:
    using Base::Base;
    ~InvalidEnumLiteral() override;
};

} // namespace Tolv::Exception
