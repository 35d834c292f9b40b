#include <tolv/msgs/detail/family_rows.h>
#include <tolv/msgs/engine/messages.h>

#define TOLV_FAMILY Engine
#define TOLV_FAMILY_BASE Engine::StateMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/engine/messages.def>
#include <tolv/msgs/detail/define_family.inc>
