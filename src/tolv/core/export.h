#pragma once

/// @file
/// Symbols are hidden by default; one of these attributes exports the public ones.

/// A symbol that is visible outside its library.
#define TOLV_VISIBLE __attribute__((visibility("default")))
/// A symbol that is local to its library.
#define TOLV_LOCAL __attribute__((visibility("hidden")))

/// Exported from libTolvCore.
#define TOLV_CORE_API TOLV_VISIBLE
/// Exported from libTolvMessages.
#define TOLV_MESSAGES_API TOLV_VISIBLE
