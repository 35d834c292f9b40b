#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include <tolv/msgs/catalogue.h>

/// @file
/// The rows that each family adds to the catalogue. Not installed.
namespace Tolv::Msgs {

namespace Detail {

template <class M>
MessageDescription describe(std::string_view family, std::string_view alias,
                            std::string_view className, std::string_view payload,
                            std::string_view role) {
    return {M::MsgID(), family, alias, className, payload, role, []() -> std::shared_ptr<Message> {
                return std::make_shared<M>();
            }};
}

} // namespace Detail

// One function per table, in the namespace of the family.
namespace App {
std::vector<MessageDescription> describeMessages();
} // namespace App
namespace Attrs {
std::vector<MessageDescription> describeMessages();
std::vector<MessageDescription> describeStructsMessages();
std::vector<MessageDescription> describeBatches();
} // namespace Attrs
namespace Communications::Forwarder {
std::vector<MessageDescription> describeMessages();
} // namespace Communications::Forwarder
namespace Engine {
std::vector<MessageDescription> describeMessages();
} // namespace Engine
namespace Errs {
std::vector<MessageDescription> describeMessages();
} // namespace Errs
namespace Excepts {
std::vector<MessageDescription> describeMessages();
} // namespace Excepts
namespace Notifs {
std::vector<MessageDescription> describeAttrMessages();
std::vector<MessageDescription> describeAppMessages();
std::vector<MessageDescription> describeSystemMessages();
} // namespace Notifs
namespace Sys {
std::vector<MessageDescription> describeMessages();
} // namespace Sys

} // namespace Tolv::Msgs
