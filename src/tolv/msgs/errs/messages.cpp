#include <tolv/msgs/detail/family_rows.h>
#include <tolv/msgs/errs/messages.h>

#define TOLV_FAMILY Errs
#define TOLV_FAMILY_BASE Errs::ErrorMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/errs/messages.def>
#include <tolv/msgs/detail/define_family.inc>
