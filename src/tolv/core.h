#pragma once

/// @file
/// All of libTolvCore: the tree, JSON, base64, the base of all messages and the factory.

#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/limits.h>
#include <tolv/core/metadata/conversion.h>
#include <tolv/core/metadata/element.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/mirrored_object.h>
#include <tolv/core/metadata/read_report.h>
#include <tolv/core/msgs/message.h>
#include <tolv/core/msgs/message_key.h>
#include <tolv/core/utf8.h>
#include <tolv/fields/reflector.h>
#include <tolv/fields/reflector_array.h>
