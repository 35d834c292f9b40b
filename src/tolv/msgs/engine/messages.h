#pragma once

#include <tolv/msgs/engine/transition_data.h>
#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

/// @file
/// The message of family 2, which requests a transition of an engine. The table is messages.def.

#define TOLV_FAMILY Engine
#define TOLV_FAMILY_BASE Engine::StateMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/engine/messages.def>
#include <tolv/msgs/detail/declare_family.inc>
