#include <tolv/msgs/attrs/structs_messages.h>
#include <tolv/msgs/detail/family_rows.h>

#define TOLV_FAMILY Attrs
#define TOLV_FAMILY_BASE Attrs::AttrMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/attrs/structs_messages.def>
#define TOLV_FAMILY_ROWS describeStructsMessages
#include <tolv/msgs/detail/define_family.inc>
