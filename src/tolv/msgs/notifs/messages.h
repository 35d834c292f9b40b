#pragma once

#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>
#include <tolv/msgs/utils/may_contain_error.h>

/// @file
/// The messages of family 7, which are sent unsolicited. There is one table per category.

#define TOLV_FAMILY Notifs
#define TOLV_FAMILY_BASE Notifs::AttrNotification
#define TOLV_FAMILY_TABLE <tolv/msgs/notifs/attr_messages.def>
#include <tolv/msgs/detail/declare_family.inc>

#define TOLV_FAMILY Notifs
#define TOLV_FAMILY_BASE Notifs::AppNotification
#define TOLV_FAMILY_TABLE <tolv/msgs/notifs/app_messages.def>
#include <tolv/msgs/detail/declare_family.inc>

#define TOLV_FAMILY Notifs
#define TOLV_FAMILY_BASE Notifs::SystemNotification
#define TOLV_FAMILY_TABLE <tolv/msgs/notifs/system_messages.def>
#include <tolv/msgs/detail/declare_family.inc>
