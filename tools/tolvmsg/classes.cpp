#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <cxxabi.h>

#include <tolv/msgs/catalogue.h>

#include "classes.h"
#include "commands.h"
#include "ids.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

std::string demangled(std::string const& name) {
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> const text(
        abi::__cxa_demangle(name.c_str(), nullptr, nullptr, &status), &std::free);
    return harmless(status == 0 ? text.get() : name);
}

MessageClass describe(Msgs::Message::MsgFactory::Entry const& entry) {
    auto const* const row = Msgs::findMessage(entry.id);
    if (row == nullptr)
        return {entry.id, {}, {}, demangled(entry.typeName), {}, {}, nullptr};
    return {row->id,
            row->fullAlias(),
            std::string(row->alias),
            std::string(row->className),
            std::string(row->payload),
            std::string(row->role),
            row->make};
}

} // namespace

Classes::Classes() {
    for (auto const& entry : Msgs::Message::MsgFactory::Instance().entries())
        all_.push_back(describe(entry));
}

MessageClass const* Classes::find(unsigned long long id) const noexcept {
    auto const found = std::lower_bound(
        all_.begin(), all_.end(), id,
        [](MessageClass const& c, unsigned long long wanted) { return c.id < wanted; });
    return found != all_.end() && found->id == id ? &*found : nullptr;
}

MetaData::Element const* Classes::example(unsigned long long id) const {
    if (auto const known = trees_.find(id); known != trees_.end())
        return &known->second;
    auto const* const found = find(id);
    if (found == nullptr || found->make == nullptr)
        return nullptr;
    auto& tree = trees_[id];
    auto const message = found->make();
    if (message->destination.isRequired() && !message->destination.initialized())
        message->destination = {"instrument"};
    message->copyToMetaData(tree);
    return &tree;
}

std::optional<Msgs::Introspection::ClassDescription> descriptionOf(unsigned long long id) {
    try {
        return Msgs::Introspection::describe(id);
    } catch (std::exception const&) { // of a user's class
        return {};
    }
}

Msgs::Introspection::ClassDescription descriptionOf(MessageClass const& known) {
    std::string why = "its creator returns null";
    try {
        if (auto described = Msgs::Introspection::describe(known.id))
            return *std::move(described);
    } catch (std::exception const& e) {
        why = std::string("its creator throws: ") + e.what();
    }
    throw UsageError("no message of class " + hexadecimal(known.id) + " (" + known.name() +
                     ") can be built: " + why);
}

std::vector<Msgs::Introspection::ClassDescription> descriptionsOf(Classes const& classes) {
    std::vector<Msgs::Introspection::ClassDescription> all;
    for (auto const& known : classes.all()) {
        try {
            all.push_back(descriptionOf(known));
        } catch (UsageError const& e) {
            std::fprintf(stderr, "tolvmsg: left out: %s\n", harmless(e.what()).c_str());
        }
    }
    return all;
}

} // namespace Tolv::Tool
