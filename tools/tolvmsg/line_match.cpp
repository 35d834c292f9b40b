#include <algorithm>
#include <array>
#include <optional>
#include <unordered_map>

#include "line_match.h"

namespace Tolv::Tool {

namespace {

using Pair = std::pair<std::size_t, std::size_t>;
using Keys = std::vector<LineKey>;

/// The longest ascending sequence of pairs of lines that occur exactly once on both sides.
std::vector<Pair> anchorsOf(Keys const& left, Keys const& right) {
    struct Places {
        std::array<std::size_t, 2> count{};
        std::array<std::size_t, 2> place{};
    };
    std::unordered_map<std::uint32_t, Places> contents;
    for (auto const* keys : {&left, &right}) {
        std::size_t const side = keys == &right ? 1 : 0;
        for (std::size_t i = 0; i < keys->size(); ++i) {
            auto& places = contents[(*keys)[i].content];
            ++places.count[side];
            places.place[side] = i;
        }
    }
    constexpr auto none = static_cast<std::size_t>(-1);
    std::vector<Pair> pairs; // by ascending left position
    for (std::size_t i = 0; i < left.size(); ++i)
        if (auto const& one = contents[left[i].content]; one.count[0] == 1 && one.count[1] == 1)
            pairs.emplace_back(i, one.place[1]);

    std::vector<std::size_t> ends; // the pair that ends the best sequence of each length
    std::vector<std::size_t> before(pairs.size(), none);
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        auto const at = std::lower_bound(
            ends.begin(), ends.end(), pairs[i].second,
            [&](std::size_t end, std::size_t place) { return pairs[end].second < place; });
        if (at != ends.begin())
            before[i] = *(at - 1);
        if (at == ends.end())
            ends.push_back(i);
        else
            *at = i;
    }
    std::vector<Pair> run;
    for (auto i = ends.empty() ? none : ends.back(); i != none; i = before[i])
        run.push_back(pairs[i]);
    std::reverse(run.begin(), run.end());
    return run;
}

class Matcher {
public:
    Matcher(Keys const& left, Keys const& right) : left_(left), right_(right) {}

    std::vector<Pair> run() {
        Pair from{0, 0};
        for (auto const& anchor : anchorsOf(left_, right_)) {
            between(from, anchor);
            pairs_.push_back(anchor);
            from = {anchor.first + 1, anchor.second + 1};
        }
        between(from, {left_.size(), right_.size()});
        return std::move(pairs_);
    }

private:
    static constexpr std::size_t window = 1024;
    static constexpr unsigned int equalWorth = 3; ///< more than two pairs of the same kind
    static constexpr unsigned int kindWorth = 1;

    [[nodiscard]] unsigned int worth(std::size_t i, std::size_t j) const {
        if (left_[i].content == right_[j].content)
            return equalWorth;
        return left_[i].kind != 0 && left_[i].kind == right_[j].kind ? kindWorth : 0;
    }

    void between(Pair from, Pair to) {
        while (from.first < to.first && from.second < to.second) {
            if (worth(from.first, from.second) == equalWorth)
                pairs_.emplace_back(from.first++, from.second++);
            else
                from = withinWindow(from, to);
        }
    }

    /// Pairs the next lines. @return the position to continue at
    Pair withinWindow(Pair from, Pair to) {
        auto const rows = std::min(window, to.first - from.first);
        auto const columns = std::min(window, to.second - from.second);
        // The value of the best pairing from each position to the end of the window.
        best_.assign((rows + 1) * (columns + 1), 0);
        auto const best = [&](std::size_t i, std::size_t j) -> std::uint16_t& {
            return best_[i * (columns + 1) + j];
        };
        for (auto i = rows; i-- > 0;) {
            for (auto j = columns; j-- > 0;) {
                auto const value = worth(from.first + i, from.second + j);
                auto const paired = value > 0 ? value + best(i + 1, j + 1) : 0;
                best(i, j) = static_cast<std::uint16_t>(
                    std::max<unsigned int>({paired, best(i + 1, j), best(i, j + 1)}));
            }
        }
        auto const isLast = from.first + rows == to.first && from.second + columns == to.second;
        auto const enough =
            isLast ? window : window / 2; // later lines may allow a better pairing of the rest
        std::size_t i = 0;
        std::size_t j = 0;
        while (i < rows && j < columns && i < enough && j < enough) {
            auto const value = worth(from.first + i, from.second + j);
            if (value > 0 && best(i, j) == value + best(i + 1, j + 1))
                pairs_.emplace_back(from.first + i++, from.second + j++);
            else if (best(i, j) == best(i + 1, j))
                ++i;
            else
                ++j;
        }
        return {from.first + i, from.second + j};
    }

    Keys const& left_;
    Keys const& right_;
    std::vector<std::uint16_t> best_;
    std::vector<Pair> pairs_;
};

} // namespace

std::vector<Pair> matchLines(Keys const& left, Keys const& right) {
    return Matcher(left, right).run();
}

} // namespace Tolv::Tool
