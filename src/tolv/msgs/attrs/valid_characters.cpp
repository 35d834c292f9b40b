#include <tolv/msgs/attrs/detail/valid_characters.h>

#include <algorithm>
#include <cstddef>
#include <regex>
#include <string_view>
#include <utility>
#include <vector>

namespace Tolv::Msgs::Attrs {

namespace {

namespace Syntax = std::regex_constants;

// Captures are not needed; without them, libstdc++ copies less, and libc++ does not recurse.
// libstdc++'s default matcher recurses once per character of the text and may take exponential
// time; its polynomial matcher does neither.
constexpr auto syntax = Syntax::extended | Syntax::nosubs
#ifdef __GLIBCXX__
                        | Syntax::__polynomial
#endif
    ;

/// Besides its states, an automaton temporarily has placeholders, which the compiler inserts
/// between states and bypasses at the end, and the originals of repeated terms. Most patterns have
/// no more of these than states. Bypassing long chains of placeholders takes quadratic time.
constexpr std::size_t builtForEachState = 4;

/// Counts what libstdc++ builds for a pattern, without building it. The counter follows the grammar
/// only as far as needed to find the operands of repetitions; reporting syntax errors is left to
/// the compiler.
class Counter {
public:
    Counter(std::string_view pattern, Limits const& limits) : rest_(pattern), limits_(limits) {
        put({3, 4}); // begin, end, acceptance; a placeholder after the last alternative
        while (!rest_.empty()) {
            term(take());
            if (size_.states > limits.patternStates ||
                size_.built > builtForEachState * limits.patternStates ||
                enclosing_.size() > limits.patternNesting)
                throw std::regex_error(Syntax::error_complexity);
        }
    }

    [[nodiscard]] PatternSize size() const noexcept { return size_; }

private:
    /// A piece of the automaton, as copied by a repetition.
    struct Piece {
        std::size_t states = 0;
        std::size_t all = 0; ///< including placeholders
    };

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
            enclosing_.push_back(group_);
            group_ = last_ = {};
            put({0, 2}); // at its beginning, and after its last alternative
            break;
        case ')': // the whole group is now one term
            if (!enclosing_.empty()) {
                last_ = group_;
                group_ = enclosing_.back();
                add(group_, last_);
                enclosing_.pop_back();
            }
            break;
        case '|':
            last_ = {};
            put({1, 3}); // the choice; its end, and one after the preceding alternative
            break;
        case '*':
        case '+':
            grow({1, 1});
            break;
        case '?':
            grow({1, 2});
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
        last_ = {};
        grow({1, 1});
    }

    static void add(Piece& to, Piece const& piece) noexcept {
        to.states += piece.states;
        to.all += piece.all;
    }

    /// Adds to the open group.
    void put(Piece const& piece) noexcept {
        add(group_, piece);
        size_.states += piece.states;
        size_.built += piece.all;
    }

    /// Adds to the term that a following quantifier would repeat.
    void grow(Piece const& piece) noexcept {
        add(last_, piece);
        put(piece);
    }

    /// "{3}", "{3,}" or "{3,5}": copies replace the term; each optional copy has an additional
    /// state that can skip it.
    ///
    /// The compiler makes as many copies as the number says even of a term without states, as in
    /// "(){999999999}".
    void repeat() {
        auto const least = number();
        auto most = least;
        auto const isRange = takeIf(',');
        auto const isOpen = isRange && rest_.starts_with('}');
        if (isRange)
            most = isOpen ? least + 1 : std::max(least, number());
        takeIf('}');
        if (most > limits_.patternStates)
            throw std::regex_error(Syntax::error_complexity);
        auto const optional = most - least;
        auto const original = std::exchange(last_, {});
        group_.states -= original.states;
        group_.all -= original.all;
        size_.states -= original.states;
        grow({original.states * most + optional,
              original.all * most + optional + (isOpen ? 1U : 2U)});
    }

    /// A repetition count. Counts above the limit are reduced to the limit plus one.
    std::size_t number() noexcept {
        std::size_t value = 0;
        while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9')
            value = std::min(value * 10 + static_cast<std::size_t>(take() - '0'),
                             limits_.patternStates + 1);
        return value;
    }

    /// A leading "]" is a member, and so is one inside "[:", "[." or "[=".
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
    std::vector<Piece> enclosing_; ///< the enclosing group of each open group
    Piece group_;                  ///< the open group, or the whole pattern
    Piece last_;                   ///< the last term of the group
    PatternSize size_;
};

} // namespace

PatternSize sizeOf(std::string_view pattern, Limits const& limits) {
    return Counter(pattern, limits).size();
}

bool matchesWhole(std::string const& text, std::string const& pattern, Limits const& limits) {
    if (pattern.size() > limits.patternBytes)
        throw std::regex_error(Syntax::error_space);
    auto const states = sizeOf(pattern, limits).states;
    std::regex const expression(pattern, syntax); // reports an invalid expression first
    if (text.size() > limits.matchSteps / states)
        throw std::regex_error(Syntax::error_complexity);
    return std::regex_match(text, expression);
}

} // namespace Tolv::Msgs::Attrs
