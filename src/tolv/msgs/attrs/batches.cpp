#include <tolv/msgs/attrs/batches.h>
#include <tolv/msgs/detail/family_rows.h>

#define TOLV_FAMILY Attrs
#define TOLV_FAMILY_BASE Attrs::AttrArrays
#define TOLV_FAMILY_TABLE <tolv/msgs/attrs/batches.def>
#define TOLV_FAMILY_ROWS describeBatches
#include <tolv/msgs/detail/define_family.inc>
