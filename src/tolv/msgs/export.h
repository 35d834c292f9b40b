#pragma once

#include <tolv/core/export.h>

/// Exported from libTolvMessages.
#define TOLV_MESSAGES_API TOLV_VISIBLE
