#pragma once

#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>
#include <tolv/msgs/structs/inventory.h>
#include <tolv/msgs/structs/keying.h>
#include <tolv/msgs/structs/pcie.h>
#include <tolv/msgs/structs/selftest.h>
#include <tolv/msgs/structs/services.h>
#include <tolv/msgs/structs/triggers.h>

/// @file
/// The messages of family 4 that carry an instrument record. The table is structs_messages.def.

#define TOLV_FAMILY Attrs
#define TOLV_FAMILY_BASE Attrs::AttrMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/attrs/structs_messages.def>
#include <tolv/msgs/detail/declare_family.inc>
