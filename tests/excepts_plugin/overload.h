#pragma once

#include <exception>

#include <tolv/core/metadata/element.h>

/// The plugin's interface for a program that knows none of its classes. Looked up by name.
extern "C" {

/// Throws the plugin's own exception.
using OverloadRaise = void (*)(double volts);

/// The voltage in the plugin's own exception; -1 for any other.
using OverloadVolts = double (*)(std::exception const& error);

/// Makes `element` a message of the plugin, with a key of more than 14 bytes.
using OverloadWrite = void (*)(Tolv::MetaData::Element& element);

/// Throws an exception of the plugin whose class has the same name as one of the program.
using OverloadRaiseNamesake = void (*)();
}
