#include <attributes/analyzer.h>

namespace Example {

using namespace Tolv::Msgs;

namespace {

/// Sends a value, which the instrument has to accept.
template <class M>
void set(Dialogue& dialogue, std::string const& name, M const& value) {
    auto message = value;
    message.destination = Address{"instrument", name};
    auto const answer = dialogue.ask<M>(message);
    check(name + " as it is now", answer->payload().value() == value.payload().value());
    check("who answers", answer->sender() == Address{"instrument", name});
}

/// Sends a value, which the instrument has to refuse, for this reason.
template <class M>
void setInvalid(Dialogue& dialogue, std::string const& name, M const& value,
                std::string const& reason) {
    dialogue.expectThrow<Tolv::Exception::InvalidParameter>(name + ": " + reason,
                                                            [&] { set(dialogue, name, value); });
}

Attrs::DoubleMessage valueFor(std::string const& name, double value) {
    return Attrs::DoubleMessage(value, {}, {"instrument", name});
}

void setTogether(Dialogue& dialogue) {
    MessagesArray<Attrs::DoubleMessage> wanted;
    wanted.messages = {valueFor("frequency", 5e9), valueFor("span", 2e6)};
    auto const answer = dialogue.ask<Attrs::DoubleBatchMessage>(Attrs::DoubleBatchMessage(wanted));
    auto const& values = answer->payload().messages();
    check("number of values", values.size(), 2U);
    check("frequency", values[0].payload().value(), 5e9);
    check("span", values[1].payload().value(), 2e6);

    wanted.messages = {valueFor("frequency", 3e9), valueFor("span", 2)};
    dialogue.expectThrow<Tolv::Exception::InvalidParameter>(
        "span: value 2 is below Minimum 1000",
        [&] { dialogue.ask<Attrs::DoubleBatchMessage>(Attrs::DoubleBatchMessage(wanted)); });
    auto const after = dialogue.ask<Attrs::AttrListMessage>(
        Attrs::AttrListRequestMessage({}, {"instrument", "frequency"}));
    check("frequency: none of a refused batch is stored",
          dynamic_cast<Attrs::DoubleMessage const&>(*after->payload().attributes.at(0))
              .payload()
              .value(),
          5e9);
}

} // namespace

void setAttributes(Dialogue& dialogue) {
    dialogue.heading(
        "Attributes: what the instrument takes, alone and in batches, and what it refuses");
    set(dialogue, "frequency", Attrs::DoubleMessage(2.4e9));
    set(dialogue, "mode", Attrs::EnumMessage(Attrs::EnumVal(1, "zero span")));

    setInvalid(dialogue, "frequency", Attrs::DoubleMessage(7.5e9),
               "value 7.5e9 is above Maximum 6e9");
    setInvalid(dialogue, "mode", Attrs::EnumMessage(Attrs::EnumVal(2, "vector")),
               "2 \"vector\" is disabled in enums");
    setInvalid(dialogue, "label", Attrs::StringMessage(std::string("bench 7 (left hand)")),
               "19 bytes, MaxLength is 16");
    setInvalid(dialogue, "label", Attrs::StringMessage(std::string("b\u00e4nch 7")),
               "value \"b\u00e4nch 7\" does not match ValidCharacters \"[A-Za-z0-9 ]*\"");

    setTogether(dialogue);
}

} // namespace Example
