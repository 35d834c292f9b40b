#pragma once

#include <tolv/core/msgs/message.h>
#include <tolv/metadata/instances.h>

/// @file
/// The names used to write records, for all families.
namespace Tolv::Msgs {

using MetaData::Lossless;
using MetaData::MirroredObject;
using MetaData::Optional;
using MetaData::Reflector;
using MetaData::ReflectorArray;
using MetaData::Required;
using MetaData::operator""_key;

} // namespace Tolv::Msgs
