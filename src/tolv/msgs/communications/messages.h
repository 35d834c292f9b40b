#pragma once

#include <tolv/msgs/communications/service_data.h>
#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

/// @file
/// The messages of family 9, exchanged between the forwarder and its clients. The table is
/// messages.def.

#define TOLV_FAMILY Communications::Forwarder
#define TOLV_FAMILY_BASE Communications::Forwarder::Base
#define TOLV_FAMILY_TABLE <tolv/msgs/communications/messages.def>
#include <tolv/msgs/detail/declare_family.inc>
