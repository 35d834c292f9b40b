#pragma once

#include <tolv/msgs/app/applications.h>
#include <tolv/msgs/attrs/arrays.h>
#include <tolv/msgs/attrs/enums.h>
#include <tolv/msgs/attrs/info.h>
#include <tolv/msgs/attrs/message_type_mapper.h>
#include <tolv/msgs/attrs/traces.h>
#include <tolv/msgs/attrs/values.h>
#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

/// @file
/// The messages of family 4, which carry attributes. The table is messages.def.

#define TOLV_FAMILY Attrs
#define TOLV_FAMILY_BASE Attrs::AttrMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/attrs/messages.def>
#include <tolv/msgs/detail/declare_family.inc>
