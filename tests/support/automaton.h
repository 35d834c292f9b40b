#pragma once

#include <regex>

#include <tolv/msgs/attrs/detail/valid_characters.h>

#ifdef __GLIBCXX__
namespace Tolv::Testing {

// An explicit instantiation may name a private member.
template <auto Member>
struct Opened {
    friend auto automatonOf(std::regex const& expression) { return (expression.*Member).get(); }
};
auto automatonOf(std::regex const& expression);
template struct Opened<&std::regex::_M_automaton>;

/// What libstdc++ has built for `pattern`, counted in its own automaton.
/// @throws std::regex_error when `pattern` is no expression
inline Msgs::Attrs::PatternSize builtFor(std::string const& pattern) {
    std::regex const expression(pattern, std::regex::extended | std::regex::nosubs);
    auto const& automaton = *automatonOf(expression);
    std::vector<bool> passed(automaton.size());
    std::vector<long> next{automaton._M_start()};
    Msgs::Attrs::PatternSize size{0, automaton.size()};
    while (!next.empty()) {
        auto const at = next.back();
        next.pop_back();
        if (at < 0 || passed[static_cast<std::size_t>(at)])
            continue;
        passed[static_cast<std::size_t>(at)] = true;
        auto const& state = automaton[static_cast<std::size_t>(at)];
        size.states += state._M_opcode() != std::__detail::_S_opcode_dummy ? 1 : 0;
        next.push_back(state._M_next);
        if (state._M_has_alt())
            next.push_back(state._M_alt);
    }
    return size;
}

} // namespace Tolv::Testing
#endif
