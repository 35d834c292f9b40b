#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>

#include <tolv/core/msgs/identifier.h>

namespace Example {

/// Counts the messages that crossed a connection, and their bytes, by family.
class Traffic {
public:
    struct Count {
        std::size_t messages = 0;
        std::size_t bytes = 0; ///< of JSON text, with the line end
    };

    void add(Tolv::Msgs::Identifier const& id, std::size_t bytes);

    [[nodiscard]] Count all() const;
    /// By the number of the family.
    [[nodiscard]] std::map<unsigned short, Count> const& families() const { return families_; }

private:
    std::map<unsigned short, Count> families_;
};

/// Prints a table with one line a family and one for the sum.
std::ostream& operator<<(std::ostream& stream, Traffic const& traffic);

} // namespace Example
