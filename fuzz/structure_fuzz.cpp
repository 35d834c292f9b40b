// Messages that are almost right: the golden file of a class with some of its values removed,
// replaced, cut, or moved to where they do not belong.

#include "message_checks.h"
#include "support/examples.h"
#include "tree_mutations.h"

namespace {

using namespace Tolv::Fuzzing;
using Tolv::MetaData::Element;

Element numberOf(Input& input) {
    Element number;
    switch (input.below(3)) {
    case 0:
        number.setSigned(input.take<std::int64_t>());
        break;
    case 1:
        number.setUnsigned(input.take<std::uint64_t>());
        break;
    default:
        number.setFloating(input.take<double>());
    }
    return number;
}

/// A text that was ASCII stays ASCII when it is cut or extended.
void changeText(Element& value, Input& input) {
    if (!value.isString())
        return;
    std::string text(value.text());
    auto const at = input.below(text.size() + 1);
    if (input.below(2) == 0)
        text.resize(at);
    else
        text.insert(at, 1, static_cast<char>(input.below(128)));
    value.setString(text);
}

Element const& oneOf(std::vector<Element> const& values, Input& input) {
    return values[input.below(values.size())];
}

void change(Element& root, Input& input) {
    auto const places = placesIn(root);
    if (places.empty())
        return;
    auto const& place = places[input.below(places.size())];
    switch (input.below(8)) {
    case 0:
        place.remove();
        break;
    case 1:
        place.value() = oneOf(strangeValues(), input);
        break;
    case 2:
        place.value() = numberOf(input);
        break;
    case 3:
        changeText(place.value(), input);
        break;
    case 4:
        wrap(place.value(), input.below(300), input.below(2) == 0);
        break;
    case 5: { // copies first: one may be inside the other
        Element const other = places[input.below(places.size())].value();
        place.value() = other;
        break;
    }
    case 6:
        place.value() = oneOf(Tolv::Testing::examples(), input);
        break;
    default: { // the root inside itself
        Element const all = root;
        place.value() = all;
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    silenceDiagnostics();
    Input input(data, size);
    auto root = oneOf(Tolv::Testing::examples(), input);
    constexpr int mostChanges = 6; // a tree may double with each
    for (int i = 0; i < mostChanges && !input.empty(); ++i)
        change(root, input);

    std::string text;
    try {
        Tolv::MetaData::WriterJson::Write(root, text);
    } catch (Tolv::Exception::InvalidParameter const&) {
        return 0; // too deep, or a character was cut
    }
    checkMessage(root);
    checkMessageText(text);
    checkMessageText(std::string_view(text).substr(0, input.below(text.size() + 1)));
    return 0;
}
