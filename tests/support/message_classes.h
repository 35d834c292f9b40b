#pragma once

#include <type_traits>

#include <tolv/messages.h>

namespace Tolv::Testing {

/// Calls `visit(std::type_identity<M>())` for each message class of the library.
template <class Visit>
void forEachMessageClass(Visit const& visit) {
#define TOLV_SIMPLE_MESSAGE(alias, number, role) visit(std::type_identity<alias>());
#define TOLV_DESTINATION_MESSAGE(alias, number, role) visit(std::type_identity<alias>());
#define TOLV_PAYLOAD_MESSAGE(alias, number, role, ...) visit(std::type_identity<alias>());
    using namespace Msgs;
    {
        using namespace Attrs;
#include <tolv/msgs/attrs/messages.def>

#include <tolv/msgs/attrs/structs_messages.def>

#include <tolv/msgs/attrs/batches.def>
    }
    {
        using namespace Communications::Forwarder;
#include <tolv/msgs/communications/messages.def>
    }
    {
        using namespace App;
        using namespace Engine;
        using namespace Errs;
        using namespace Excepts;
        using namespace Notifs;
        using namespace Sys;
#include <tolv/msgs/app/messages.def>

#include <tolv/msgs/engine/messages.def>

#include <tolv/msgs/errs/messages.def>

#include <tolv/msgs/excepts/messages.def>

#include <tolv/msgs/notifs/app_messages.def>

#include <tolv/msgs/notifs/attr_messages.def>

#include <tolv/msgs/notifs/system_messages.def>

#include <tolv/msgs/sys/messages.def>
    }
#undef TOLV_SIMPLE_MESSAGE
#undef TOLV_DESTINATION_MESSAGE
#undef TOLV_PAYLOAD_MESSAGE
}

} // namespace Tolv::Testing
