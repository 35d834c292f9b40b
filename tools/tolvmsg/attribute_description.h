#pragma once

#include <algorithm>
#include <complex>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include <tolv/msgs/attrs/enums.h>
#include <tolv/msgs/attrs/traces.h>

#include "attribute_view.h"
#include "number_text.h"
#include "sample_statistics.h"
#include "text.h"

namespace Tolv::Tool {

/// Describes an attribute's payload in words. Payloads and their metadata are distinguished by the
/// fields that they have. Fields that have been described are removed from the rest.
class AttributeDescription {
public:
    /// @param data the tree that the payload writes
    explicit AttributeDescription(MetaData::Element const& data) { reading_.rest = data; }

    template <class Payload>
    Reading of(Payload const& payload) && {
        std::remove_cvref_t<decltype(payload.metaData())> const none;
        auto const& about = payload.attributeMetaData.initialized() ? payload.metaData() : none;
        if (takeAbout(about.name))
            line("name", textOf(about.name()));
        if constexpr (requires { payload.trace; })
            addTrace(payload, about);
        else
            addValue(payload, about);
        if constexpr (requires { about.average; })
            addMeasured(about);
        else if constexpr (requires { about.minimum; })
            addRange(about);
        if constexpr (requires { about.maxLength; })
            addLength(about);
        if constexpr (requires { payload.enums; })
            addEntries(payload, about);
        auto const* const left = reading_.rest.find(aboutKey);
        if (left != nullptr && left->object().empty())
            reading_.rest.makeObject(0).erase(aboutKey);
        return std::move(reading_);
    }

private:
    using EnumVal = Msgs::Attrs::EnumVal;

    static constexpr char const* aboutKey = "AttributeMetaData";
    static constexpr std::size_t mostTextBytes = 72;
    static constexpr std::size_t mostUnitBytes = 40;
    static constexpr std::size_t mostListed = 8;   ///< numbers in one line
    static constexpr std::size_t mostEntries = 20; ///< entries of an enumeration, one per line

    void line(std::string label, std::string text) {
        reading_.lines.emplace_back(std::move(label), std::move(text));
    }
    void line(std::string label, std::vector<std::string> const& parts) {
        std::string text;
        for (auto const& part : parts)
            text.append(text.empty() ? "" : ", ").append(part);
        if (!parts.empty())
            line(std::move(label), std::move(text));
    }

    /// Whether the field of the payload is set. If so, removes it from the rest.
    template <class Field>
    bool take(Field const& field) {
        if (field.initialized())
            reading_.rest.makeObject(0).erase(field.key());
        return field.initialized();
    }
    /// The same for a field of the metadata.
    template <class Field>
    bool takeAbout(Field const& field) {
        if (field.initialized() && reading_.rest.find(aboutKey) != nullptr)
            reading_.rest[aboutKey].makeObject(0).erase(field.key());
        return field.initialized();
    }

    static std::string textOf(std::string const& value) { return quoted(value, mostTextBytes); }
    static std::string textOf(int value) { return numberText(value); }
    static std::string textOf(EnumVal const& entry) {
        return (entry.value.initialized() ? textOf(entry.value()) : "?") + ' ' +
               (entry.literal.initialized() ? textOf(entry.literal()) : "?");
    }
    static std::string textOf(std::vector<int> const& numbers) {
        return counted(numbers.size(), "number", "numbers") + (numbers.empty() ? "" : ": ") +
               listed(numbers);
    }

    template <class T>
    static std::string listed(std::vector<T> const& numbers) {
        std::string text;
        for (std::size_t i = 0; i < std::min(numbers.size(), mostListed); ++i)
            text.append(i > 0 ? ", " : "").append(numberText(T(numbers[i])));
        return text + (numbers.size() > mostListed ? ", ..." : "");
    }

    /// Takes unit and precision of numbers of type `T`. Precision applies to floating-point numbers
    /// only.
    template <class T, class About>
    void takeStyle(About const& about) {
        if constexpr (requires { about.precision; }) {
            if (takeAbout(about.currentBroadcastUnit))
                style_.unit = unquoted(about.currentBroadcastUnit(), mostUnitBytes);
            if constexpr (std::is_same_v<T, double> || std::is_same_v<T, std::complex<double>>) {
                auto const digits = about.precision.initialized() ? about.precision() : -1;
                if (digits >= 0 && digits <= NumberStyle::mostDigits && takeAbout(about.precision))
                    style_.digits = digits;
            }
        }
    }

    template <class Payload, class About>
    void addValue(Payload const& payload, About const& about) {
        takeStyle<std::remove_cvref_t<decltype(payload.value())>>(about);
        if (!take(payload.value))
            line("value", "not set");
        else if constexpr (requires { style_.quantity(payload.value()); })
            line("value", style_.quantity(payload.value()));
        else
            line("value", textOf(payload.value()));
    }

    template <class About>
    void addRange(About const& about) {
        auto const hasMinimum = takeAbout(about.minimum);
        auto const hasMaximum = takeAbout(about.maximum);
        std::vector<std::string> parts;
        if (hasMinimum && hasMaximum)
            parts.push_back(style_.withUnit(numberText(about.minimum()) + " to " +
                                            numberText(about.maximum())));
        else if (hasMinimum)
            parts.push_back("at least " + style_.withUnit(numberText(about.minimum())));
        else if (hasMaximum)
            parts.push_back("at most " + style_.withUnit(numberText(about.maximum())));
        if (takeAbout(about.step))
            parts.push_back("step " + numberText(about.step())); // the rest shows its unit
        line("limits", parts);
    }

    /// The minimum and maximum of a measurement are not limits.
    template <class About>
    void addMeasured(About const& about) {
        std::vector<std::string> parts;
        auto const add = [&](char const* label, auto const& field) {
            if (takeAbout(field))
                parts.push_back(label + style_.quantity(field()));
        };
        add("average ", about.average);
        add("minimum ", about.minimum);
        add("maximum ", about.maximum);
        if (takeAbout(about.percent))
            parts.push_back("percent " + numberText(about.percent()));
        line("measured", parts);
    }

    template <class About>
    void addLength(About const& about) {
        constexpr auto isText = requires { about.validCharacters; };
        std::vector<std::string> parts;
        if (takeAbout(about.maxLength))
            parts.push_back("at most " + counted(about.maxLength(), isText ? "byte" : "number",
                                                 isText ? "bytes" : "numbers"));
        if constexpr (isText)
            if (takeAbout(about.validCharacters))
                parts.push_back("must match " + textOf(about.validCharacters()));
        line("limits", parts);
    }

    template <class T>
    static bool isSame(T const& left, T const& right) {
        return left == right;
    }
    static bool isSame(EnumVal const& left, EnumVal const& right) {
        auto const isComplete = [](EnumVal const& entry) {
            return entry.value.initialized() && entry.literal.initialized();
        };
        return isComplete(left) && isComplete(right) && left == right;
    }

    template <class Payload, class About>
    void addEntries(Payload const& payload, About const& about) {
        if (!take(payload.enums))
            return;
        auto const& entries = payload.enums();
        std::vector<bool> flags;
        if (about.disabledList.initialized())
            flags = about.disabledList();
        if (flags.size() <= entries.size()) // surplus flags stay in the rest
            takeAbout(about.disabledList);
        flags.resize(entries.size());

        line("entries", std::to_string(entries.size()) + ", " +
                            std::to_string(std::count(flags.begin(), flags.end(), true)) +
                            " disabled");
        std::size_t hidden = 0;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            auto const isCurrent =
                payload.value.initialized() && isSame(entries[i], payload.value());
            if (i < mostEntries || isCurrent)
                line("", textOf(entries[i]) + (isCurrent ? "  current" : "") +
                             (flags[i] ? "  disabled" : ""));
            else
                ++hidden;
        }
        if (hidden > 0)
            line("", "... " + std::to_string(hidden) + " more");
    }

    template <class Payload, class About>
    void addTrace(Payload const& payload, About const& about) {
        takeStyle<typename std::remove_cvref_t<decltype(payload.trace())>::value_type>(about);
        if (take(payload.trace))
            addSamples(payload.trace());
        else
            line("count", "not set");
        if constexpr (requires { payload.segments; })
            if (take(payload.segments))
                addSegments(payload.segments());
    }

    template <class T>
    void addSamples(std::vector<T> const& samples) {
        line("count", counted(samples.size(), "sample", "samples"));
        if (samples.empty())
            return;
        line("first", style_.withUnit(listed(samples)));
        SampleStatistics const statistics(samples);
        if (statistics.numbers > 0) {
            auto const* const meaning = SampleStatistics::meaning<T>();
            line("minimum", style_.quantity(statistics.minimum) + meaning);
            line("maximum", style_.quantity(statistics.maximum) + meaning);
            line("mean", style_.computed(statistics.mean) + meaning);
        }
        if (auto const missing = samples.size() - statistics.numbers; missing > 0)
            line("NaN", counted(missing, "sample", "samples") + ", not counted in the statistics");
    }

    void addSegments(std::vector<Msgs::Attrs::TraceSegment> const& segments) {
        std::vector<std::string> parts;
        for (auto const& segment : segments) {
            if (parts.size() == mostListed) {
                parts.emplace_back("...");
                break;
            }
            parts.push_back(numberText(segment.length()) + " from " + numberText(segment.offset()));
        }
        line("segments", counted(segments.size(), "segment", "segments"));
        line("", parts);
    }

    Reading reading_;
    NumberStyle style_;
};

} // namespace Tolv::Tool
