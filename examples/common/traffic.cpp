#include <common/traffic.h>

#include <algorithm>
#include <iomanip>
#include <ostream>
#include <string>

#include <tolv/msgs/catalogue.h>

namespace Example {

using namespace Tolv::Msgs;

namespace {

/// The namespace of the family's classes, as the library's catalogue has it.
std::string nameOf(unsigned short family) {
    auto const rows = catalogue();
    auto const row = std::find_if(rows.begin(), rows.end(), [family](auto const& candidate) {
        return Identifier(candidate.id).family() == family;
    });
    return row != rows.end() ? std::string(row->family) : "family " + std::to_string(family);
}

void print(std::ostream& stream, std::string const& name, Traffic::Count const& count) {
    stream << "  " << std::left << std::setw(26) << name << std::right << std::setw(10)
           << count.messages << std::setw(12) << count.bytes << '\n';
}

} // namespace

void Traffic::add(Identifier const& id, std::size_t bytes) {
    auto& count = families_[id.family()];
    ++count.messages;
    count.bytes += bytes;
}

Traffic::Count Traffic::all() const {
    Count sum;
    for (auto const& [family, count] : families_) {
        sum.messages += count.messages;
        sum.bytes += count.bytes;
    }
    return sum;
}

std::ostream& operator<<(std::ostream& stream, Traffic const& traffic) {
    stream << "  " << std::left << std::setw(26) << "family" << std::right << std::setw(10)
           << "messages" << std::setw(12) << "bytes" << '\n';
    for (auto const& [family, count] : traffic.families())
        print(stream, nameOf(family), count);
    print(stream, "all", traffic.all());
    return stream;
}

} // namespace Example
