#pragma once

#include <tolv/msgs/errs/error_data.h>
#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

/// @file
/// The message of family 5, which reports an error. The table is messages.def.

#define TOLV_FAMILY Errs
#define TOLV_FAMILY_BASE Errs::ErrorMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/errs/messages.def>
#include <tolv/msgs/detail/declare_family.inc>
