#include <algorithm>
#include <utility>
#include <vector>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>

#include "attribute_view.h"
#include "encoded_array.h"
#include "ids.h"
#include "nested_message.h"
#include "text.h"
#include "tree_text.h"

namespace Tolv::Tool {

using MetaData::Array;
using MetaData::Element;
using MetaData::Object;

namespace {

constexpr std::size_t mostTextBytes = 72;
constexpr std::size_t mostLineBytes = 88;
constexpr std::size_t mostValues = 8;    ///< values of an array in one line
constexpr unsigned int mostEntries = 20; ///< entries of an array, each a line or a block
constexpr std::size_t mostKeyWidth = 32; ///< longer keys are not aligned

class OneLine {
public:
    explicit OneLine(std::size_t most) : most_(most) {}

    void add(Element const& element) {
        if (auto const encoded = EncodedArray::from(element))
            add(*encoded);
        else if (element.isString())
            text_.append(quoted(element.text(), mostTextBytes));
        else if (element.isArray())
            add(element.array());
        else if (element.isObject())
            add(element.object());
        else
            addScalar(element);
    }

    std::string take() { return std::move(text_); }

private:
    [[nodiscard]] bool isFull() const { return text_.size() > most_; }

    void addScalar(Element const& element) {
        std::string json;
        MetaData::WriterJson::Write(element, json);
        text_.append(json);
    }

    void add(EncodedArray const& encoded) {
        auto const stated = std::to_string(encoded.statedCount());
        auto const count = encoded.count();
        if (!count) {
            text_.append(stated + " x " + encoded.typeName() + ", without matching data");
            return;
        }
        text_.append(std::to_string(*count) + " x " + encoded.typeName());
        if (encoded.statedCount() != *count)
            text_.append(" (\"len\" says " + stated + ")");
        try {
            auto const* separator = *count > mostValues ? ", first " : ": ";
            for (auto const& value : encoded.values(mostValues)) {
                text_.append(std::exchange(separator, ", "));
                add(value);
            }
        } catch (Exception::Base const&) {
            text_.append(", not base64");
        }
    }

    void add(Array const& array) {
        text_.push_back('[');
        std::size_t shown = 0;
        for (auto const& entry : array) {
            if (shown == mostValues || isFull())
                break;
            text_.append(shown++ > 0 ? ", " : "");
            add(entry);
        }
        close(']', shown, array.size(), "entry", "entries");
    }

    void add(Object const& object) {
        text_.push_back('{');
        std::size_t shown = 0;
        for (auto const& member : object) {
            if (isFull())
                break;
            text_.append(shown++ > 0 ? ", " : "");
            text_.append(word(member.key()) + ": ");
            add(member.value);
        }
        close('}', shown, object.size(), "key", "keys");
    }

    void close(char bracket, std::size_t shown, std::size_t all, char const* one,
               char const* many) {
        if (shown < all)
            text_.append(shown > 0 ? ", ..." : "...");
        text_.push_back(bracket);
        if (shown < all)
            text_.append(" (" + counted(all, one, many) + ")");
    }

    std::string text_;
    std::size_t most_;
};

bool isRecord(Element const& element) {
    return element.isObject() && !element.object().empty() && !EncodedArray::from(element);
}

/// Whether the array can be shown in one line: numbers, short texts, and arrays of these.
bool fitsOneLine(Array const& array) {
    std::size_t bytes = 0;
    for (auto const& entry : array) {
        if (isRecord(entry) || (entry.isArray() && !fitsOneLine(entry.array())))
            return false;
        bytes += entry.isString() ? entry.text().size() : 0;
        if (bytes > mostTextBytes)
            return false;
    }
    return true;
}

} // namespace

std::string shortText(Element const& element, std::size_t most) {
    OneLine line(most);
    line.add(element);
    return line.take();
}

std::string addressText(Element const* address) {
    if (address == nullptr)
        return "-";
    if (!address->isArray() || address->array().empty())
        return shortText(*address, mostLineBytes);
    std::string text;
    for (auto const& part : address->array()) {
        text.append(text.empty() ? "" : " / ");
        text.append(part.isString() ? word(part.text()) : shortText(part, mostLineBytes));
    }
    return text;
}

void TreeText::line(std::size_t indent, std::string_view text) {
    out_.append(indent, ' ').append(text).push_back('\n');
}

void TreeText::payload(Msgs::Message const& message, Element const* data, std::size_t indent) {
    auto reading = data != nullptr ? readingOf(message, *data) : std::nullopt;
    if (!reading)
        reading.emplace();
    else
        data = &reading->rest;
    if (auto const verdict = verdictOf(message))
        reading->lines.emplace_back("valid",
                                    verdict->valid ? "yes" : "no: " + harmless(verdict->reason));
    std::size_t labels = 0;
    for (auto const& [label, text] : reading->lines)
        labels = std::max(labels, label.size());
    for (auto const& [label, text] : reading->lines)
        line(indent, padded(label, labels) + "  " + text);
    if (data != nullptr && data->isObject())
        fields(data->object(), indent, messagesInside(message));
    else if (data != nullptr)
        line(indent, shortText(*data, mostLineBytes));
}

void TreeText::fields(Object const& record, std::size_t indent, Messages const& inside) {
    std::vector<std::pair<std::string, std::optional<std::string>>> lines;
    std::size_t keyWidth = 0;
    for (auto const& member : record) {
        lines.emplace_back(word(member.key()), oneLine(member.key(), member.value));
        if (auto const columns = width(lines.back().first);
            lines.back().second && columns <= mostKeyWidth)
            keyWidth = std::max(keyWidth, columns);
    }
    auto next = lines.begin();
    for (auto const& member : record) {
        auto const& [key, text] = *next++;
        if (text)
            line(indent, padded(key, keyWidth) + "  " + *text);
        else
            block(key, member.value, indent, holdsMessages(member.key()), inside);
    }
}

std::optional<std::string> TreeText::oneLine(std::string_view key, Element const& value) const {
    unsigned long long id = 0;
    if (key == "MessageID" && TryGetAs(value, id)) {
        auto const* const known = classes_.find(id);
        return hexadecimal(id) + "  " + dotted(id) + (known != nullptr ? "  " + known->name() : "");
    }
    if (isRecord(value) || (value.isArray() && !fitsOneLine(value.array())))
        return {};
    return shortText(value, mostLineBytes);
}

void TreeText::block(std::string const& label, Element const& value, std::size_t indent,
                     bool isMessage, Messages const& inside) {
    if (value.isObject()) {
        entry(label, value, indent, isMessage, nullptr);
        return;
    }
    auto const& array = value.array();
    line(indent, label + "  " + counted(array.size(), "entry", "entries"));
    for (unsigned int i = 0; i < std::min(array.size(), mostEntries); ++i) {
        auto const number = '[' + std::to_string(i) + ']';
        if (auto const text = oneLine({}, array[i]))
            line(indent + 2, number + "  " + *text);
        else if (array[i].isObject())
            entry(number, array[i], indent + 2, isMessage, i < inside.size() ? inside[i] : nullptr);
        else
            block(number, array[i], indent + 2, isMessage, {});
    }
    if (array.size() > mostEntries)
        more(indent + 2, mostEntries, array.size(), inside);
}

void TreeText::more(std::size_t indent, std::size_t shown, std::size_t all,
                    Messages const& inside) {
    auto text = "... " + std::to_string(all - shown) + " more";
    std::vector<std::size_t> invalid;
    for (auto i = shown; i < inside.size(); ++i)
        if (auto const verdict = verdictOf(*inside[i]); verdict && !verdict->valid)
            invalid.push_back(i);
    if (!invalid.empty())
        text.append(", " + std::to_string(invalid.size()) + " of them not valid, first [" +
                    std::to_string(invalid.front()) + ']');
    line(indent, text);
}

void TreeText::entry(std::string const& label, Element const& value, std::size_t indent,
                     bool isMessage, Msgs::Message const* typed) {
    auto const id = isMessage ? idOf(value) : std::nullopt;
    if (id || typed != nullptr) {
        message(label, id, value, indent, typed);
    } else {
        line(indent, label);
        fields(value.object(), indent + 2);
    }
}

void TreeText::message(std::string const& label, std::optional<unsigned long long> id,
                       Element const& tree, std::size_t indent, Msgs::Message const* typed) {
    auto const* const known = id ? classes_.find(*id) : nullptr;
    line(indent, label + "  " +
                     (known != nullptr ? known->name() + "  " + dotted(*id)
                      : id             ? hexadecimal(*id) + "  " + dotted(*id)
                                       : "no id"));
    if (auto const* const sender = tree.find("Sender"))
        line(indent + 2, "from  " + addressText(sender));
    if (auto const* const destination = tree.find("Destination"))
        line(indent + 2, "to  " + addressText(destination));
    auto const* const data = tree.find("Data");
    if (typed != nullptr)
        payload(*typed, data, indent + 2);
    else if (data != nullptr && data->isObject())
        fields(data->object(), indent + 2);
    else if (data != nullptr)
        line(indent + 2, shortText(*data, mostLineBytes));
}

} // namespace Tolv::Tool
