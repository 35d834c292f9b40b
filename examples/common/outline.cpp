#include <common/outline.h>

#include <tolv/core/metadata/json.h>
#include <tolv/msgs/catalogue.h>

namespace Example {

using namespace Tolv::Msgs;
using namespace Tolv::MetaData;

namespace {

/// Appends the outline of an element to a text, until that is wide enough.
class Outline {
public:
    explicit Outline(std::size_t width) : width_(width) {}

    void add(Element const& element) {
        if (auto const* const data = element.find("Data")) {
            Identifier id; // a whole message inside another one
            id.copyFromMetaData(element["MessageID"]);
            text_ += nameOf(id) + " {";
            addMembers(data->object());
            text_ += '}';
        } else if (auto const* const count = element.find("len")) {
            text_ += '<' + asJson(*count) + " encoded>";
        } else if (element.isObject()) {
            text_ += '{';
            addMembers(element.object());
            text_ += '}';
        } else if (element.isArray()) {
            text_ += '[';
            separated(element.array(), [this](Element const& entry) { add(entry); });
            text_ += ']';
        } else {
            text_ += asJson(element);
        }
    }

    void addMembers(Object const& object) {
        separated(object, [this](auto const& member) {
            text_ += member.key();
            text_ += ' ';
            if (member.key() == "AttributeMetaData")
                text_ += "{...}"; // long; the value comes behind it
            else
                add(member.value);
        });
    }

    /// The text, cut between two characters where it is too long.
    [[nodiscard]] std::string finish() {
        if (text_.size() <= width_)
            return text_;
        auto end = width_;
        while ((static_cast<unsigned char>(text_[end]) & 0xC0U) == 0x80U)
            --end;
        return text_.substr(0, end) + "...";
    }

private:
    template <class Entries, class Add>
    void separated(Entries const& entries, Add addOne) {
        char const* separator = "";
        for (auto const& entry : entries) {
            if (text_.size() > width_)
                return;
            text_ += separator;
            addOne(entry);
            separator = ", ";
        }
    }

    static std::string asJson(Element const& element) {
        std::string text;
        WriterJson::Write(element, text);
        return text;
    }

    std::size_t width_;
    std::string text_;
};

/// The part of the instrument that a message comes from or goes to; empty for all of it.
std::string partOf(Message const& message) {
    for (auto const* const address : {&message.sender, &message.destination})
        if (address->initialized() && (*address)().size() > 1 && (*address)()[0] == "instrument")
            return (*address)()[1];
    return {};
}

} // namespace

std::string nameOf(Identifier const& id) {
    if (auto const* const row = findMessage(id)) {
        auto const family = row->family.substr(row->family.rfind(':') + 1);
        return std::string(family) + "::" + std::string(row->alias);
    }
    return std::to_string(id.family()) + '.' + std::to_string(id.sub1()) + '.' +
           std::to_string(id.sub2()) + '.' + std::to_string(id.type());
}

std::string outlineOf(Message const& message, std::size_t width) {
    auto const part = partOf(message);
    Element tree;
    message.copyToMetaData(tree);
    if (auto const* const data = tree.find("Data"); data != nullptr && data->isObject()) {
        Outline outline(width);
        outline.addMembers(data->object());
        return (part.empty() ? "" : part + ": ") + outline.finish();
    }
    auto const* const row = findMessage(message.id());
    auto const text =
        row != nullptr ? std::string(row->role) : "a number that nobody has a class for";
    return '(' + text + (part.empty() ? "" : ": " + part) + ')';
}

} // namespace Example
