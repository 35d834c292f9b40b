#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>

#include <tolv/core/exceptions.h>
#include <tolv/msgs/structs/triggers.h>

namespace Tolv::Msgs::Structs {

namespace {

/// The words of an enumeration with consecutive values, starting with `First`.
template <class E, int First, std::size_t Count>
class DenseWords {
public:
    constexpr explicit DenseWords(char const* const (&words)[Count]) {
        std::copy(words, words + Count, words_);
    }

    /// The word, which is a string literal, or null.
    [[nodiscard]] constexpr char const* word(E value) const noexcept {
        auto const number = static_cast<int>(value);
        bool const isListed = number >= First && number < First + static_cast<int>(Count);
        return isListed ? words_[number - First] : nullptr;
    }

    [[nodiscard]] constexpr std::optional<E> value(std::string_view word) const noexcept {
        auto const found = std::find(std::begin(words_), std::end(words_), word);
        if (found == std::end(words_))
            return std::nullopt;
        return static_cast<E>(First + static_cast<int>(found - std::begin(words_)));
    }

private:
    char const* words_[Count]{};
};

template <class E, int First = 0, std::size_t Count>
constexpr auto denseWords(char const* const (&words)[Count]) {
    return DenseWords<E, First, Count>(words);
}

constexpr auto sources = denseWords<TriggerSources>(
    {"none",    "logicHigh", "logicLow", "trig0",  "trig1",  "trig2",  "trig3",
     "trig4",   "trig5",     "trig6",    "trig7",  "trig8",  "trig9",  "trig10",
     "trig11",  "strig1",    "strig2",   "strig3", "strig4", "strig5", "tstrig",
     "swtrig1", "swtrig2",   "exttrig",  "gps1pps"});

constexpr auto outputs = denseWords<TriggerOutputs, 1>(
    {"trig0", "trig1", "trig2", "trig3", "trig4", "trig5", "trig6", "trig7", "trig8", "trig9",
     "trig10", "trig11", "strig1", "strig2", "strig3", "strig4", "strig5", "exttrig"});

constexpr auto muxInputs =
    denseWords<SyncMuxInput>({"msosync", "msisync", "refclock", "synctrigin", "ground"});

constexpr auto dividers = denseWords<RefClockDivider>({"/10", "/100", "/1000", "/100_000_000"});

constexpr auto polarities = denseWords<PolaritySelect>({"normal", "invert"});

// Checking the last value of each table detects a missing or extra word.
static_assert(std::string_view(sources.word(TriggerSources::gps1pps)) == "gps1pps");
static_assert(std::string_view(outputs.word(TriggerOutputs::exttrig)) == "exttrig");
static_assert(std::string_view(muxInputs.word(SyncMuxInput::ground)) == "ground");

template <class Words, class E>
std::string_view orEmpty(Words const& words, E value) noexcept {
    auto const* const word = words.word(value);
    return word != nullptr ? std::string_view(word) : std::string_view();
}

/// @param what names the selector in the text of the exception
template <class Words, class E>
char const* requireWord(Words const& words, E value, char const* what) {
    if (auto const* const word = words.word(value); word != nullptr)
        return word;
    throw Exception::InvalidParameter(std::string("invalid ") + what);
}

template <class Words>
auto requireValue(Words const& words, std::string_view word, char const* what) {
    if (auto const value = words.value(word); value.has_value())
        return *value;
    throw Exception::InvalidParameter(std::string("invalid ") + what + ": " + std::string(word));
}

} // namespace

std::string mapTriggerSource(TriggerSources source) {
    auto const* const word = sources.word(source);
    return word != nullptr ? word : "none";
}

TriggerSources mapTriggerSource(std::string_view word) noexcept {
    return sources.value(word).value_or(TriggerSources::none);
}

std::string mapTriggerOutput(TriggerOutputs output) {
    auto const* const word = outputs.word(output);
    return word != nullptr ? word : "unknown";
}

TriggerOutputs mapTriggerOutput(std::string_view word) noexcept {
    return outputs.value(word).value_or(TriggerOutputs::unknown);
}

char const* mapSyncMuxInput(SyncMuxInput input) {
    return requireWord(muxInputs, input, "sync mux input");
}

SyncMuxInput mapSyncMuxInput(std::string_view word) {
    return requireValue(muxInputs, word, "sync mux input");
}

char const* mapRefClockDivider(RefClockDivider divider) {
    return requireWord(dividers, divider, "ref clock divider");
}

RefClockDivider mapRefClockDivider(std::string_view word) {
    return requireValue(dividers, word, "ref clock divider");
}

char const* mapPolaritySelect(PolaritySelect polarity) {
    return requireWord(polarities, polarity, "polarity select");
}

PolaritySelect mapPolaritySelect(std::string_view word) {
    return requireValue(polarities, word, "polarity select");
}

std::string_view wordOf(TriggerSources source) noexcept { return orEmpty(sources, source); }
std::string_view wordOf(TriggerOutputs output) noexcept { return orEmpty(outputs, output); }
std::string_view wordOf(SyncMuxInput input) noexcept { return orEmpty(muxInputs, input); }
std::string_view wordOf(RefClockDivider divider) noexcept { return orEmpty(dividers, divider); }
std::string_view wordOf(PolaritySelect polarity) noexcept { return orEmpty(polarities, polarity); }

} // namespace Tolv::Msgs::Structs
