#pragma once

#include <tolv/core/export.h>
