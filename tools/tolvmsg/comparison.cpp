#include <algorithm>

#include <tolv/core/exceptions.h>

#include "comparison.h"
#include "encoded_array.h"
#include "ids.h"
#include "nested_message.h"
#include "text.h"
#include "tree_text.h"

namespace Tolv::Tool {

using MetaData::Element;
using MetaData::Object;

namespace {

constexpr std::size_t mostFound = 60;

/// Where the comparison is, innermost first. The path is made only where it is needed.
struct Place {
    Place const* outer = nullptr;
    std::string_view key;   ///< of a child of an object
    unsigned int index = 0; ///< of a child of an array
    bool isIndex = false;
    bool isMessage = true; ///< whether a whole message stands here, or an array of messages

    [[nodiscard]] Place child(std::string_view name) const {
        return {this, name, 0, false, holdsMessages(name)};
    }
    [[nodiscard]] Place child(unsigned int number) const {
        return {this, {}, number, true, isMessage};
    }

    [[nodiscard]] std::string path() const {
        if (outer == nullptr)
            return {};
        auto text = outer->path();
        if (isIndex)
            return text + '[' + std::to_string(index) + ']';
        return text + (text.empty() ? "" : ".") + word(key);
    }
};

/// One of the sorts of values that no read takes for each other.
int sortOf(Element const& element) {
    switch (element.kind()) {
    case MetaData::Kind::signedNumber:
    case MetaData::Kind::unsignedNumber:
    case MetaData::Kind::floatingNumber:
        return 1;
    case MetaData::Kind::boolean:
        return 2;
    case MetaData::Kind::string:
        return 3;
    case MetaData::Kind::array:
        return 4;
    case MetaData::Kind::object:
        return EncodedArray::from(element) ? 4 : 5;
    case MetaData::Kind::null:
        break;
    }
    return 0;
}

/// True when a read of `input` that gives `result` has lost nothing.
bool isSame(Element const& input, Element const& result) {
    if (input == result)
        return true;
    if (input.isString() && result.isFloating()) { // "NaN" and the infinities
        double value = 0;
        Element number;
        return TryGetAs(input, value) && (number.setFloating(value), number == result);
    }
    if (!result.isArray())
        return false;
    auto const encoded = EncodedArray::from(input);
    return encoded && encoded->count() == encoded->statedCount() &&
           encoded->values(encoded->count()) == result.array();
}

class Comparison {
public:
    Comparison(Classes const& classes, Msgs::Message const& message)
        : classes_(classes), frame_(message.members()) {}

    /// @param usual what a default-built message has here; null: nothing, or unknown
    void object(Object const& input, Object const& result, Element const* usual,
                Place const& place) {
        for (auto const& member : input) {
            auto const here = place.child(member.key());
            auto const* const read = result.find(member.key());
            auto const* const normal = usual != nullptr ? usual->find(member.key()) : nullptr;
            if (read != nullptr)
                value(member.value, *read, normal, here);
            else
                lost(member.value, normal, here);
        }
        for (auto const& member : result)
            if (input.find(member.key()) == nullptr)
                absent(place.child(member.key()));
        if (usual != nullptr && usual->isObject())
            for (auto const& member : usual->object())
                if (input.find(member.key()) == nullptr && result.find(member.key()) == nullptr)
                    absent(place.child(member.key()));
    }

    void absent(Place const& place) { report(place, "required, but absent", {}); }

    std::vector<Unread> take() { return std::move(unread_); }

private:
    void value(Element const& input, Element const& result, Element const* usual,
               Place const& place) {
        if (isRecord(input) && isRecord(result)) {
            object(input.object(), result.object(), usualOf(input, usual, place), place);
        } else if (input.isArray() && result.isArray() &&
                   input.array().size() == result.array().size()) {
            for (unsigned int i = 0; i < input.array().size(); ++i)
                value(input.array()[i], result.array()[i], nullptr, place.child(i));
        } else if (!isSame(input, result)) {
            // Scalars never keep an old value: one that differs was taken for another.
            auto const kept = sortOf(result) > 3 && (sortOf(input) != sortOf(result) ||
                                                     (usual != nullptr && isSame(*usual, result)));
            report(place, kept ? "did not read" : "read as " + shortText(result, mostFound),
                   &input);
            if (kept)
                reasons(input, usual, place);
        }
    }

    /// Nothing of `input` is left in the message.
    void lost(Element const& input, Element const* usual, Place const& place) {
        auto const known = usual != nullptr || isFrameField(place);
        report(place, known ? "did not read" : "nothing read it", &input);
        reasons(input, usual, place);
    }

    /// What is wrong inside of a value that did not read as a whole.
    void reasons(Element const& input, Element const* usual, Place const& place) {
        if (auto const id = idOf(input); id && place.isMessage && classes_.find(*id) == nullptr)
            report(place.child("MessageID"), "unknown id", hexadecimal(*id) + "  " + dotted(*id));
        if (auto const encoded = EncodedArray::from(input)) {
            if (input.find("base64") == nullptr && encoded->statedCount() > 0)
                absent(place.child("base64"));
            try {
                encoded->checkText();
            } catch (Exception::Base const& e) {
                report(place.child("base64"), e.what(), {});
            }
        } else if (input.isObject()) {
            usual = usualOf(input, usual, place);
            reasonsInside(input.object(), usual != nullptr && usual->isObject() ? usual : nullptr,
                          place);
        } else if (input.isArray()) {
            for (unsigned int i = 0; i < input.array().size(); ++i)
                reasons(input.array()[i], nullptr, place.child(i));
        }
    }

    void reasonsInside(Object const& input, Element const* usual, Place const& place) {
        for (auto const& member : input) {
            auto const here = place.child(member.key());
            auto const* const normal = usual != nullptr ? usual->find(member.key()) : nullptr;
            if (normal != nullptr && !normal->isNull() && sortOf(member.value) != sortOf(*normal) &&
                !(normal->isFloating() && member.value.isString()))
                report(here, std::string("not ") + describe(normal->kind()), &member.value);
            else
                reasons(member.value, normal, here);
        }
        if (usual != nullptr)
            for (auto const& member : usual->object())
                if (input.find(member.key()) == nullptr)
                    absent(place.child(member.key()));
    }

    /// Optional fields are not among what a default-built message writes; those of the message
    /// itself are known all the same.
    [[nodiscard]] bool isFrameField(Place const& place) const {
        return place.outer->outer == nullptr &&
               std::any_of(frame_.begin(), frame_.end(), [&](auto const* const field) {
                   return field->key().text() == place.key;
               });
    }

    static bool isRecord(Element const& element) {
        return element.isObject() && !EncodedArray::from(element);
    }

    /// For a whole message the default-built one of its class.
    Element const* usualOf(Element const& input, Element const* usual, Place const& place) const {
        auto const id = place.isMessage ? idOf(input) : std::nullopt;
        return id ? classes_.defaultTree(*id) : usual;
    }

    void report(Place const& place, std::string problem, Element const* found) {
        report(place, std::move(problem), found != nullptr ? shortText(*found, mostFound) : "");
    }
    void report(Place const& place, std::string problem, std::string found) {
        unread_.push_back({place.path(), std::move(problem), std::move(found)});
    }

    Classes const& classes_;
    std::vector<MetaData::ReflectorBase const*> frame_;
    std::vector<Unread> unread_;
};

} // namespace

std::vector<Unread> findUnread(Classes const& classes, Element const& input,
                               Msgs::Message const& message, Element const& result) {
    Object const& tree = input;
    auto const* const usual = classes.defaultTree(message.id());
    Comparison comparison(classes, message);
    Place const root;
    comparison.object(tree, result, usual, root);
    // A required address is not among what a default-built message writes.
    for (auto const* const field : message.members())
        if (field->isRequired() && !field->initialized() && tree.find(field->key()) == nullptr &&
            (usual == nullptr || usual->find(field->key()) == nullptr))
            comparison.absent(root.child(field->name()));
    return comparison.take();
}

} // namespace Tolv::Tool
