#pragma once

/// @file
/// All of libTolvMessages, with libTolvCore underneath.

#include <tolv/core.h>
#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/attrs/batches.h>
#include <tolv/msgs/attrs/message_type_mapper.h>
#include <tolv/msgs/attrs/messages.h>
#include <tolv/msgs/attrs/structs_messages.h>
#include <tolv/msgs/catalogue.h>
#include <tolv/msgs/communications/messages.h>
#include <tolv/msgs/engine/messages.h>
#include <tolv/msgs/errs/messages.h>
#include <tolv/msgs/excepts/converter_registrar.h>
#include <tolv/msgs/excepts/messages.h>
#include <tolv/msgs/families.h>
#include <tolv/msgs/introspection/description.h>
#include <tolv/msgs/introspection/explanation.h>
#include <tolv/msgs/message_helpers.h>
#include <tolv/msgs/notifs/messages.h>
#include <tolv/msgs/structs/json_web_token.h>
#include <tolv/msgs/sys/messages.h>
