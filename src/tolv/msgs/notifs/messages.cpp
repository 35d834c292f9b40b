#include <tolv/msgs/detail/family_rows.h>
#include <tolv/msgs/notifs/messages.h>

#define TOLV_FAMILY Notifs
#define TOLV_FAMILY_BASE Notifs::AttrNotification
#define TOLV_FAMILY_TABLE <tolv/msgs/notifs/attr_messages.def>
#define TOLV_FAMILY_ROWS describeAttrMessages
#include <tolv/msgs/detail/define_family.inc>

#define TOLV_FAMILY Notifs
#define TOLV_FAMILY_BASE Notifs::AppNotification
#define TOLV_FAMILY_TABLE <tolv/msgs/notifs/app_messages.def>
#define TOLV_FAMILY_ROWS describeAppMessages
#include <tolv/msgs/detail/define_family.inc>

#define TOLV_FAMILY Notifs
#define TOLV_FAMILY_BASE Notifs::SystemNotification
#define TOLV_FAMILY_TABLE <tolv/msgs/notifs/system_messages.def>
#define TOLV_FAMILY_ROWS describeSystemMessages
#include <tolv/msgs/detail/define_family.inc>
