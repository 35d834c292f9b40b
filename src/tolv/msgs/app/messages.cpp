#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/detail/family_rows.h>

#define TOLV_FAMILY App
#define TOLV_FAMILY_BASE App::AppMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/app/messages.def>
#include <tolv/msgs/detail/define_family.inc>
