#include <algorithm>
#include <charconv>

#include "commands.h"
#include "filter.h"
#include "ids.h"
#include "options.h"
#include "text.h"

namespace Tolv::Tool {

namespace {

unsigned int familyOf(unsigned long long id) { return Msgs::Identifier(id).family(); }

/// Whether any part of the address under `key` is one of `wanted`.
bool hasPart(ExaminedLine const& line, char const* key, std::vector<std::string> const& wanted) {
    if (wanted.empty())
        return true;
    auto const* const address = line.input.find(key);
    return address != nullptr && address->isArray() &&
           std::any_of(address->array().begin(), address->array().end(), [&](auto const& part) {
               return part.isString() &&
                      std::find(wanted.begin(), wanted.end(), part.text()) != wanted.end();
           });
}

} // namespace

void Filter::addOptions(CLI::App& command) {
    auto const add = [&](char const* name, std::vector<std::string>& to, char const* text) {
        addRepeatable(command, name, to, text)->group("Filters");
    };
    add("--id", idTexts_, "Messages of this class: id in any notation, or alias");
    add("--family", families_, "Messages of this family: number, or name such as App");
    add("--from", senders_, "Messages with this text in the sender address");
    add("--to", destinations_, "Messages with this text in the destination address");
}

void Filter::resolve(Classes const& classes) {
    for (auto const& text : idTexts_) {
        auto const id = parseId(text); // may be an id that is not registered
        ids_.insert(id ? *id : resolveClass(classes, text).id);
    }
    for (auto const& text : families_) {
        unsigned int number = 0;
        auto const* const end = text.data() + text.size();
        if (auto const parsed = std::from_chars(text.data(), end, number);
            parsed.ec == std::errc() && parsed.ptr == end) {
            familyNumbers_.insert(number);
            continue;
        }
        auto isKnown = false; // the number may already be in the set
        for (auto const& known : classes.all())
            if (known.alias.starts_with(text + "::")) {
                familyNumbers_.insert(familyOf(known.id));
                isKnown = true;
            }
        if (!isKnown)
            throw UsageError("unknown family " + quoted(text, 200) +
                             "; \"tolvmsg list\" shows all classes");
    }
}

bool Filter::takes(ExaminedLine const& line) const {
    if (!ids_.empty() && (!line.id || !ids_.contains(*line.id)))
        return false;
    if (!familyNumbers_.empty() && (!line.id || !familyNumbers_.contains(familyOf(*line.id))))
        return false;
    return hasPart(line, "Sender", senders_) && hasPart(line, "Destination", destinations_);
}

} // namespace Tolv::Tool
