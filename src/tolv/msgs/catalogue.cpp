#include <algorithm>

#include <tolv/msgs/detail/family_rows.h>

namespace Tolv::Msgs {

namespace {

std::vector<MessageDescription> collect() {
    std::vector<MessageDescription> all;
    for (auto const describe : {
             Sys::describeMessages,
             Engine::describeMessages,
             App::describeMessages,
             Attrs::describeMessages,
             Attrs::describeStructsMessages,
             Attrs::describeBatches,
             Errs::describeMessages,
             Excepts::describeMessages,
             Notifs::describeAttrMessages,
             Notifs::describeAppMessages,
             Notifs::describeSystemMessages,
             Communications::Forwarder::describeMessages,
         }) {
        auto const table = describe();
        all.insert(all.end(), table.begin(), table.end());
    }
    std::sort(all.begin(), all.end(), [](auto const& l, auto const& r) { return l.id < r.id; });
    return all;
}

// Built while the library loads. If built on first use, the catalogue would be destroyed before
// static objects of the program that were constructed earlier.
auto const rows = collect();

} // namespace

std::span<MessageDescription const> catalogue() { return rows; }

MessageDescription const* findMessage(unsigned long long id) {
    auto const all = catalogue();
    auto const found = std::lower_bound(
        all.begin(), all.end(), id, [](auto const& row, auto wanted) { return row.id < wanted; });
    return found != all.end() && found->id == id ? &*found : nullptr;
}

MessageDescription const* findMessage(std::string_view alias) {
    MessageDescription const* found = nullptr;
    for (auto const& row : catalogue()) {
        if (row.fullAlias() == alias)
            return &row;
        if (row.alias == alias) {
            if (found != nullptr)
                return nullptr;
            found = &row;
        }
    }
    return found;
}

} // namespace Tolv::Msgs
