#include <tolv/msgs/communications/messages.h>
#include <tolv/msgs/detail/family_rows.h>

#define TOLV_FAMILY Communications::Forwarder
#define TOLV_FAMILY_BASE Communications::Forwarder::Base
#define TOLV_FAMILY_TABLE <tolv/msgs/communications/messages.def>
#include <tolv/msgs/detail/define_family.inc>
