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

// Without captures, which nobody asks for, libstdc++ copies less, and libc++ does not recurse.
// libstdc++'s default matcher recurses once for each character of the text and may take exponential
// time; its other one does neither.
constexpr auto syntax = Syntax::extended | Syntax::nosubs
#ifdef __GLIBCXX__
                        | Syntax::__polynomial
#endif
    ;

/// Beside its states an automaton has placeholders, which the compiler puts between them and takes
/// out of their way at the end, and the originals of what it repeated. Most patterns have no more
/// of them than states. Taking out long chains of them takes quadratic time.
constexpr std::size_t builtForEachState = 4;

/// Counts what libstdc++ builds for a pattern without building it. It follows the grammar only as
/// far as it must to see what a repetition repeats: what is wrong with a pattern, the compiler
/// says.
class Counter {
public:
    Counter(std::string_view pattern, Limits const& limits) : rest_(pattern), limits_(limits) {
        put({3, 4}); // begin, end, acceptance; a placeholder behind the last alternative
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
    /// A piece of the automaton, as a repetition copies it.
    struct Piece {
        std::size_t states = 0;
        std::size_t all = 0; ///< the placeholders, too
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
            put({0, 2}); // at its begin, and behind its last alternative
            break;
        case ')': // all of the group is one term now
            if (!enclosing_.empty()) {
                last_ = group_;
                group_ = enclosing_.back();
                add(group_, last_);
                enclosing_.pop_back();
            }
            break;
        case '|':
            last_ = {};
            put({1, 3}); // the choice; its end, and behind the alternative before
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

    /// The group that is open becomes larger.
    void put(Piece const& piece) noexcept {
        add(group_, piece);
        size_.states += piece.states;
        size_.built += piece.all;
    }

    /// The term that a quantifier behind it would repeat becomes larger.
    void grow(Piece const& piece) noexcept {
        add(last_, piece);
        put(piece);
    }

    /// "{3}", "{3,}" or "{3,5}": copies of the term stand in its place, each optional one behind a
    /// state that may leave it out.
    void repeat() noexcept {
        auto const least = number();
        auto most = least;
        auto const isRange = takeIf(',');
        auto const isOpen = isRange && rest_.starts_with('}');
        if (isRange)
            most = isOpen ? least + 1 : std::max(least, number());
        takeIf('}');
        auto const optional = most - least;
        auto const original = std::exchange(last_, {});
        group_.states -= original.states;
        group_.all -= original.all;
        size_.states -= original.states;
        grow({original.states * most + optional,
              original.all * most + optional + (isOpen ? 1U : 2U)});
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
    std::vector<Piece> enclosing_; ///< for each open group, what was in the one around it
    Piece group_;                  ///< the group that is open now, or the whole pattern
    Piece last_;                   ///< the newest term in it
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
    std::regex const expression(pattern, syntax); // says first what is no expression
    if (text.size() > limits.matchSteps / states)
        throw std::regex_error(Syntax::error_complexity);
    return std::regex_match(text, expression);
}

} // namespace Tolv::Msgs::Attrs
