#pragma once

#include <chrono>
#include <ratio>
#include <string>
#include <string_view>

#include <tolv/msgs/record.h>
#include <tolv/msgs/structs/enum_words.h>

/// @file
/// Routing of trigger lines, shape of trigger pulses, and selectors of the synchronization inputs.
///
/// A trigger record holds words, which may be any string; its typed accessors convert on each call.
/// Words are compared exactly. All functions are thread-safe.
namespace Tolv::Msgs::Structs {

/// The source of a trigger.
enum class TriggerSources : int {
    none = 0,
    logicHigh = 1,
    logicLow = 2,
    trig0 = 3, ///< trig: the trigger lines of the backplane
    trig1 = 4,
    trig2 = 5,
    trig3 = 6,
    trig4 = 7,
    trig5 = 8,
    trig6 = 9,
    trig7 = 10,
    trig8 = 11,
    trig9 = 12,
    trig10 = 13,
    trig11 = 14,
    strig1 = 15, ///< strig: the star triggers, one per slot
    strig2 = 16,
    strig3 = 17,
    strig4 = 18,
    strig5 = 19,
    tstrig = 20,  ///< the time stamp trigger
    swtrig1 = 21, ///< swtrig: fired by software
    swtrig2 = 22,
    exttrig = 23, ///< the external connector
    gps1pps = 24  ///< one pulse per second, from the GPS receiver
};

/// The destination of a trigger. The words are those of `TriggerSources`; the numbers differ.
enum class TriggerOutputs : int {
    unknown = 0, ///< represents every word that is not an output
    trig0 = 1,
    trig1 = 2,
    trig2 = 3,
    trig3 = 4,
    trig4 = 5,
    trig5 = 6,
    trig6 = 7,
    trig7 = 8,
    trig8 = 9,
    trig9 = 10,
    trig10 = 11,
    trig11 = 12,
    strig1 = 13,
    strig2 = 14,
    strig3 = 15,
    strig4 = 16,
    strig5 = 17,
    exttrig = 18
};

/// The input of the synchronization multiplexer.
enum class SyncMuxInput : int {
    msosync = 0,
    msisync = 1,
    refclock = 2,
    synctrigin = 3,
    ground = 4
};

/// The divider of the reference clock.
enum class RefClockDivider : int {
    by10 = 0,       ///< "/10"
    by100 = 1,      ///< "/100"
    by1000 = 2,     ///< "/1000"
    by100000000 = 3 ///< "/100_000_000"
};

/// Whether a synchronization input is inverted.
enum class PolaritySelect : int { normal = 0, invert = 1 };

/// The word of a source; "none" for a value without one.
TOLV_MESSAGES_API std::string mapTriggerSource(TriggerSources source);
/// The source named by a word; `none` if the word is not a source.
TOLV_MESSAGES_API TriggerSources mapTriggerSource(std::string_view word) noexcept;

/// The word of an output; "unknown" for a value without one.
TOLV_MESSAGES_API std::string mapTriggerOutput(TriggerOutputs output);
/// The output named by a word; `unknown` if the word is not an output.
TOLV_MESSAGES_API TriggerOutputs mapTriggerOutput(std::string_view word) noexcept;

// The selectors reject unknown values and words.

/// @throws Exception::InvalidParameter for a value without a word.
TOLV_MESSAGES_API char const* mapSyncMuxInput(SyncMuxInput input);
/// @throws Exception::InvalidParameter, with the word in its text, if the word is not an input.
TOLV_MESSAGES_API SyncMuxInput mapSyncMuxInput(std::string_view word);

/// @throws Exception::InvalidParameter for a value without a word.
TOLV_MESSAGES_API char const* mapRefClockDivider(RefClockDivider divider);
/// @throws Exception::InvalidParameter, with the word in its text, if the word is not a divider.
TOLV_MESSAGES_API RefClockDivider mapRefClockDivider(std::string_view word);

/// @throws Exception::InvalidParameter for a value without a word.
TOLV_MESSAGES_API char const* mapPolaritySelect(PolaritySelect polarity);
/// @throws Exception::InvalidParameter, with the word in its text, if the word is not a polarity.
TOLV_MESSAGES_API PolaritySelect mapPolaritySelect(std::string_view word);

TOLV_MESSAGES_API std::string_view wordOf(TriggerSources source) noexcept;
TOLV_MESSAGES_API std::string_view wordOf(TriggerOutputs output) noexcept;
TOLV_MESSAGES_API std::string_view wordOf(SyncMuxInput input) noexcept;
TOLV_MESSAGES_API std::string_view wordOf(RefClockDivider divider) noexcept;
TOLV_MESSAGES_API std::string_view wordOf(PolaritySelect polarity) noexcept;

/// A time in milliseconds, including fractions. Other units convert by `std::chrono`.
using TriggerDuration = std::chrono::duration<double, std::milli>;

/// Connects a trigger source to an output. Here and in the pulse records, a getter throws
/// Exception::InvalidOperation if its field is uninitialized.
class TOLV_MESSAGES_API TriggerRoute : public MirroredObject {
public:
    Reflector<std::string> output{
        this,
        field<"output",
              Doc{"the trigger output that the source drives; unlisted words count as \"unknown\""},
              OneOf<TriggerOutputs>{}, Example{"trig0"}>,
        Required, "unknown"};
    Reflector<std::string> source{
        this,
        field<"source",
              Doc{"the trigger source that drives the output; unlisted words count as \"none\""},
              OneOf<TriggerSources>{}, Example{"exttrig"}>,
        Required, "none"};

    /// "output" as an enumerator; `unknown` for any other word.
    [[nodiscard]] TriggerOutputs getOutput() const { return mapTriggerOutput(output()); }
    /// "source" as an enumerator; `none` for any other word.
    [[nodiscard]] TriggerSources getSource() const { return mapTriggerSource(source()); }
    /// Sets "output".
    void setOutput(TriggerOutputs value) { output = mapTriggerOutput(value); }
    /// Sets "source".
    void setSource(TriggerSources value) { source = mapTriggerSource(value); }
};

/// The delay of a trigger pulse after its source. The offset may be negative.
class TOLV_MESSAGES_API TriggerPulseOffset : public MirroredObject {
public:
    Reflector<std::string> source{
        this,
        field<"source",
              Doc{"the trigger source whose pulse is shifted; unlisted words count as \"none\""},
              OneOf<TriggerSources>{}, Example{"exttrig"}>,
        Required, "none"};
    Reflector<double> offset{
        this,
        field<"offset", Unit{"ms"},
              Doc{"the delay from the trigger source to the pulse, which may be negative"},
              Example{"1.5"}>,
        Required, 0.0};

    /// "source" as an enumerator; `none` for any other word.
    [[nodiscard]] TriggerSources getSource() const { return mapTriggerSource(source()); }
    /// Sets "source".
    void setSource(TriggerSources value) { source = mapTriggerSource(value); }
    /// "offset" with its unit.
    [[nodiscard]] TriggerDuration getOffset() const { return TriggerDuration(offset()); }
    /// Sets "offset", from any unit of time.
    void setOffset(TriggerDuration const& value) { offset = value.count(); }
};

/// The duration of a trigger pulse.
class TOLV_MESSAGES_API TriggerPulseWidth : public MirroredObject {
public:
    Reflector<std::string> source{
        this,
        field<"source",
              Doc{"the trigger source whose pulse has the width; unlisted words count as \"none\""},
              OneOf<TriggerSources>{}, Example{"exttrig"}>,
        Required, "none"};
    Reflector<double> width{
        this, field<"width", Unit{"ms"}, Doc{"the duration of the trigger pulse"}, Example{"0.25"}>,
        Required, 0.0};

    /// "source" as an enumerator; `none` for any other word.
    [[nodiscard]] TriggerSources getSource() const { return mapTriggerSource(source()); }
    /// Sets "source".
    void setSource(TriggerSources value) { source = mapTriggerSource(value); }
    /// "width" with its unit.
    [[nodiscard]] TriggerDuration getWidth() const { return TriggerDuration(width()); }
    /// Sets "width", from any unit of time.
    void setWidth(TriggerDuration const& value) { width = value.count(); }
};

} // namespace Tolv::Msgs::Structs
