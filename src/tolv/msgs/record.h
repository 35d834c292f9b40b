#pragma once

#include <tolv/core/msgs/message.h>
#include <tolv/fields/instances.h>

/// @file
/// The names used to write records, for all families.
namespace Tolv::Msgs {

using MetaData::Doc;
using MetaData::Example;
using MetaData::field;
using MetaData::Lossless;
using MetaData::MirroredObject;
using MetaData::OneOf;
using MetaData::OnlyWords;
using MetaData::Optional;
using MetaData::Reflector;
using MetaData::ReflectorArray;
using MetaData::Required;
using MetaData::Unit;
using MetaData::Within;
using MetaData::Words;
using MetaData::operator""_key;

} // namespace Tolv::Msgs
