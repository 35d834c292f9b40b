#include <algorithm>
#include <cmath>
#include <limits>

#include <tolv/core/metadata/conversion.h>

#include "number_text.h"
#include "tree_diff.h"
#include "tree_path.h"
#include "tree_text.h"

namespace Tolv::Tool {

using MetaData::Element;

namespace {

using Complex = std::complex<double>;

constexpr std::size_t mostShown = 60;

bool isNan(Complex value) { return std::isnan(value.real()) || std::isnan(value.imag()); }

/// Infinite if only one side is NaN.
double distance(Complex left, Complex right) {
    if (left == right || (isNan(left) && isNan(right)))
        return 0;
    auto const result = std::abs(left - right);
    return std::isnan(result) ? std::numeric_limits<double>::infinity() : result;
}

std::optional<double> numberOf(Element const& element) {
    double value = 0;
    if ((element.isSigned() || element.isUnsigned() || element.isFloating()) &&
        TryGetAs(element, value))
        return value;
    return {};
}

std::string lengthText(Samples const& samples) {
    return std::to_string(samples.size()) + (samples.isComplex ? " pairs" : "");
}

class Comparison {
public:
    Comparison(Tolerance const& tolerance, std::vector<std::string> const& ignored)
        : tolerance_(tolerance), ignored_(ignored) {}

    /// Descends immediately: comparing whole subtrees first would repeat each comparison at every
    /// level.
    void compare(Element const& left, Element const& right, TreePath const& path) {
        if (left.isObject() && right.isObject() && compareSamples(left, right, path))
            return;
        if (left.isObject() && right.isObject())
            compareObjects(left.object(), right.object(), path);
        else if ((left.isArray() || left.isObject()) && (right.isArray() || right.isObject()))
            compareArrays(left, right, path);
        else
            compareValues(left, right, path);
    }

    std::vector<Difference> take() { return std::move(all_); }

private:
    using Kind = Difference::Kind;

    void add(Kind kind, TreePath const& path, Element const* left, Element const* right) {
        all_.push_back({kind,
                        path.text(),
                        left != nullptr ? shortText(*left, mostShown) : std::string(),
                        right != nullptr ? shortText(*right, mostShown) : std::string(),
                        {},
                        {}});
    }

    [[nodiscard]] bool isIgnored(std::string_view key, TreePath const& path) const {
        return std::any_of(ignored_.begin(), ignored_.end(),
                           [&](auto const& one) { return one == key || path.is(one); });
    }

    void compareObjects(MetaData::Object const& left, MetaData::Object const& right,
                        TreePath const& path) {
        for (auto const& member : left) {
            TreePath const here(path, member.key());
            if (isIgnored(member.key(), here))
                continue;
            auto const* const other = right.find(member.key());
            if (other == nullptr)
                add(Kind::onlyLeft, here, &member.value, nullptr);
            else if (member.key() != "MessageID")
                compare(member.value, *other, here);
            else if (member.value != *other)
                add(Kind::changed, here, &member.value, other);
        }
        for (auto const& member : right) {
            TreePath const here(path, member.key());
            if (left.find(member.key()) == nullptr && !isIgnored(member.key(), here))
                add(Kind::onlyRight, here, nullptr, &member.value);
        }
    }

    /// Compares elements of which at least one is an array.
    void compareArrays(Element const& left, Element const& right, TreePath const& path) {
        if (compareSamples(left, right, path))
            return;
        if (!left.isArray() || !right.isArray()) {
            add(Kind::changed, path, &left, &right);
            return;
        }
        auto const& before = left.array();
        auto const& after = right.array();
        auto const both = std::min(before.size(), after.size());
        for (unsigned int i = 0; i < both; ++i)
            compare(before[i], after[i], {path, i});
        for (auto i = both; i < before.size(); ++i)
            add(Kind::onlyLeft, {path, i}, &before[i], nullptr);
        for (auto i = both; i < after.size(); ++i)
            add(Kind::onlyRight, {path, i}, nullptr, &after[i]);
    }

    /// Compares elements of which at most one is an array or an object.
    void compareValues(Element const& left, Element const& right, TreePath const& path) {
        if (left == right)
            return;
        auto const before = numberOf(left);
        auto const after = numberOf(right);
        if (before && after && tolerance_.covers(*before, *after) && !isExact())
            return;
        add(Kind::changed, path, &left, &right);
        if (before && after)
            all_.back().amount = distance(*before, *after);
    }

    /// Without a tolerance, converting integers to doubles must not hide a difference.
    [[nodiscard]] bool isExact() const {
        return tolerance_.absolute == 0 && tolerance_.relative == 0;
    }

    /// @return false if they are not both samples of the same kind
    bool compareSamples(Element const& left, Element const& right, TreePath const& path) {
        auto const before = samplesOf(left);
        auto const after = before ? samplesOf(right) : std::nullopt;
        if (!before || !after)
            return false;
        auto const both = std::min(before->size(), after->size());
        if (both > 0 &&
            (before->isComplex != after->isComplex || before->isBoolean != after->isBoolean))
            return false;
        if (auto const* const stated = left.find("len"))
            if (auto const* const other = right.find("len");
                other != nullptr && before->size() == after->size() && *stated != *other)
                add(Kind::changed, {path, "len"}, stated, other); // one is wrong
        if (before->size() != after->size())
            all_.push_back(
                {Kind::length, path.text(), lengthText(*before), lengthText(*after), {}, {}});
        SampleDifference found;
        for (std::size_t i = 0; i < both; ++i)
            if (!tolerance_.covers((*before)[i], (*after)[i]))
                addSample(found, i, distance((*before)[i], (*after)[i]));
        if (found.count > 0)
            all_.push_back({Kind::samples,
                            path.text(),
                            sampleText(*before, found.at),
                            sampleText(*after, found.at),
                            {},
                            std::move(found)});
        return true;
    }

    static void addSample(SampleDifference& found, std::size_t i, double amount) {
        auto const goesOn = found.count > 0 && found.last + 1 == i;
        found.last = i;
        ++found.count;
        if (!goesOn)
            ++found.runCount;
        if (goesOn && found.runCount <= SampleDifference::mostRuns)
            found.runs.back().second = i;
        else if (!goesOn && found.runCount <= SampleDifference::mostRuns)
            found.runs.emplace_back(i, i);
        if (amount > found.most) {
            found.most = amount;
            found.at = i;
        }
    }

    static std::string sampleText(Samples const& samples, std::size_t i) {
        auto const value = samples[i];
        if (samples.isBoolean)
            return samples.isComplex
                       ? numberText(std::complex<bool>(value.real() != 0, value.imag() != 0))
                       : numberText(value.real() != 0);
        return samples.isComplex ? numberText(value) : numberText(value.real());
    }

    Tolerance const& tolerance_;
    std::vector<std::string> const& ignored_;
    std::vector<Difference> all_;
};

} // namespace

bool Tolerance::covers(Complex left, Complex right) const {
    auto const apart = distance(left, right);
    return apart == 0 || apart <= absolute ||
           (std::isfinite(apart) && apart <= relative * std::max(std::abs(left), std::abs(right)));
}

std::vector<Difference> differencesOf(Element const& left, Element const& right,
                                      Tolerance const& tolerance,
                                      std::vector<std::string> const& ignored) {
    Comparison comparison(tolerance, ignored);
    comparison.compare(left, right, {});
    return comparison.take();
}

} // namespace Tolv::Tool
