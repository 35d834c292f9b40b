#include <attributes/analyzer.h>

namespace Example {

using namespace Tolv::Msgs;

namespace {

/// Finds the attribute of class `M` in a list of attributes of any classes.
template <class M>
M const& only(Attrs::ArrayDataPolymorphic<Attrs::AttrMessage> const& list) {
    for (auto const& message : list.attributes)
        if (auto const* const found = dynamic_cast<M const*>(message.get()))
            return *found;
    throw CheckFailed("the list holds no attribute of the class asked for");
}

std::string describe(Attrs::EnumData const& attribute) {
    std::string text =
        attribute.metaData().name() + " = " + attribute.value().literal() + ", out of:";
    auto const& disabled = attribute.metaData().disabledList();
    for (std::size_t i = 0; i < attribute.enums().size(); ++i)
        text += " " + attribute.enums()[i].literal() + (disabled.at(i) ? " (disabled)," : ",");
    text.back() = ';';
    return text + (attribute.validate() ? " valid" : " not valid");
}

void readInfos(Dialogue& dialogue) {
    auto const all =
        dialogue.ask<Attrs::AttrInfoListMessage>(Attrs::AttrInfoRequestMessage({}, {"instrument"}));
    auto const& infos = all->payload().attributes();
    check("number of attributes", infos.size(), 6U);
    std::string text;
    for (auto const& info : infos)
        text += info.payload().scaName() + " (" + info.payload().scaType() + ") ";
    check("the attributes", text,
          "frequency (double) label (string) mode (enumeration) span (double) "
          "temperature (Unknown) trace (Unknown) ");
    dialogue.note("only some types have a word; the id tells them all: temperature is (4, 0, 0, " +
                  std::to_string(infos[4].payload().type().type()) + ")");
}

void readAll(Dialogue& dialogue) {
    auto const answer =
        dialogue.ask<Attrs::AttrListMessage>(Attrs::AttrListRequestMessage({}, {"instrument"}));
    auto const& list = answer->payload();
    check("number of attributes", list.attributes.size(), 6U);

    auto frequency = only<Attrs::DoubleMessage>(list).payload();
    check("frequency", frequency.value(), 1e9);
    check("the frequency is valid", frequency.validate(), true);
    // A client that has read an attribute has its limits too, and can tell what will be refused.
    frequency.value = 7.5e9;
    check("the higher frequency is valid", frequency.validate(), false);
    check("why not", frequency.explainInvalid(), "value 7.5e9 is above Maximum 6e9");
    dialogue.note("frequency cannot be set to 7.5e9: " + frequency.explainInvalid());

    auto const& mode = only<Attrs::EnumMessage>(list).payload();
    check("mode", describe(mode),
          "mode = spectrum, out of: spectrum, zero span, vector (disabled); valid");
    dialogue.note(describe(mode));

    auto const& trace = only<Attrs::SegmentedComplexTraceMessage>(list).payload();
    check("the samples are those of the instrument", trace.trace() == simulatedSamples());
    check("number of segments", trace.segments().size(), 2U);
    check("begin of the second segment", trace.segments()[1].offset(), 60'000U);
    dialogue.note("the trace has " + std::to_string(trace.trace().size()) + " samples in " +
                  std::to_string(trace.segments().size()) + " segments");
}

void readPartOfTrace(Dialogue& dialogue) {
    Attrs::ArrayWithRangeRequestData range;
    range.setOffset(59'990);
    range.setNumber(16);
    auto const answer = dialogue.ask<Attrs::AttrRangeMessage>(
        Attrs::AttrRangeRequestMessage(range, {}, {"instrument", "trace"}));
    check("begin of the part", answer->payload().offset(), 59'990U);

    auto const& part = only<Attrs::SegmentedComplexTraceMessage>(answer->payload()).payload();
    auto const all = simulatedSamples();
    check("the part is that of the whole",
          part.trace() == std::vector(all.begin() + 59'990, all.begin() + 60'006));
    check("segments of the part", part.segments().size(), 2U);
    check("what the first segment has of it", part.segments()[0].length(), 10U);
    check("what the second segment has of it", part.segments()[1].length(), 6U);
}

/// A client that has registered for an attribute need not ask again and again.
void readAfterChange(Dialogue& dialogue) {
    Address const temperature{"instrument", "temperature"};
    auto const registered =
        dialogue.ask<Attrs::RegisteredMessage>(Attrs::RegisterMessage({}, temperature));
    check("registration", registered->payload().ok(), true);

    auto const changed = dialogue.hearUnasked<Notifs::AttrValueChangedNotification>();
    check("category of the notification", changed->notifCategory(), 1);
    check("what has changed", changed->sender() == temperature);
    auto const answer =
        dialogue.ask<Attrs::AttrListMessage>(Attrs::AttrListRequestMessage({}, changed->sender()));
    auto const& measured = only<Attrs::MeasurementMessage>(answer->payload()).payload();
    check("temperature", measured.value(), 41.5);
}

} // namespace

void readAttributes(Dialogue& dialogue) {
    dialogue.heading("Attributes: what is there, all at once, and a part of a trace");
    readInfos(dialogue);
    readAll(dialogue);
    readPartOfTrace(dialogue);
    readAfterChange(dialogue);
}

} // namespace Example
