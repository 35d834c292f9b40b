#include <tolv/msgs/attrs/messages.h>
#include <tolv/msgs/detail/family_rows.h>

#define TOLV_FAMILY Attrs
#define TOLV_FAMILY_BASE Attrs::AttrMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/attrs/messages.def>
#include <tolv/msgs/detail/define_family.inc>
