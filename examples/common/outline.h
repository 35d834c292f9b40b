#pragma once

#include <cstddef>
#include <string>

#include <tolv/core/msgs/message.h>

namespace Example {

/// The alias of a message's class, or its id as "3.0.0.29" where libTolvMessages knows none.
std::string nameOf(Tolv::Msgs::Identifier const& id);

/// What a message says, for people, in about `width` bytes: its payload, or, without payload, its
/// role; with the part of the instrument that it is about.
std::string outlineOf(Tolv::Msgs::Message const& message, std::size_t width);

} // namespace Example
