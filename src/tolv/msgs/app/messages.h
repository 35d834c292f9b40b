#pragma once

#include <tolv/msgs/app/applications.h>
#include <tolv/msgs/app/chassis.h>
#include <tolv/msgs/app/connection.h>
#include <tolv/msgs/app/script_files.h>
#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

/// @file
/// The messages of family 3, exchanged between a client and the service that hosts applications.
/// The table is messages.def.

#define TOLV_FAMILY App
#define TOLV_FAMILY_BASE App::AppMessage
#define TOLV_FAMILY_TABLE <tolv/msgs/app/messages.def>
#include <tolv/msgs/detail/declare_family.inc>
