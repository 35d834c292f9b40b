#include <tolv/msgs/detail/family_rows.h>
#include <tolv/msgs/sys/messages.h>

#define TOLV_FAMILY Sys
#define TOLV_FAMILY_BASE Sys::SystemMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/sys/messages.def>
#include <tolv/msgs/detail/define_family.inc>
