#pragma once

#include <tolv/msgs/excepts/exception_data.h>
#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

/// @file
/// The messages of family 6, each of which represents an exception. The table is messages.def.

#define TOLV_FAMILY Excepts
#define TOLV_FAMILY_BASE Excepts::ExceptionMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/excepts/messages.def>
#include <tolv/msgs/detail/declare_family.inc>
