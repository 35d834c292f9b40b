#include <tolv/msgs/detail/family_rows.h>
#include <tolv/msgs/excepts/messages.h>

#define TOLV_FAMILY Excepts
#define TOLV_FAMILY_BASE Excepts::ExceptionMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/excepts/messages.def>
#include <tolv/msgs/detail/define_family.inc>
