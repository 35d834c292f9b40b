#pragma once

#include <tolv/msgs/attrs/messages.h>
#include <tolv/msgs/attrs/structs_messages.h>
#include <tolv/msgs/messages_array.h>

/// @file
/// The batches of family 4, each of which contains many messages of one class. The table is
/// batches.def.

#define TOLV_FAMILY Attrs
#define TOLV_FAMILY_BASE Attrs::AttrArrays
#define TOLV_FAMILY_TABLE <tolv/msgs/attrs/batches.def>
#include <tolv/msgs/detail/declare_family.inc>
