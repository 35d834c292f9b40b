#pragma once

#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

/// @file
/// The messages of family 1. The table is messages.def.

#define TOLV_FAMILY Sys
#define TOLV_FAMILY_BASE Sys::SystemMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/sys/messages.def>
#include <tolv/msgs/detail/declare_family.inc>
