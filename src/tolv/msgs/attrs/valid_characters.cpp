#include <tolv/msgs/attrs/detail/valid_characters.h>

#include <algorithm>
#include <cstddef>
#include <regex>
#include <string_view>
#include <vector>

namespace Tolv::Msgs::Attrs {

namespace {

namespace Syntax = std::regex_constants;

// Without captures, which nobody asks for, libstdc++ copies less, and libc++ does not recurse.
// libstdc++'s default matcher recurses once for each character of the text and may take exponential
// time; its other one does neither.
constexpr auto syntax = Syntax::extended | Syntax::nosubs
#ifdef __GLIBCXX__
                        | Syntax::__polynomial
#endif
    ;

/// Counts the states of a pattern without building them. It follows the grammar only as far as it
/// must to see what a repetition repeats: what is wrong with a pattern, the compiler says.
class StateCount {
public:
    StateCount(std::string_view pattern, Limits const& limits) : rest_(pattern), limits_(limits) {
        while (!rest_.empty()) {
            term(take());
            if (states_ > limits.patternStates || open_.size() > limits.patternNesting)
                throw std::regex_error(Syntax::error_complexity);
        }
    }

    [[nodiscard]] std::size_t states() const noexcept { return states_; }

private:
    char take() noexcept {
        auto const first = rest_.front();
        rest_.remove_prefix(1);
        return first;
    }

    bool takeIf(char wanted) noexcept {
        auto const there = rest_.starts_with(wanted);
        rest_.remove_prefix(there ? 1 : 0);
        return there;
    }

    void term(char first) {
        switch (first) {
        case '(':
            open_.push_back(states_);
            last_ = 0;
            break;
        case ')':
            // All that was added since the group was opened is one term now.
            last_ = 0;
            if (!open_.empty()) {
                last_ = states_ - open_.back();
                open_.pop_back();
            }
            grow(1);
            break;
        case '|':
            last_ = 0;
            states_ += 2;
            break;
        case '*':
        case '+':
        case '?':
            grow(2);
            break;
        case '{':
            repeat();
            break;
        case '[':
            skipBracket();
            character();
            break;
        case '\\':
            rest_.remove_prefix(rest_.empty() ? 0 : 1);
            character();
            break;
        default:
            character();
        }
    }

    void character() noexcept {
        last_ = 0;
        grow(1);
    }

    /// The term that a quantifier behind it would repeat becomes larger.
    void grow(std::size_t states) noexcept {
        last_ += states;
        states_ += states;
    }

    /// "{3}", "{3,}" or "{3,5}": copies of the term.
    void repeat() noexcept {
        auto copies = number();
        if (takeIf(','))
            copies = std::max(copies + 1, number());
        takeIf('}');
        grow(last_ * (std::max<std::size_t>(copies, 1) - 1) + copies + 2);
    }

    /// A count of repetitions; one beyond all bounds is as good as the bound.
    std::size_t number() noexcept {
        std::size_t value = 0;
        while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9')
            value = std::min(value * 10 + static_cast<std::size_t>(take() - '0'),
                             limits_.patternStates + 1);
        return value;
    }

    /// A "]" that stands first is a member, and so is one inside of "[:", "[." or "[=".
    void skipBracket() noexcept {
        takeIf('^');
        takeIf(']');
        while (!rest_.empty()) {
            auto const member = take();
            if (member == ']')
                return;
            if (member == '[' && !rest_.empty() &&
                std::string_view(":.=").find(rest_.front()) != rest_.npos) {
                auto const kind = take();
                rest_.remove_prefix(std::min(rest_.find(kind), rest_.size()));
                takeIf(kind);
                takeIf(']');
            }
        }
    }

    std::string_view rest_;
    Limits const& limits_;
    std::vector<std::size_t> open_; ///< for each group that is open, the states before it
    std::size_t states_ = 0;
    std::size_t last_ = 0; ///< those of the newest term
};

} // namespace

bool matchesWhole(std::string const& text, std::string const& pattern, Limits const& limits) {
    if (pattern.size() > limits.patternBytes)
        throw std::regex_error(Syntax::error_space);
    auto const states = std::max<std::size_t>(StateCount(pattern, limits).states(), 1);
    std::regex const expression(pattern, syntax); // says first what is no expression
    if (text.size() > limits.matchSteps / states)
        throw std::regex_error(Syntax::error_complexity);
    return std::regex_match(text, expression);
}

} // namespace Tolv::Msgs::Attrs
