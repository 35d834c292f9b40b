#pragma once

/// @file
/// Symbols are hidden by default; what a user may call carries one of these marks.

/// A symbol that a user of its library may link with.
#define TOLV_VISIBLE __attribute__((visibility("default")))
/// A symbol that stays within its library.
#define TOLV_LOCAL __attribute__((visibility("hidden")))

/// Exported from libTolvCore.
#define TOLV_CORE_API TOLV_VISIBLE
/// Exported from libTolvMessages.
#define TOLV_MESSAGES_API TOLV_VISIBLE
