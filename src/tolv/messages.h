#pragma once

/// @file
/// All of libTolvMessages, with libTolvCore underneath.

#include <tolv/core.h>
#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/catalogue.h>
#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>
